#include "kest/sms_cdma.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

// next_id encodes a message and returns its identifier, which stands across octets.
uint16_t next_id() {
  uint8_t pdu[KEST_SMS_CDMA_SUBMIT_PDU_SIZE];
  kest_sms_encode_cdma_submit_pdu("1", "a", 0, 0, pdu);
  return static_cast<uint16_t>((pdu[17] & 0xF) << 12 | pdu[18] << 4 | pdu[19] >> 4);
}

const uint16_t FIRST_ID = next_id();

TEST(CdmaSubmit, IdentifiersBeginAt1AndWrap) {
  EXPECT_EQ(FIRST_ID, 1);
  uint16_t last = next_id();
  for (unsigned i = 0; i <= UINT16_MAX; ++i) {
    const uint16_t next = next_id();
    ASSERT_EQ(next, static_cast<uint16_t>(last + 1));
    last = next;
  }
}

// A failure leaves in the PDU what it had written, "left". The identifier stands as "NEXT".
TEST(CdmaSubmit, GivesTheMessageOctetByOctet) {
  uint16_t id = next_id();
  for (const json &row : vectors("sms/cdma/submit")) {
    for (const uint32_t level : LOG_LEVELS) {
      SCOPED_TRACE(row.dump());
      const debug_log log(level);
      const auto number = exact_text(row["number"]);
      const auto text = exact_text(text_of(octets_value(row, "text")));
      std::vector<uint8_t> out(KEST_SMS_CDMA_SUBMIT_PDU_SIZE, 0xEE);
      std::string pdu = hex_value(row, "pdu");
      if (const size_t at = pdu.find("NEXT"); at != std::string::npos) {
        ++id;
        const uint8_t next[] = {static_cast<uint8_t>(id >> 8), static_cast<uint8_t>(id)};
        pdu.replace(at, 4, hex(next));
      }
      const std::string written = pdu + compact(row.value("left", ""));
      EXPECT_EQ(kest_sms_encode_cdma_submit_pdu(number.get(), text.get(), row.value("flag", 0u),
                                                row.value("is_hex", 0u), out.data()),
                pdu.size() / 2);
      EXPECT_EQ(hex(out), written + repeat("EE", out.size() - written.size() / 2));
      if ((level & KEST_LOG_DEBUG) == 0 || row.contains("lines")) {
        EXPECT_EQ(log.lines(), at_level(row.value("lines", log_lines{}), level));
      }
    }
  }
}

TEST(CdmaSubmit, RefusesNullPointers) {
  const std::string line = "kest_sms_encode_cdma_submit_pdu NULL pointer check fail !!!";
  for (const uint32_t level : LOG_LEVELS) {
    const debug_log log(level);
    uint8_t octets[KEST_SMS_CDMA_SUBMIT_PDU_SIZE];
    EXPECT_EQ(kest_sms_encode_cdma_submit_pdu(nullptr, "a", 0, 0, octets), 0u);
    EXPECT_EQ(kest_sms_encode_cdma_submit_pdu("1", nullptr, 0, 0, octets), 0u);
    EXPECT_EQ(kest_sms_encode_cdma_submit_pdu("1", "a", 0, 0, nullptr), 0u);
    EXPECT_EQ(log.lines(), at_level(log_lines(3, line), level));
  }
}

} // namespace
