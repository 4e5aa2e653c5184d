#include "kest/sms_cdma.h"

#include <bitset>
#include <random>

#include <gtest/gtest.h>

#include "sms/cdma/address.h"
#include "sms/cdma/bearer_data.h"
#include "sms/encode/counters.h"
#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

// A failure leaves in the PDU what it had written, "left".
TEST(CdmaSubmit, GivesTheMessageOctetByOctet) {
  for (const json &row : vectors("sms/cdma/submit")) {
    SCOPED_TRACE(row.dump());
    const debug_log log;
    const auto number = exact_text(row["number"]);
    const auto text = exact_text(text_of(octets_value(row, "text")));
    std::vector<uint8_t> out(KEST_SMS_CDMA_SUBMIT_PDU_SIZE, 0xEE);
    kest_cdma_message_id = row.value("message_id", uint16_t{0});
    const std::string pdu = hex_value(row, "pdu"), written = pdu + compact(row.value("left", ""));
    const auto next_id = static_cast<uint16_t>(kest_cdma_message_id + (pdu.empty() ? 0 : 1));
    EXPECT_EQ(kest_sms_encode_cdma_submit_pdu(number.get(), text.get(), row.value("flag", 0u),
                                              row.value("is_hex", 0u), out.data()),
              pdu.size() / 2);
    EXPECT_EQ(hex(out), written + repeat("EE", out.size() - written.size() / 2));
    EXPECT_EQ(kest_cdma_message_id, next_id);
    EXPECT_EQ(log.lines(), row.value("lines", log.lines()));
  }
}

TEST(CdmaSubmit, RefusesNullPointers) {
  const debug_log log(KEST_LOG_ERROR);
  uint8_t octets[KEST_SMS_CDMA_SUBMIT_PDU_SIZE], len = 7;
  EXPECT_EQ(kest_sms_encode_cdma_submit_pdu(nullptr, "a", 0, 0, octets), 0u);
  EXPECT_EQ(kest_sms_encode_cdma_submit_pdu("1", nullptr, 0, 0, octets), 0u);
  EXPECT_EQ(kest_sms_encode_cdma_submit_pdu("1", "a", 0, 0, nullptr), 0u);
  EXPECT_EQ(log.lines(),
            log_lines(3, "kest_sms_encode_cdma_submit_pdu NULL pointer check fail !!!"));
  EXPECT_EQ(kest_sms_encode_cdma_address("1", octets, nullptr), 0u);
  EXPECT_EQ(kest_sms_encode_cdma_bearer_data(bytes("a"), 0, 0, 0, octets, nullptr), 0u);
  EXPECT_EQ(kest_sms_encode_cdma_address("+", octets, &len), 0u);
  EXPECT_EQ(len, 7) << "a plus sign alone stores nothing";
  EXPECT_EQ(kest_sms_encode_cdma_bearer_data(bytes("a"), 0, 0, 0, nullptr, &len), 0u);
  EXPECT_EQ(len, 0);
}

// A second opinion: rows of bits, written out field by field.
std::string bits(size_t width, size_t value) {
  return std::bitset<16>(value).to_string().substr(16 - width);
}

std::string octets_of_bits(std::string row) {
  row.resize((row.size() + 7) / 8 * 8, '0');
  std::vector<uint8_t> out;
  for (size_t i = 0; i < row.size(); i += 8) {
    out.push_back(static_cast<uint8_t>(std::stoul(row.substr(i, 8), nullptr, 2)));
  }
  return hex(out);
}

TEST(CdmaSubmit, FieldsStandAtTheirBits) {
  std::mt19937 random(3);
  for (size_t run = 0; run < 2000; ++run) {
    const size_t digits = run % 24 + 1, octet_count = run % 141;
    std::string number, row = bits(2, 0) + bits(8, digits);
    for (size_t i = 0; i < digits; ++i) {
      const size_t code = random() % 12 + 1;
      number += "1234567890*#"[code - 1];
      row += bits(4, code);
    }
    row += bits(digits % 2 * 4 + 6, 0);
    uint8_t address[CDMA_ADDRESS_SIZE], bearer[CDMA_BEARER_DATA_SIZE], len = 0;
    ASSERT_EQ(kest_sms_encode_cdma_address(number.c_str(), address, &len), row.size() / 8);
    EXPECT_EQ(hex({address, len}), octets_of_bits(row)) << number;

    const auto header_ind = static_cast<uint8_t>(run % 3),
               validity = static_cast<uint8_t>(random());
    const uint32_t status_report = run % 4;
    std::string text, payload;
    for (size_t i = 0; i < octet_count; ++i) {
      text += static_cast<char>(0x80 | random() % 0x40);
      payload += bits(8, static_cast<uint8_t>(text.back()));
    }
    const std::string expected = octets_of_bits(
        bits(8, 0) + bits(8, 3) + bits(4, 2) + bits(16, kest_cdma_message_id + 1) +
        bits(1, header_ind == 1) + bits(3, 0) + bits(8, 1) + bits(8, octet_count + 2) + bits(5, 0) +
        bits(8, octet_count) + payload + bits(3, 0) + bits(8, 5) + bits(8, 1) +
        bits(8, validity == 0 ? 173 : validity) + bits(8, 10) + bits(8, 1) + bits(1, 0) +
        bits(1, status_report == 1) + bits(6, 0));
    ASSERT_EQ(kest_sms_encode_cdma_bearer_data_with_validity(bytes(text), status_report, 1,
                                                             header_ind, bearer, &len, validity),
              text.empty() ? 0 : expected.size() / 2);
    EXPECT_EQ(hex({bearer, len}), text.empty() ? "" : expected);
  }
}

} // namespace
