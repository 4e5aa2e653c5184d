// text/gsm_alphabet.h: the GSM 7 bit default alphabet and its extension (3GPP TS 23.038, clauses
// 6.2.1 and 6.2.1.1). Tables of 128 rows are indexed by GSM code.
#pragma once
#include <array>
#include <cstdint>

using gsm_alphabet = std::array<uint16_t, 128>;

constexpr uint8_t GSM_ESCAPE = 0x1B; // its row in the default and ASCII tables is GSM_NO_CHARACTER
constexpr uint16_t GSM_NO_CHARACTER = 0xFFFF;
constexpr uint16_t GSM_BLANK = 0x20; // in the extension table: no character

[[gnu::visibility(
    "hidden")]] extern const gsm_alphabet kest_gsm_default_alphabet; // Unicode code points

// kest_gsm_ascii_alphabet differs in nine rows, which hold the ASCII character of their code:
// devices that send no escape often mean these.
[[gnu::visibility("hidden")]] extern const gsm_alphabet kest_gsm_ascii_alphabet;

// kest_gsm_extension_alphabet holds the code points behind an escape; a blank where there is none.
[[gnu::visibility("hidden")]] extern const gsm_alphabet kest_gsm_extension_alphabet;

// kest_gsm_utf8_bytes holds the default alphabet in UTF-8: one byte in the low 8 bits, or two with
// the first in the high 8 bits. Here the escape is a blank.
[[gnu::visibility("hidden")]] extern const gsm_alphabet kest_gsm_utf8_bytes;

// How a character below U+0100 is sent: in `septets` places, the last of which holds `code`. With
// two, the other one is an escape. With none it has no code and is left out.
struct gsm_coding {
  uint8_t septets;
  uint8_t code;
};

[[gnu::visibility("hidden")]] extern const std::array<gsm_coding, 256>
    kest_gsm_codings; // indexed by code point
