#include "sms/encode/user_data.h"

#include <gtest/gtest.h>

#include "tests/support/vectors.h"

namespace {

TEST(EncodeUserData, FirstByteOutsideThe7BitAlphabetDecides) {
  const struct {
    kest_gw_alphabet alphabet;
    std::vector<std::string> texts;
  } cases[] = {
      {KEST_GW_ALPHABET_7BIT, {"", "a[{}]~\\|^\f\x7F", std::string("a\0b", 3)}},
      {KEST_GW_ALPHABET_8BIT, {"\x80", "a\xBF", "\x80\u00E9", "\xBF`"}},
      {KEST_GW_ALPHABET_UCS2,
       {"a`", "\u00E9", "\u20AC", "\u00E9\x80", "`\x80", "\xFF", "\xC0", "\xE0"}},
  };
  for (const auto &c : cases) {
    for (const std::string &text : c.texts) {
      for (size_t i = 0; i <= 16; ++i) { // at each place of a word
        const std::string plain(i, 'a');
        const auto longer = exact_octets(bytes(plain + text + plain));
        EXPECT_EQ(kest_sms_select_alphabet({longer.get(), 2 * i + text.size()}), c.alphabet)
            << hex(text) << ' ' << i;
      }
    }
  }
}

TEST(EncodeUserData, CodesUpToItsLimits) {
  for (const json &row : vectors("sms/encode/user_data")) {
    SCOPED_TRACE(row.dump());
    const std::vector<uint8_t> text = octets_value(row, "text");
    const std::string coded = hex_value(row, "coded");
    std::vector<uint8_t> out(255, 0xEE);
    uint16_t consumed = 0xEEEE;
    EXPECT_EQ(kest_sms_convert_utf8_to_userdata(row["alphabet"], text, row["cut"], &consumed,
                                                coded_text(out)),
              static_cast<int32_t>(coded.size() / 2));
    EXPECT_EQ(hex(out), coded + repeat("00", 255 - coded.size() / 2));
    EXPECT_EQ(consumed, row["consumed"]);
  }
  std::vector<uint8_t> out(255, 0xEE);
  uint16_t consumed = 7;
  EXPECT_EQ(kest_sms_convert_utf8_to_userdata(0, {}, true, &consumed, coded_text(out)), 0);
  EXPECT_EQ(consumed, 7);
  EXPECT_EQ(hex(out), repeat("EE", 255)) << "without a text nothing is touched";
}

} // namespace
