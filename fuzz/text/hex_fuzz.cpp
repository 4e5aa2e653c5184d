// Any text and any octets through the conversions of hexadecimal text. The first byte of an input
// chooses whether each digit is logged, the second how much room there is.
#include "fuzz/require.h"
#include "kest/log.h"
#include "kest/text.h"
#include "tests/support/octets.h"

namespace {

constexpr uint8_t UNTOUCHED = 0xEE;

// capacity is around what is needed: up to eight less or seven more.
uint16_t capacity(size_t needed, uint8_t choice) {
  return static_cast<uint16_t>(std::max<size_t>(needed + choice % 16, 8) - 8);
}

template <class element>
std::vector<element> untouched(size_t size) {
  return std::vector<element>(size, static_cast<element>(UNTOUCHED));
}

std::vector<uint8_t> to_octets(const std::string &text, uint16_t size) {
  std::vector<uint8_t> octets = untouched<uint8_t>(size);
  const size_t needed = (text.size() + 1) / 2;
  const size_t count = kest_hexstring_to_binary(exact_text(text).get(), octets.data(), size);
  if (needed > size) {
    require(count == 0 && octets == untouched<uint8_t>(size));
    return {};
  }
  require(count == needed && std::count(octets.begin() + static_cast<ptrdiff_t>(count),
                                        octets.end(), 0) == static_cast<ptrdiff_t>(size - count));
  for (size_t i = 0; i < text.size(); ++i) {
    const int digit = octets[i / 2] >> (i % 2 == 0 ? 4 : 0) & 0xF;
    require(kest_hexchar_to_binary(text[i]) == digit);
  }
  octets.resize(count);
  return octets;
}

template <class convert>
std::string to_text(std::span<const uint8_t> octets, uint16_t size, const convert &run) {
  std::vector<char> text = untouched<char>(size);
  run(exact_octets(octets).get(), static_cast<uint16_t>(octets.size()), text.data(), size);
  const size_t length = 2 * octets.size();
  if (length >= size) {
    require(text == untouched<char>(size));
    return "";
  }
  require(std::count(text.begin(), text.end(), '\0') == static_cast<ptrdiff_t>(size - length));
  return text.data();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 2) {
    return 0;
  }
  log_level = data[0] % 2 != 0 ? KEST_LOG_ERROR : 0; // there is no log file
  const std::span<const uint8_t> octets(data + 2, size - 2);
  const std::string text = c_text(text_of(octets));
  to_octets(text, capacity((text.size() + 1) / 2, data[1]));
  const uint16_t room = capacity(2 * octets.size() + 1, data[1]);
  const std::string lower = to_text(octets, room, kest_binary_to_hexstring);
  const std::string upper = to_text(octets, room, kest_binary_to_hexstring_uppercase);
  require(lower.empty() == upper.empty() && (upper.empty() || upper == hex(octets)));
  for (const std::string &digits : {lower, upper}) {
    const std::vector<uint8_t> back = to_octets(digits, static_cast<uint16_t>(octets.size()));
    require(digits.empty() || std::equal(back.begin(), back.end(), octets.begin(), octets.end()));
  }
  return 0;
}
