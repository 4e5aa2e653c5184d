// text/hex.h: what other files of the library need of hexadecimal text beside kest/text.h.
#pragma once
#include <cstdint>
#include <optional>
#include <span>

#include "kest/text.h"
#include "log/debug_log.h"

// kest_hex_to_octets is kest_hexstring_to_binary with a result that tells a refusal (nullopt) from
// an empty text (0). `octets` holds at most 65535.
std::optional<uint16_t> kest_hex_to_octets(const char *str, std::span<uint8_t> octets);

// hex_digit is kest_binary_to_hexchar for a nibble, without the call while nothing is logged.
inline char hex_digit(unsigned nibble) {
  if (logs(KEST_LOG_ERROR)) {
    return static_cast<char>(kest_binary_to_hexchar(static_cast<uint8_t>(nibble)));
  }
  return static_cast<char>(nibble + (nibble < 10 ? '0' : 'a' - 10));
}
