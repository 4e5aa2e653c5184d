// Any title and any octets as a hex dump, on standard output and through the debug log's console.
#include <cstdio>

#include "fuzz/require.h"
#include "kest/log.h"
#include "tests/support/octets.h"

namespace {

template <class call>
std::string printed(const call &run) {
  char *text = nullptr;
  size_t size = 0;
  FILE *const before = stdout;
  stdout = open_memstream(&text, &size);
  run();
  fclose(stdout);
  stdout = before;
  std::string out(text, size);
  free(text);
  return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::string rest = text_of({data, size});
  const std::string title = c_text(rest);
  const std::string text = rest.substr(std::min(title.size() + 1, size));
  const auto length = static_cast<int32_t>(text.size());
  const auto heading = exact_text(title);
  const auto octets = exact_octets(bytes(text));
  const std::string dump = printed([&] { kest_print_hex(heading.get(), octets.get(), length); });
  require(dump == printed([&] { orba_kest_print_hex(heading.get(), octets.get(), length); }));
  require("-1: " + dump ==
          printed([&] { fnPrintHex(KEST_LOG_CONSOLE, -1, heading.get(), octets.get(), length); }));
  require(dump.starts_with(title + " ("));
  // The digits of each line stand in its columns 5 to 40, the octets themselves from 43 on.
  std::istringstream lines(dump.substr(dump.find('\n', title.size()) + 1));
  std::string digits, shown;
  for (std::string line; std::getline(lines, line);) {
    digits += compact(line.substr(5, 36));
    shown += line.substr(43);
  }
  require(digits == hex(text) && shown.size() == text.size());
  return 0;
}
