#include "sms/decode/user_data_text.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

TEST(UserDataText, EachAlphabet) {
  for (const json &row : vectors("sms/decode/user_data_text")) {
    SCOPED_TRACE(row.dump());
    const debug_log log;
    std::vector<uint8_t> units = octets_value(row, "units"), dst(row.value("limit", 255u), 0xEE);
    units.reserve(1); // an empty one is still no null pointer
    dst.reserve(1);
    const std::string text = hex_value(row, "text");
    EXPECT_EQ(kest_convert_userdata_to_utf8(row["alphabet"], units, dst), text.size() / 2);
    EXPECT_EQ(hex(dst), text + repeat("EE", dst.size() - text.size() / 2));
    EXPECT_EQ(log.lines(), row.value("lines", log.lines()));
  }
  const debug_log log;
  uint8_t octet = 0xEE;
  EXPECT_EQ(kest_convert_userdata_to_utf8(2, {}, {&octet, 1}), 0u);
  EXPECT_EQ(kest_convert_userdata_to_utf8(2, {&octet, 1}, {}), 0u);
  EXPECT_EQ(log.lines(), log_lines{}) << "a null pointer ends it ahead of the first line";
}

} // namespace
