// kest: short messages at a desk. A small host of the library, through its exported headers alone.
#include <cstring>
#include <iostream>

#include "tools/commands.h"
#include "tools/host_symbols.h"

namespace {

void trace_to(const std::string &path) {
  if (path.empty() || path.size() >= LOG_FILE_CAPACITY) {
    throw CLI::ValidationError("--trace", "a path of 1 to 253 characters is wanted");
  }
  memcpy(LOG_FILE, path.c_str(), path.size() + 1);
  log_level = KEST_LOG_DEBUG | KEST_LOG_ERROR;
}

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): anything else that is thrown is to end the program
int main(int argc, char **argv) {
  constexpr int FAILURE = 1;
  constexpr int BAD_USAGE = 2;
  CLI::App app("Short messages to and from the octets that a modem exchanges");
  app.name("kest");
  app.require_subcommand(1);
  app.add_option_function<std::string>(
         "--trace", trace_to, "Append the library's debug log to FILE; `kest log` reads it")
      ->type_name("FILE")
      ->trigger_on_parse();
  add_submit_command(app);
  add_deliver_command(app);
  add_cdma_command(app);
  add_decode_command(app);
  add_cb_command(app);
  add_ussd_command(app);
  add_sim_command(app);
  add_log_command(app);
  int status = 0;
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    status = app.exit(error) == 0 ? 0 : BAD_USAGE;
  } catch (const command_failure &failure) {
    std::cerr << "kest: " << failure.what() << '\n';
    return FAILURE;
  }
  std::cout.flush();
  return std::cout ? status : FAILURE;
}
