// tools/output.h: standard output.
#pragma once
#include <string>

// print_line writes a line at once, so that whoever reads a pipe gets it when it is complete. It
// throws a command_failure if it can't be written.
void print_line(const std::string &line);

// painted returns `text` as a terminal shows it in a colour, or as it is if standard output is no
// terminal that wants colours.
enum class paint { TITLE, LABEL, CAUTION, ALARM };
std::string painted(paint colour, const std::string &text);

// wait_beside_output waits, and ends the program by SIGPIPE if standard output is gone: nobody
// reads what there is to wait for.
void wait_beside_output(int milliseconds);
