#include "tools/output.h"

#include <iostream>

#include "tools/commands.h"

void print_line(const std::string &line) {
  std::cout << line << '\n' << std::flush;
  if (!std::cout) {
    throw command_failure("can't write to standard output");
  }
}
