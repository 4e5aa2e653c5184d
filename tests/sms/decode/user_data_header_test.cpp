#include "sms/decode/user_data_header.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/records.h"

namespace {

const std::string NAME = "kest_decode_user_data_header ";

TEST(UserDataHeader, WalksItsElements) {
  for (const json &row : vectors("sms/decode/user_data_header")) {
    if (!row.contains("header")) {
      continue;
    }
    SCOPED_TRACE(row.dump());
    const debug_log log(KEST_LOG_ERROR);
    std::vector<uint8_t> header = octets_value(row, "header");
    const size_t size = header.size();
    header.push_back(1); // is no part of it
    const kest_sms_udh_info before = {0xEEEE, 0xEEEE, 0xEE, 0xEE, 0xEEEE, 0xEEEE};
    kest_sms_udh_info udh = before;
    uint32_t flag = 0xEEEE;
    EXPECT_EQ(kest_decode_user_data_header({std::span(header).first(size)}, &udh, &flag),
              header[0]);
    EXPECT_EQ(json(udh), changed(before, row, "udh"));
    EXPECT_EQ(flag, row["flag"]);
    const std::string line = row.value("line", "");
    EXPECT_EQ(log.lines(), line.empty() ? log_lines{} : log_lines{NAME + line});
  }
}

// Every length of every identifier; those from 253 on can end the walk by themselves.
TEST(UserDataHeader, LengthTests) {
  const json rows = vectors("sms/decode/user_data_header");
  const json &lengths = rows.back()["lengths"];
  for (unsigned iei = 0; iei <= 0xFF; ++iei) {
    const debug_log log(KEST_LOG_ERROR);
    const std::string key = hex(std::vector<uint8_t>{static_cast<uint8_t>(iei)});
    const json bounds = lengths.value(key, json{0, 226});
    log_lines expected;
    for (unsigned length = 0; length < 253; ++length) {
      // An octet of 1 satisfies a concatenation, and 1 x (length - 3) the size of a picture.
      std::vector<uint8_t> header = octets("02" + key + "00 01 01 00 01");
      header[2] = static_cast<uint8_t>(length);
      header[5] = static_cast<uint8_t>(iei == 0x12 ? length - 3 : 1);
      kest_sms_udh_info udh = {};
      uint32_t flag = 0;
      kest_decode_user_data_header({header}, &udh, &flag);
      if (length < bounds[0] || length > bounds[1]) {
        expected.push_back(NAME + "UDH invalid data length = " + std::to_string(length) + " !!!");
      } else if (iei == 0x12 && length < 3) {
        expected.push_back(NAME + "UDH Header pic size value mismatch with heigt and weight !!!");
      }
    }
    EXPECT_EQ(log.lines(), expected) << key;
  }
}

TEST(UserDataHeader, NullPointers) {
  const debug_log log;
  kest_sms_udh_info udh = {};
  uint32_t flag = 7;
  const std::vector<uint8_t> header = octets("05 00032A0301");
  EXPECT_EQ(kest_decode_user_data_header({}, &udh, &flag), 0u);
  EXPECT_EQ(kest_decode_user_data_header({header}, nullptr, &flag), 5u);
  EXPECT_EQ(flag, 7u);
  const std::string skipped = "udh_ptr null pointer, skip user data header parsing !!!";
  EXPECT_EQ(log.lines(), (log_lines{NAME + "data_ptr null pointer !!!", NAME + skipped}));
}

} // namespace
