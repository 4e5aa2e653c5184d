// kest ussd: a USSD string as +CUSD reports it.
#include <array>
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/input.h"
#include "tools/text_view.h"

namespace {

constexpr size_t MAX_STRING = 255; // octets
constexpr char UNTOUCHED = '\xFF'; // the library writes a terminator unless it refuses the scheme

struct ussd_options {
  std::string octets;
  unsigned dcs = 15;
  bool json = false;
};

std::string ussd_text(unsigned dcs, const std::vector<uint8_t> &octets) {
  std::array<char, 8 * MAX_STRING / 7 * 2 + 1> text;
  text.fill(UNTOUCHED);
  const uint32_t length = kest_convert_ussd_string_to_utf8(
      static_cast<uint8_t>(dcs), static_cast<uint8_t>(octets.size()), octets.data(), text.data());
  if (text[length] != '\0') {
    throw command_failure("no text has the data coding scheme " + std::to_string(dcs));
  }
  return {text.data(), length};
}

std::string octets_fault(const std::string &text) {
  return text.size() > 2 * MAX_STRING ? "more than 255 octets" : hex_fault(text);
}

void run(const ussd_options &options) {
  read_argument("octets", options.octets, octets_fault, [&](const std::string &octets) {
    view shown("USSD string", {{"dcs", options.dcs}});
    shown.add("text", "text", ussd_text(options.dcs, octets_of(octets)));
    shown.print(options.json);
  });
}

} // namespace

void add_ussd_command(CLI::App &app) {
  const auto options = std::make_shared<ussd_options>();
  CLI::App *command = app.add_subcommand("ussd", "Decode a USSD string");
  command
      ->add_option("octets", options->octets,
                   "The string as hexadecimal text, or - to read one a line from standard input")
      ->required();
  command->add_option("--dcs", options->dcs, "Data coding scheme (3GPP TS 23.038, clause 5)")
      ->check(CLI::Range(0, 255))
      ->capture_default_str();
  command->add_flag("--json", options->json, "Write a JSON object for each string");
  command->callback([options] { run(*options); });
}
