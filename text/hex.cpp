#include "text/hex.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "octets/word.h"

namespace {

constexpr const char *TOO_SMALL = "%s Buffer is too small!!!\n";

// One letter case of the digits, and the names that its log lines carry.
struct digit_case {
  char ten;
  const char *char_name;
  const char *string_name;
};

constexpr digit_case LOWER = {'a', "kest_binary_to_hexchar", "kest_binary_to_hexstring"};
constexpr digit_case UPPER = {'A', "kest_binary_to_hexchar_uppercase",
                              "kest_binary_to_hexstring_uppercase"};

int8_t to_digit(const digit_case &digits, uint8_t value) {
  kest_log_error("%s value=%d!!!\n", digits.char_name, value);
  return static_cast<int8_t>(plain_hex_digit(digits.ten, value));
}

// digits_of turns the octet in each 16 bits of `octets` into its two digits, as they stand in a
// text. (Inlined, for it would be called for each word.)
[[gnu::always_inline]] inline word digits_of(const digit_case &digits, word octets) {
  const word values = (octets >> 4 & every_unit(0x000F)) | (octets & every_unit(0x000F)) << 8;
  const word letters = (values + every_octet(6)) >> 4 & every_octet(1); // 1 for a value from 10 on
  return values + every_octet('0') + letters * static_cast<word>(digits.ten - '0' - 10);
}

// put_words is put_digits while no digit is logged: a word of digits at once.
void put_words(const digit_case &digits, std::span<const uint8_t> octets, char *str) {
  size_t i = 0;
  for (; octets.size() - i >= sizeof(half_word); i += sizeof(half_word)) {
    store(str + 2 * i, digits_of(digits, spread(load<half_word>(octets.data() + i))));
  }
  for (; i < octets.size(); ++i) {
    store(str + 2 * i, static_cast<uint16_t>(digits_of(digits, octets[i])));
  }
}

void put_digits(const digit_case &digits, std::span<const uint8_t> octets, char *str) {
  for (const uint8_t octet : octets) {
    *str++ = static_cast<char>(to_digit(digits, octet >> 4));
    *str++ = static_cast<char>(to_digit(digits, octet & 0xF));
  }
}

void to_text(const digit_case &digits, std::span<const uint8_t> octets, char *str,
             size_t str_size) {
  const size_t length = 2 * octets.size();
  if (length >= str_size) {
    kest_log_error(TOO_SMALL, digits.string_name);
    return;
  }
  if (logs(KEST_LOG_ERROR)) {
    put_digits(digits, octets, str);
  } else {
    put_words(digits, octets, str);
  }
  memset(str + length, 0, str_size - length);
}

// The values of digits in either case. Other characters count as 0.
constexpr std::array<uint8_t, 256> DIGIT_VALUES = [] {
  std::array<uint8_t, 256> values = {};
  for (uint8_t value = 0; value < 16; ++value) {
    values[static_cast<uint8_t>(plain_hex_digit('a', value))] = value;
    values[static_cast<uint8_t>(plain_hex_digit('A', value))] = value;
  }
  return values;
}();

} // namespace

uint8_t kest_hexchar_to_binary(char c) {
  return DIGIT_VALUES[static_cast<uint8_t>(c)];
}

std::optional<uint16_t> kest_hex_to_octets(const char *str, std::span<uint8_t> octets) {
  const size_t digits = strlen(str);
  const size_t count = digits / 2 + digits % 2;
  if (octets.size() < count) {
    kest_log_error(TOO_SMALL, "kest_hexstring_to_binary");
    return std::nullopt;
  }
  const auto *text = reinterpret_cast<const uint8_t *>(str);
  for (size_t i = 0; i < digits / 2; ++i) {
    octets[i] =
        static_cast<uint8_t>(DIGIT_VALUES[text[2 * i]] << 4 | DIGIT_VALUES[text[2 * i + 1]]);
  }
  if (digits % 2 != 0) {
    octets[digits / 2] = static_cast<uint8_t>(DIGIT_VALUES[text[digits - 1]] << 4);
  }
  std::fill(octets.begin() + static_cast<ptrdiff_t>(count), octets.end(), uint8_t{0});
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
  to_text(LOWER, {data, data_len}, str, str_size);
}

void kest_binary_to_hexstring_uppercase(const uint8_t *data, uint16_t data_len, char *str,
                                        uint16_t str_size) {
  to_text(UPPER, {data, data_len}, str, str_size);
}
