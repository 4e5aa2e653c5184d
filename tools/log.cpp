// kest log: a debug log file as plain text.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>

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
  char time[20] = "", pid[11] = "";
  int prefix_size = 0;
  sscanf(record.c_str(), "%19[0-9/: ], pid: %10[0-9],%n", time, pid, &prefix_size);
  const auto text_at = static_cast<size_t>(prefix_size) + 1; // behind a blank
  if (prefix_size > 0 && text_at <= record.size()) {
    const std::string text = record.substr(text_at);
    print_json({{"time", time}, {"pid", strtol(pid, nullptr, 10)}, {"text", text}});
  } else { // no record of this library's
    print_json({{"time", nullptr}, {"pid", nullptr}, {"text", record}});
  }
}

void run(const log_options &options) {
  std::ifstream file(options.path, std::ios::binary);
  if (!file) {
    throw command_failure("can't open '" + options.path + "'");
  }
  for (std::string record; std::getline(file, record);) {
    record = plain_text(record);
    if (options.json) {
      print_as_json(record);
    } else {
      std::cout << printable(record) << '\n';
    }
  }
  if (file.bad()) {
    throw command_failure("can't read '" + options.path + "'");
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
