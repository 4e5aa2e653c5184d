// tools/input.h: what comes from standard input. An argument "-" asks for it.
#pragma once
#include <functional>
#include <string>

// read_text returns the whole of standard input, without one line feed at its end.
std::string read_text();

// read_lines gives each line of standard input to `take`, without the blanks at its end, and calls
// `finish` after the last one. Blank lines are skipped. A line for which `take` throws a
// command_failure is named, and does not stop the others; this throws in the end.
void read_lines(
    const std::function<void(const std::string &line)> &take,
    const std::function<void()> &finish = [] {});

// read_argument gives `argument`, the positional argument `name`, to `take`, or if it is "-" each
// line of standard input. `fault` says what is wrong with a text, or is "".
void read_argument(const char *name, const std::string &argument,
                   const std::function<std::string(const std::string &text)> &fault,
                   const std::function<void(const std::string &text)> &take);
