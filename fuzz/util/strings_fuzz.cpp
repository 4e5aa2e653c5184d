// Any text to the function that takes a quotation out of it. Run it with -close_fd_mask=1: it
// prints.
#include "fuzz/require.h"
#include "kest/util.h"
#include "tests/support/octets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::string text = c_text(text_of({data, size}));
  char *out = nullptr;
  const auto count = static_cast<size_t>(kest_remove_quotation_mark(exact_text(text).get(), &out));
  const std::unique_ptr<char, decltype(&free)> block(out, &free);
  const size_t first = std::min(text.find_first_not_of(' '), text.size());
  const bool taken = !text.empty() && (first == text.size() || text[first] == '"');
  require((out != nullptr) == taken);
  const std::string after = text.substr(std::min(first + 1, text.size()));
  const size_t closing = after.find('"');
  require(count == (taken ? std::min(closing, after.size()) : 0));
  require(!taken || after.compare(0, count, out, count) == 0);
  require(!taken || closing == std::string::npos || out[count] == '\0');
  return 0;
}
