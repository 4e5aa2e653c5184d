#include "sms/decode/user_data_text.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

TEST(UserDataText, EachAlphabet) {
  for (const json &row : vectors("sms/decode/user_data_text")) {
    SCOPED_TRACE(row.dump());
    std::vector<uint8_t> units = octets_value(row, "units");
    units.reserve(1); // an empty one is still no null pointer
    const std::string text = hex_value(row, "text");
    std::vector<uint8_t> dst(row.value("limit", 255u), 0xEE);
    EXPECT_EQ(kest_convert_userdata_to_utf8(row["alphabet"], units, dst), text.size() / 2);
    EXPECT_EQ(hex(dst), text + repeat("EE", dst.size() - text.size() / 2));
  }
}

TEST(UserDataText, LogLines) {
  const debug_log log(KEST_LOG_DEBUG);
  uint8_t dst[5];
  EXPECT_EQ(kest_convert_userdata_to_utf8(3, bytes(""), dst), 0u);
  // A unit that does not fit is looked at, and the one behind it is not.
  EXPECT_EQ(kest_convert_userdata_to_utf8(2, octets("20AC 0041 0042"), dst), 4u);
  EXPECT_EQ(kest_convert_userdata_to_utf8(2, octets("0041 20AC 0042"), dst), 4u);
  EXPECT_EQ(kest_convert_userdata_to_utf8(2, octets("0041"), {dst, 0}), 0u);
  EXPECT_EQ(kest_convert_userdata_to_utf8(2, {}, dst), 0u);
  EXPECT_EQ(kest_convert_userdata_to_utf8(2, bytes("ab"), {}), 0u);
  log_lines expected;
  for (const char *line : {"dcs: 0x3", "dcs: 0x2", "val: 0x20ac", "val: 0x41", "val: 0x42",
                           "dcs: 0x2", "val: 0x41", "val: 0x20ac", "val: 0x42", "dcs: 0x2"}) {
    expected.push_back(std::string("kest_convert_userdata_to_utf8 ") + line);
  }
  EXPECT_EQ(log.lines(), expected);
}

} // namespace
