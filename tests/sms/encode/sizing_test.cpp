#include "kest/sms_encode.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

constexpr uint16_t UNTOUCHED = 0xEEEE;

TEST(Sizing, CountsAsTheEncodersCode) {
  for (const json &row : vectors("sms/encode/sizing")) {
    SCOPED_TRACE(row.dump());
    const bool null = row["text"].is_null();
    const auto text = exact_text(null ? "" : text_of(octets_value(row, "text")));
    const uint32_t is_hex = row.value("is_hex", 0u);
    uint16_t segment_len = UNTOUCHED;
    const debug_log log;
    EXPECT_EQ(kest_sms_get_long_message_segment(null ? nullptr : text.get(), is_hex, &segment_len),
              row["units"]);
    EXPECT_EQ(log.lines(), row.value("lines", log.lines()));
    EXPECT_EQ(segment_len, row.value("segment_len", UNTOUCHED));
    EXPECT_EQ(kest_sms_is_long_message(null ? nullptr : text.get(), is_hex), row["long"]);
  }
  const debug_log log;
  EXPECT_EQ(kest_sms_get_long_message_segment("a", 0, nullptr), -1);
  EXPECT_EQ(kest_sms_is_long_message(nullptr, 0), -1);
  EXPECT_EQ(kest_sms_is_long_message("414", 1), 0);
  EXPECT_EQ(log.lines(), (log_lines{"kest_sms_get_long_message_segment some ptr NULL",
                                    "kest_sms_is_long_message some ptr NULL",
                                    "kest_sms_is_long_message buf_len: 2",
                                    "kest_sms_is_long_message buf[0]: 0x41",
                                    "kest_sms_is_long_message buf[1]: 0x40"}));
}

} // namespace
