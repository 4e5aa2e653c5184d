// tools/commands.h: the commands of `kest`. Each adds its options to the program and does its work
// while the command line is parsed.
#pragma once
#include <stdexcept>

#include <CLI/CLI.hpp>

// What a command throws when its work fails: the message goes to standard error, the exit status
// is 1. Bad usage is CLI::ValidationError and has the exit status 2.
struct command_failure : std::runtime_error {
  using runtime_error::runtime_error;
};

void add_submit_command(CLI::App &app);
void add_deliver_command(CLI::App &app);
void add_cdma_command(CLI::App &app);
void add_decode_command(CLI::App &app);
void add_cb_command(CLI::App &app);
void add_ussd_command(CLI::App &app);
void add_sim_command(CLI::App &app);
void add_log_command(CLI::App &app);
