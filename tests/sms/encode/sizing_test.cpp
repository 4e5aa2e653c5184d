#include "kest/sms_encode.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

constexpr uint16_t UNTOUCHED = 0xEEEE;

// The segment function logs all that the other one does, and the alphabet and its steps beside.
log_lines without_steps(const log_lines &lines) {
  log_lines left;
  for (std::string line : lines) {
    const std::string name = line.substr(0, line.find(' ')), rest = line.substr(name.size());
    EXPECT_EQ(name, "kest_sms_get_long_message_segment");
    if (!rest.starts_with(" dcs:") && !rest.starts_with(" KEST_GW_ALPHABET_UCS2:")) {
      left.push_back("kest_sms_is_long_message" + rest);
    }
  }
  return left;
}

TEST(Sizing, CountsAsTheEncodersCode) {
  for (const json &row : vectors("sms/encode/sizing")) {
    SCOPED_TRACE(row.dump());
    const bool null = row["text"].is_null();
    const auto text = exact_text(null ? "" : text_of(octets_value(row, "text")));
    const uint32_t is_hex = row.value("is_hex", 0u);
    uint16_t segment_len = UNTOUCHED;
    log_lines steps;
    {
      const debug_log log;
      EXPECT_EQ(
          kest_sms_get_long_message_segment(null ? nullptr : text.get(), is_hex, &segment_len),
          row["units"]);
      steps = log.lines();
      EXPECT_EQ(steps, row.value("lines", steps));
    }
    EXPECT_EQ(segment_len,
              row["segment_len"].is_null() ? UNTOUCHED : row["segment_len"].get<uint16_t>());
    const debug_log log;
    EXPECT_EQ(kest_sms_is_long_message(null ? nullptr : text.get(), is_hex), row["long"]);
    EXPECT_EQ(log.lines(), without_steps(steps));
  }
  const debug_log log(KEST_LOG_ERROR);
  EXPECT_EQ(kest_sms_get_long_message_segment("a", 0, nullptr), -1);
  EXPECT_EQ(log.lines(), log_lines{"kest_sms_get_long_message_segment some ptr NULL"});
}

} // namespace
