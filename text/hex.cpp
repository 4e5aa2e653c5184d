#include "text/hex.h"

#include <cstring>

#include "kest/log.h"
#include "kest/text.h"

namespace {

constexpr const char *TOO_SMALL = "%s Buffer is too small!!!\n";

// One letter case of the digits, and the names that its log lines carry.
struct digit_case {
  uint8_t letter_offset; // from the value 10 to its letter
  const char *char_name;
  const char *string_name;
};

constexpr digit_case LOWER = {'a' - 10, "kest_binary_to_hexchar", "kest_binary_to_hexstring"};
constexpr digit_case UPPER = {'A' - 10, "kest_binary_to_hexchar_uppercase",
                              "kest_binary_to_hexstring_uppercase"};

int8_t to_digit(const digit_case &digits, uint8_t value) {
  if ((log_level & KEST_LOG_ERROR) != 0) { // spares a call for each nibble of a message
    kest_log(log_level & KEST_LOG_ERROR, "%s value=%d!!!\n", digits.char_name, value);
  }
  return static_cast<int8_t>(value + (value < 10 ? '0' : digits.letter_offset));
}

void to_text(const digit_case &digits, const uint8_t *data, uint16_t data_len, char *str,
             uint16_t str_size) {
  if (2u * data_len >= str_size) {
    kest_log(log_level & KEST_LOG_ERROR, TOO_SMALL, digits.string_name);
    return;
  }
  memset(str, 0, str_size);
  for (size_t i = 0; i < data_len; ++i) {
    str[2 * i] = static_cast<char>(to_digit(digits, data[i] >> 4));
    str[2 * i + 1] = static_cast<char>(to_digit(digits, data[i] & 0xF));
  }
}

} // namespace

uint8_t kest_hexchar_to_binary(char c) {
  if (c >= '0' && c <= '9') {
    return static_cast<uint8_t>(c - '0');
  }
  if (c >= 'A' && c <= 'F') {
    return static_cast<uint8_t>(c - 'A' + 10);
  }
  if (c >= 'a' && c <= 'f') {
    return static_cast<uint8_t>(c - 'a' + 10);
  }
  return 0;
}

std::optional<uint16_t> kest_hex_to_octets(const char *str, std::span<uint8_t> octets) {
  const size_t digits = strlen(str);
  const size_t count = digits / 2 + digits % 2;
  if (octets.size() < count) {
    kest_log(log_level & KEST_LOG_ERROR, TOO_SMALL, "kest_hexstring_to_binary");
    return std::nullopt;
  }
  if (!octets.empty()) {
    memset(octets.data(), 0, octets.size());
  }
  for (size_t i = 0; i < digits; ++i) {
    const uint8_t nibble = kest_hexchar_to_binary(str[i]);
    octets[i / 2] |= static_cast<uint8_t>(i % 2 == 0 ? nibble << 4 : nibble);
  }
  return static_cast<uint16_t>(count);
}

uint16_t kest_hexstring_to_binary(const char *str, uint8_t *buf, uint16_t buf_size) {
  return kest_hex_to_octets(str, {buf, buf_size}).value_or(0);
}

int8_t kest_binary_to_hexchar(uint8_t value) {
  return to_digit(LOWER, value);
}

int8_t kest_binary_to_hexchar_uppercase(uint8_t value) {
  return to_digit(UPPER, value);
}

void kest_binary_to_hexstring(const uint8_t *data, uint16_t data_len, char *str,
                              uint16_t str_size) {
  to_text(LOWER, data, data_len, str, str_size);
}

void kest_binary_to_hexstring_uppercase(const uint8_t *data, uint16_t data_len, char *str,
                                        uint16_t str_size) {
  to_text(UPPER, data, data_len, str, str_size);
}
