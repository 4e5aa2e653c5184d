// text/hex.h: what other files of the library need of hexadecimal text beside kest/text.h.
#pragma once
#include <cstdint>
#include <optional>
#include <span>

// kest_hex_to_octets is kest_hexstring_to_binary with a result that tells a refusal (nullopt) from
// an empty text (0). `octets` holds at most 65535.
std::optional<uint16_t> kest_hex_to_octets(const char *str, std::span<uint8_t> octets);
