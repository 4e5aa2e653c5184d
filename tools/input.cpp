#include "tools/input.h"

#include <cstdio>
#include <iostream>

#include "tools/commands.h"

namespace {

// require_input tells an input that can't be read from one that has ended.
void require_input() {
  if (ferror(stdin) != 0) {
    throw command_failure("can't read standard input");
  }
}

} // namespace

std::string read_text() {
  std::string text;
  std::getline(std::cin, text, '\0');
  require_input();
  if (!std::cin.eof()) {
    throw command_failure("no text has an octet 0");
  }
  if (text.ends_with('\n')) {
    text.pop_back();
  }
  return text;
}

void read_lines(const std::function<void(const std::string &line)> &take,
                const std::function<void()> &finish) {
  size_t number = 0;
  size_t failed = 0;
  for (std::string line; std::getline(std::cin, line);) {
    ++number;
    line.erase(line.find_last_not_of(" \t\r") + 1);
    if (line.empty()) {
      continue;
    }
    try {
      take(line);
    } catch (const command_failure &failure) {
      if (!std::cout) {
        throw; // nobody reads what the other lines give
      }
      std::cerr << "kest: line " << number << ": " << failure.what() << '\n';
      ++failed;
    }
  }
  finish();
  require_input();
  if (failed > 0) {
    throw command_failure(std::to_string(failed) + " of the lines failed");
  }
}

void read_argument(const char *name, const std::string &argument,
                   const std::function<std::string(const std::string &text)> &fault,
                   const std::function<void(const std::string &text)> &take) {
  if (argument == "-") {
    read_lines([&](const std::string &line) {
      if (const std::string found = fault(line); !found.empty()) {
        throw command_failure(found);
      }
      take(line);
    });
    return;
  }
  if (const std::string found = fault(argument); !found.empty()) {
    throw CLI::ValidationError(name, found);
  }
  take(argument);
}
