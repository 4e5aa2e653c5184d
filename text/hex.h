// text/hex.h: what other files of the library need of hexadecimal text beside kest/text.h.
#pragma once
#include <cstdint>
#include <optional>
#include <span>

#include "kest/text.h"
#include "log/debug_log.h"

// kest_hex_to_octets is kest_hexstring_to_binary with a result that separates a refusal (nullopt)
// from an empty text (0). `octets` holds at most 65535.
std::optional<uint16_t> kest_hex_to_octets(const char *str, std::span<uint8_t> octets);

// plain_hex_digit returns the digit of `value`; `ten` is the one of 10, in either case. There is no
// range test: values above 15 run on past the letters.
constexpr char plain_hex_digit(char ten, int value) {
  return static_cast<char>(value < 10 ? '0' + value : ten + value - 10);
}

// hex_digit is kest_binary_to_hexchar without the call while nothing is logged.
inline char hex_digit(unsigned value) {
  const auto octet = static_cast<uint8_t>(value);
  return logs(KEST_LOG_ERROR) ? static_cast<char>(kest_binary_to_hexchar(octet))
                              : plain_hex_digit('a', octet);
}
