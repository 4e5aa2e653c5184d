#include "text/gsm_alphabet.h"

#include <cstddef>
#include <cstring>

namespace {

struct code_row {
  uint8_t code;
  uint16_t code_point;
};

// TS 23.038, clause 6.2.1.1.
constexpr code_row EXTENSION_ROWS[] = {
    {0x0A, 0x000C}, {0x14, 0x005E}, {0x28, 0x007B}, {0x29, 0x007D}, {0x2F, 0x005C}, // FF ^ { } '\'
    {0x3C, 0x005B}, {0x3D, 0x007E}, {0x3E, 0x005D}, {0x40, 0x007C}, {0x65, 0x20AC}, // [ ~ ] | euro
};

constexpr uint8_t ASCII_CODES[] = {0x5B, 0x5C, 0x5D, 0x5E, 0x60, 0x7B, 0x7C, 0x7D, 0x7E};

constexpr std::array<uint8_t, 128> codings(const gsm_alphabet &alphabet) {
  std::array<uint8_t, 128> table = {};
  table.fill(GSM_NO_CODE);
  for (size_t code = 0; code < alphabet.size(); ++code) {
    if (alphabet[code] < table.size()) {
      table[alphabet[code]] = static_cast<uint8_t>(code);
    }
  }
  for (const code_row &row : EXTENSION_ROWS) {
    if (row.code_point < table.size()) {
      table[row.code_point] = GSM_ESCAPED | row.code;
    }
  }
  return table;
}

} // namespace

// TS 23.038, clause 6.2.1.
constexpr gsm_alphabet kest_gsm_default_alphabet = {
    0x0040, 0x00A3, 0x0024, 0x00A5, 0x00E8, 0x00E9, 0x00F9, 0x00EC, // 00 @ £ $ ¥ è é ù ì
    0x00F2, 0x00C7, 0x000A, 0x00D8, 0x00F8, 0x000D, 0x00C5, 0x00E5, // 08 ò Ç LF Ø ø CR Å å
    0x0394, 0x005F, 0x03A6, 0x0393, 0x039B, 0x03A9, 0x03A0, 0x03A8, // 10 Δ _ Φ Γ Λ Ω Π Ψ
    0x03A3, 0x0398, 0x039E, 0xFFFF, 0x00C6, 0x00E6, 0x00DF, 0x00C9, // 18 Σ Θ Ξ ESC Æ æ ß É
    0x0020, 0x0021, 0x0022, 0x0023, 0x00A4, 0x0025, 0x0026, 0x0027, // 20 SP ! " # ¤ % & '
    0x0028, 0x0029, 0x002A, 0x002B, 0x002C, 0x002D, 0x002E, 0x002F, // 28 ( ) * + , - . /
    0x0030, 0x0031, 0x0032, 0x0033, 0x0034, 0x0035, 0x0036, 0x0037, // 30 0 1 2 3 4 5 6 7
    0x0038, 0x0039, 0x003A, 0x003B, 0x003C, 0x003D, 0x003E, 0x003F, // 38 8 9 : ; < = > ?
    0x00A1, 0x0041, 0x0042, 0x0043, 0x0044, 0x0045, 0x0046, 0x0047, // 40 ¡ A B C D E F G
    0x0048, 0x0049, 0x004A, 0x004B, 0x004C, 0x004D, 0x004E, 0x004F, // 48 H I J K L M N O
    0x0050, 0x0051, 0x0052, 0x0053, 0x0054, 0x0055, 0x0056, 0x0057, // 50 P Q R S T U V W
    0x0058, 0x0059, 0x005A, 0x00C4, 0x00D6, 0x00D1, 0x00DC, 0x00A7, // 58 X Y Z Ä Ö Ñ Ü §
    0x00BF, 0x0061, 0x0062, 0x0063, 0x0064, 0x0065, 0x0066, 0x0067, // 60 ¿ a b c d e f g
    0x0068, 0x0069, 0x006A, 0x006B, 0x006C, 0x006D, 0x006E, 0x006F, // 68 h i j k l m n o
    0x0070, 0x0071, 0x0072, 0x0073, 0x0074, 0x0075, 0x0076, 0x0077, // 70 p q r s t u v w
    0x0078, 0x0079, 0x007A, 0x00E4, 0x00F6, 0x00F1, 0x00FC, 0x00E0, // 78 x y z ä ö ñ ü à
};
static_assert(kest_gsm_default_alphabet[GSM_ESCAPE] == GSM_NO_CHARACTER);

constexpr std::array<uint8_t, 128> kest_gsm_codings = codings(kest_gsm_default_alphabet);
static_assert(kest_gsm_codings['`'] == GSM_NO_CODE,
              "the one printable ASCII character without code");

uint16_t kest_gsm_extended(uint8_t code) {
  for (const code_row &row : EXTENSION_ROWS) {
    if (row.code == code) {
      return row.code_point;
    }
  }
  return code == GSM_ESCAPE ? GSM_BLANK : kest_gsm_default_alphabet[code];
}

uint16_t kest_gsm_unescaped(uint8_t code) {
  return memchr(ASCII_CODES, code, sizeof ASCII_CODES) != nullptr ? code
                                                                  : kest_gsm_default_alphabet[code];
}
