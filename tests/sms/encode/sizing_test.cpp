#include "kest/sms_encode.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

constexpr uint16_t UNTOUCHED = 0xEEEE;

TEST(Sizing, CountsAsTheEncodersCode) {
  for (const json &row : vectors("sms/encode/sizing")) {
    for (const uint32_t level : LOG_LEVELS) {
      SCOPED_TRACE(row.dump());
      const auto text = exact_text(text_of(octets_value(row, "text")));
      const uint32_t is_hex = row.value("is_hex", 0u);
      uint16_t segment_len = UNTOUCHED;
      const debug_log log(level);
      EXPECT_EQ(kest_sms_get_long_message_segment(text.get(), is_hex, &segment_len), row["units"]);
      if ((level & KEST_LOG_DEBUG) == 0 || row.contains("lines")) {
        EXPECT_EQ(log.lines(), at_level(row.value("lines", log_lines{}), level));
      }
      EXPECT_EQ(segment_len, row.value("segment_len", UNTOUCHED));
      EXPECT_EQ(kest_sms_is_long_message(text.get(), is_hex), row["long"]);
    }
  }
  for (const uint32_t level : LOG_LEVELS) {
    const debug_log log(level);
    uint16_t segment_len = UNTOUCHED;
    EXPECT_EQ(kest_sms_get_long_message_segment(nullptr, 0, &segment_len), -1);
    EXPECT_EQ(segment_len, UNTOUCHED);
    EXPECT_EQ(kest_sms_get_long_message_segment("a", 0, nullptr), -1);
    EXPECT_EQ(kest_sms_is_long_message(nullptr, 0), -1);
    EXPECT_EQ(kest_sms_is_long_message("414", 1), 0);
    const log_lines lines = {"kest_sms_get_long_message_segment some ptr NULL",
                             "kest_sms_get_long_message_segment some ptr NULL",
                             "kest_sms_is_long_message some ptr NULL",
                             "kest_sms_is_long_message buf_len: 2",
                             "kest_sms_is_long_message buf[0]: 0x41",
                             "kest_sms_is_long_message buf[1]: 0x40"};
    EXPECT_EQ(log.lines(), at_level(lines, level));
  }
}

} // namespace
