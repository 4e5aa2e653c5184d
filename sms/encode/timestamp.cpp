#include "sms/encode/timestamp.h"

#include <cstring>
#include <string_view>

#include "kest/text.h"
#include "sms/tpdu.h"

namespace {

constexpr size_t FIRST_DIGITS = 2; // of the year; the century is not sent
constexpr size_t ZONE_DIGITS = 20; // after the sign

unsigned digit_at(std::string_view text, size_t position) {
  return position < text.size() ? kest_hexchar_to_binary(text[position]) : 0u;
}

// swapped_digits makes an octet of the two digits at `position`: the tens stand in the low nibble.
uint8_t swapped_digits(std::string_view text, size_t position) {
  return static_cast<uint8_t>(digit_at(text, position + 1) << 4 | digit_at(text, position));
}

// zone_octet makes the octet of the digits at `position` and the sign before them.
uint8_t zone_octet(std::string_view text, size_t position) {
  const bool negative = position - 1 < text.size() && text[position - 1] == '-';
  return static_cast<uint8_t>(swapped_digits(text, position) | (negative ? ZONE_NEGATIVE : 0u));
}

} // namespace

void kest_sms_encode_timestamp(const char *str, std::span<uint8_t> out) {
  if (str == nullptr) {
    return;
  }
  const std::string_view text(str, strnlen(str, ZONE_DIGITS + 2));
  size_t written = 0;
  size_t position = FIRST_DIGITS;
  for (; position < text.size() && position != ZONE_DIGITS; position += 3) {
    out[written++] = swapped_digits(text, position);
  }
  out[written] = zone_octet(text, position);
}
