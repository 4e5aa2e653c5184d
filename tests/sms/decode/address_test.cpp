#include "sms/decode/address.h"

#include <gtest/gtest.h>

#include "kest/sms_decode.h"
#include "sms/decode/timestamp.h"
#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

int32_t decode(const std::string &function, octet_reader field, char *text) {
  if (function == "timestamp") {
    return static_cast<int32_t>(kest_sms_decode_timestamp(field, text));
  }
  return function == "smsc" ? kest_sms_decode_smsc_address(field, text)
                            : kest_sms_decode_gw_address(field, text);
}

TEST(DecodeAddress, GivesTextAndFieldSize) {
  for (const json &row : vectors("sms/decode/address")) {
    SCOPED_TRACE(row.dump());
    const std::string function = row["function"], text = hex_value(row, "text");
    const std::vector<uint8_t> field = octets_value(row, "field"); // exact, as is the text's block
    std::vector<uint8_t> block(
        function == "timestamp" ? KEST_SMS_TIME_TEXT_SIZE : KEST_SMS_ADDRESS_TEXT_SIZE, 0xEE);
    EXPECT_EQ(decode(function, {field}, reinterpret_cast<char *>(block.data())), row["size"]);
    EXPECT_EQ(hex(block), text + repeat("EE", block.size() - text.size() / 2));
    EXPECT_EQ(decode(function, {field}, nullptr), row["size_without_text"]);
  }
}

TEST(DecodeAddress, DigitsLogLowNibbleFirst) {
  const debug_log log(KEST_LOG_ERROR);
  char text[KEST_SMS_TIME_TEXT_SIZE];
  const std::vector<uint8_t> address = octets("06 91 BAC1F5"), stamp = octets("21436587 09BA2B");
  kest_sms_decode_gw_address({address}, text); // star and hash are no digits
  kest_sms_decode_timestamp({stamp}, text);
  log_lines expected;
  for (const int value : {1, 12, 5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 10, 11, 3, 2}) {
    expected.push_back("kest_binary_to_hexchar value=" + std::to_string(value) + "!!!");
  }
  EXPECT_EQ(log.lines(), expected);
}

} // namespace
