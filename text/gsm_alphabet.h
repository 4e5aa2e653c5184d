// text/gsm_alphabet.h: the GSM 7 bit default alphabet and its extension (3GPP TS 23.038, clauses
// 6.2.1 and 6.2.1.1). Tables of 128 rows are indexed by GSM code.
#pragma once
#include <array>
#include <cstdint>

using gsm_alphabet = std::array<uint16_t, 128>;

constexpr uint8_t GSM_ESCAPE = 0x1B; // its row is GSM_NO_CHARACTER
constexpr uint16_t GSM_NO_CHARACTER = 0xFFFF;
constexpr uint16_t GSM_BLANK = 0x20; // what an escape shows that has no meaning
constexpr uint8_t GSM_CARRIAGE_RETURN = 0x0D;

[[gnu::visibility("hidden")]] extern const gsm_alphabet kest_gsm_default_alphabet; // code points

// kest_gsm_extended returns the code point of the code that follows an escape: that of the default
// alphabet if the extension has none, and a blank for a second escape.
uint16_t kest_gsm_extended(uint8_t code);

// kest_gsm_unescaped returns the code point of a code in text without any escape. There nine codes
// read as ASCII: devices that send no escape often mean these.
uint16_t kest_gsm_unescaped(uint8_t code);

// How each ASCII character is sent: its code, with GSM_ESCAPED if an escape precedes it. A
// character without a code is left out.
constexpr uint8_t GSM_ESCAPED = 0x80;
constexpr uint8_t GSM_NO_CODE = 0xFF;
[[gnu::visibility("hidden")]] extern const std::array<uint8_t, 128> kest_gsm_codings;

// kest_gsm_septets returns the septets of a coding: 0 to 2.
constexpr unsigned kest_gsm_septets(uint8_t coding) {
  return coding < GSM_ESCAPED ? 1 : coding == GSM_NO_CODE ? 0 : 2;
}
