#include "text/gsm_alphabet.h"

#include <string>

#include <gtest/gtest.h>

namespace {

// 3GPP TS 23.038, clause 6.2.1, as its table shows it, column by column. The escape is U+FFFF.
constexpr char16_t STANDARD[] = u"@£$¥èéùìòÇ\nØø\rÅåΔ_ΦΓΛΩΠΨΣΘΞ\uFFFFÆæßÉ"
                                u" !\"#¤%&'()*+,-./0123456789:;<=>?"
                                u"¡ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÑÜ§"
                                u"¿abcdefghijklmnopqrstuvwxyzäöñüà";
static_assert(std::size(STANDARD) == 129 && STANDARD[0x09] == 0x00C7);

// Clause 6.2.1.1: the codes after an escape, and their characters.
const std::u16string ESCAPED_CODES = u"\x0A\x14\x28\x29\x2F\x3C\x3D\x3E\x40\x65";
const std::u16string ESCAPED = u"\f^{}\\[~]|\u20AC";

TEST(GsmAlphabet, TablesFollowTheStandard) {
  const std::u16string ascii = u"[\\]^`{|}~"; // the rows that read as ASCII without an escape
  for (char16_t code = 0; code < 128; ++code) {
    SCOPED_TRACE(int{code});
    const char16_t c = STANDARD[code];
    EXPECT_EQ(kest_gsm_default_alphabet[code], c);
    const auto octet = static_cast<uint8_t>(code);
    EXPECT_EQ(kest_gsm_unescaped(octet), ascii.find(code) != ascii.npos ? code : c);
    const size_t escaped = ESCAPED_CODES.find(code);
    EXPECT_EQ(kest_gsm_extended(octet), escaped < 10 ? ESCAPED[escaped] : code == 0x1B ? u' ' : c);
  }
}

TEST(GsmAlphabet, CodingsInvertTheTables) {
  const std::u16string standard(STANDARD, 128);
  for (char16_t c = 0; c < 128; ++c) {
    const size_t code = standard.find(c), escaped = ESCAPED.find(c);
    const size_t expected = code < 128     ? code
                            : escaped < 10 ? size_t{ESCAPED_CODES[escaped]} | GSM_ESCAPED
                                           : GSM_NO_CODE;
    EXPECT_EQ(kest_gsm_codings[c], expected) << int{c};
    EXPECT_EQ(kest_gsm_septets(kest_gsm_codings[c]), code < 128 ? 1 : escaped < 10 ? 2 : 0);
  }
}

} // namespace
