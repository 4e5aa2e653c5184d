#include "tools/output.h"

#include <csignal>
#include <cstdlib>
#include <iostream>

#include <poll.h>
#include <unistd.h>

#include "tools/commands.h"

namespace {

// variable returns a variable of the environment; "" if it is not set.
std::string variable(const char *name) {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here changes the environment
  const char *const value = getenv(name);
  return value == nullptr ? "" : value;
}

// has_colours tells whether standard output is a terminal that wants colours, by the conventions of
// NO_COLOR and TERM.
bool has_colours() {
  return isatty(STDOUT_FILENO) != 0 && variable("NO_COLOR").empty() && variable("TERM") != "dumb";
}

} // namespace

void print_line(const std::string &line) {
  std::cout << line << '\n' << std::flush;
  if (!std::cout) {
    throw command_failure("can't write to standard output");
  }
}

std::string painted(paint colour, const std::string &text) {
  // Select graphic rendition (ECMA-48, clause 8.3.117): bold, cyan, yellow, red.
  constexpr const char *RENDITIONS[] = {"1", "36", "33", "31"};
  static const bool colours = has_colours();
  if (!colours) {
    return text;
  }
  return std::string("\x1b[") + RENDITIONS[static_cast<size_t>(colour)] + 'm' + text + "\x1b[0m";
}

void wait_beside_output(int milliseconds) {
  pollfd output = {STDOUT_FILENO, 0, 0}; // errors alone
  if (poll(&output, 1, milliseconds) > 0) {
    kill(getpid(), SIGPIPE);
    throw command_failure("standard output is gone"); // where the signal is ignored
  }
}
