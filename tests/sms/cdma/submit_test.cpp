#include "kest/sms_cdma.h"

#include <tuple>

#include <gtest/gtest.h>

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
  uint8_t octets[KEST_SMS_CDMA_SUBMIT_PDU_SIZE];
  EXPECT_EQ(kest_sms_encode_cdma_submit_pdu(nullptr, "a", 0, 0, octets), 0u);
  EXPECT_EQ(kest_sms_encode_cdma_submit_pdu("1", nullptr, 0, 0, octets), 0u);
  EXPECT_EQ(kest_sms_encode_cdma_submit_pdu("1", "a", 0, 0, nullptr), 0u);
  EXPECT_EQ(log.lines(),
            log_lines(3, "kest_sms_encode_cdma_submit_pdu NULL pointer check fail !!!"));
}

} // namespace
