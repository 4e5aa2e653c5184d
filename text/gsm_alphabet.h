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

// How a character below U+0100 is sent: in `septets` places, the last of which holds `code`. With
// two, the other one is an escape. With none it has no code and is left out.
struct gsm_coding {
  uint8_t septets;
  uint8_t code;
};

[[gnu::visibility("hidden")]] extern const std::array<gsm_coding, 256>
    kest_gsm_codings; // indexed by code point
