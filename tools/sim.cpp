// kest sim: what a card tells of a file.
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/input.h"
#include "tools/names.h"
#include "tools/text_view.h"

namespace {

constexpr uint32_t NOT_TOLD = UINT32_MAX; // a method or file type that the answer leaves alone

struct sim_options {
  std::string answer;
  bool json = false;
};

kest_sim_file_info decode(const std::vector<uint8_t> &answer) {
  kest_sim_file_info info = {};
  info.file_type = NOT_TOLD;
  info.read.method = NOT_TOLD;
  if (answer.size() > UINT16_MAX || // the library would read its first octets alone
      kest_decode_sim_get_response_data(answer.data(), static_cast<uint16_t>(answer.size()),
                                        &info) == 0) {
    throw command_failure("cut off, or no answer to GET RESPONSE");
  }
  return info;
}

std::string hex_id(unsigned identifier) {
  char text[8];
  snprintf(text, sizeof text, "%04X", identifier);
  return text;
}

void add_rule(view &shown, const char *operation, const kest_sim_access_condition &rule) {
  const bool has_keys = rule.method >= KEST_SIM_ACCESS_AND;
  const std::vector<std::string> keys = key_names(has_keys ? rule.mask : 0);
  std::string readable = rule.method == KEST_SIM_ACCESS_SINGLE ? "" : method_name(rule.method);
  for (const std::string &key : keys) {
    readable += (readable.empty() ? "" : &key == &keys.front() ? " " : ", ") + key;
  }
  shown.add(operation, operation, {{"method", method_name(rule.method)}, {"keys", keys}}, readable);
}

view view_of(const kest_sim_file_info &info) {
  const bool folder = info.file_type == KEST_SIM_FILE_DF || info.file_type == KEST_SIM_FILE_MF;
  view shown("SIM file");
  shown.add("file", "file", hex_id(info.file_id));
  if (info.file_type != NOT_TOLD) {
    shown.add("type", "type", file_type_name(info.file_type));
  }
  if (info.file_size != 0) {
    shown.add("size", folder ? "free memory" : "size", info.file_size,
              std::to_string(info.file_size) + " octets");
  }
  if (info.record_length != 0) {
    shown.add("records", "records", {{"count", info.record_count}, {"length", info.record_length}},
              std::to_string(info.record_count) + " of " + std::to_string(info.record_length) +
                  " octets");
  }
  if (info.ref_file_id != 0) {
    shown.add("rules", "access rules",
              {{"file", hex_id(info.ref_file_id)}, {"record", info.ref_record}},
              "record " + std::to_string(info.ref_record) + " of file " + hex_id(info.ref_file_id));
  }
  if (info.read.method != NOT_TOLD) {
    add_rule(shown, "read", info.read);
    add_rule(shown, "update", info.update);
    add_rule(shown, "increase", info.increase);
    add_rule(shown, "deactivate", info.deactivate);
    add_rule(shown, "activate", info.activate);
  }
  return shown;
}

void run(const sim_options &options) {
  read_argument("answer", options.answer, hex_fault, [&](const std::string &answer) {
    view_of(decode(octets_of(answer))).print(options.json);
  });
}

} // namespace

void add_sim_command(CLI::App &app) {
  const auto options = std::make_shared<sim_options>();
  CLI::App *command = app.add_subcommand("sim", "Decode a SIM's answer to GET RESPONSE");
  command
      ->add_option("answer", options->answer,
                   "The answer as hexadecimal text, or - to read one a line from standard input")
      ->required();
  command->add_flag("--json", options->json, "Write a JSON object for each answer");
  command->callback([options] { run(*options); });
}
