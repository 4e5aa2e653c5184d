// kest log: a debug log file as plain text.
#include <fstream>
#include <iostream>
#include <memory>
#include <regex>

#include "tools/commands.h"
#include "tools/text_view.h"

namespace {

struct log_options {
  std::string path;
  bool json = false;
};

// plain_text undoes the complement of one record, and drops the line feed that the library's own
// lines end in.
std::string plain_text(std::string record) {
  for (char &c : record) {
    c = static_cast<char>(~c);
  }
  if (record.ends_with('\n')) {
    record.pop_back();
  }
  return record;
}

void print_as_json(const std::string &record) {
  static const std::regex shape(R"((\d{4}/\d\d/\d\d \d\d:\d\d:\d\d), pid: *(\d+), ([^]*))");
  std::smatch parts;
  if (std::regex_match(record, parts, shape)) {
    print_json(
        {{"time", parts[1].str()}, {"pid", std::stoul(parts[2].str())}, {"text", parts[3].str()}});
  } else {
    print_json({{"time", nullptr}, {"pid", nullptr}, {"text", record}});
  }
}

void run(const log_options &options) {
  std::ifstream file(options.path, std::ios::binary);
  if (!file) {
    throw command_failure("can't open '" + options.path + "'");
  }
  std::string record;
  while (std::getline(file, record)) {
    record = plain_text(record);
    if (options.json) {
      print_as_json(record);
    } else {
      std::cout << printable(record) << '\n';
    }
  }
}

} // namespace

void add_log_command(CLI::App &app) {
  const auto options = std::make_shared<log_options>();
  CLI::App *command = app.add_subcommand("log", "Show a debug log file as plain text");
  command->add_option("file", options->path, "The log file")->required();
  command->add_flag("--json", options->json, "Write a JSON object for each record");
  command->callback([options] { run(*options); });
}
