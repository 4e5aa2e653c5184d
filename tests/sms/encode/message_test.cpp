#include "kest/sms_encode.h"

#include <gtest/gtest.h>

#include "sms/encode/counters.h"
#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

constexpr const char *TIME = "2011/12/31,23:59:58 08";

int64_t encode(const json &row, uint8_t *pdu, uint32_t size) {
  const std::string function = row["function"], time = row.value("time", json(TIME)).dump();
  const auto number = exact_text(row["number"]);
  const auto text = exact_text(text_of(octets_value(row, "text")));
  const auto stamp = exact_text(time.substr(1, time.size() - 2));
  const char *const timestamp = time == "null" ? nullptr : stamp.get();
  const uint32_t flag = row.value("flag", 0u), is_hex = row.value("is_hex", 0u);
  const json o = row.value("options", json{0, 4, 0, 0, 0}), s = row.value("segment", json{0, 0});
  const kest_sms_encode_options options = {o[0], o[1], o[2], o[3], o[4]};
  const int32_t sequence = s[0], total = s[1];
  if (function == "submit") {
    return kest_sms_encode_gw_submit_pdu(number.get(), text.get(), flag, is_hex, pdu, size);
  }
  if (function == "submit_with_validity") {
    return kest_sms_encode_gw_submit_pdu_with_validity(number.get(), text.get(), flag, is_hex, pdu,
                                                       size, row["validity"]);
  }
  if (function == "submit_detail") {
    return kest_sms_encode_gw_submit_pdu_detail(number.get(), text.get(), flag, is_hex, &options,
                                                pdu, size);
  }
  if (function == "submit_long") {
    return kest_sms_encode_long_gw_submit_pdu(number.get(), text.get(), flag, is_hex, total,
                                              sequence, pdu, size);
  }
  if (function == "submit_long_with_validity") {
    return kest_sms_encode_long_gw_submit_pdu_with_validity(
        number.get(), text.get(), flag, is_hex, total, sequence, pdu, size, row["validity"]);
  }
  if (function == "deliver_long") {
    return kest_sms_encode_long_gw_deliver_pdu(number.get(), text.get(), timestamp, flag, is_hex,
                                               total, sequence, pdu, size);
  }
  return function == "deliver"
             ? kest_sms_encode_gw_deliver_pdu(number.get(), text.get(), timestamp, flag, is_hex,
                                              pdu, size)
             : kest_sms_encode_gw_deliver_pdu_detail(number.get(), text.get(), timestamp, flag,
                                                     is_hex, &options, pdu, size);
}

// A failure leaves in the PDU what it had written, "left". The result of the long encoders is
// signed, but never below 0.
TEST(EncodeMessage, GivesThePduOctetByOctet) {
  for (const json &row : vectors("sms/encode/message")) {
    SCOPED_TRACE(row.dump());
    const debug_log log;
    const std::string function = row["function"];
    const bool submit = function.starts_with("submit");
    const uint32_t size = submit ? KEST_SMS_SUBMIT_PDU_SIZE : KEST_SMS_DELIVER_PDU_SIZE;
    std::vector<uint8_t> out(size, 0xEE); // exact: the sanitizer sees one octet more
    kest_sms_msg_reference = row.value("msg_reference", uint8_t{0});
    kest_sms_concat_reference = row.value("concat_reference", uint16_t{0xAB34});
    const int concat_reference = kest_sms_concat_reference + row.value("ends", 0);
    const std::string pdu = hex_value(row, "pdu"), written = pdu + compact(row.value("left", ""));
    EXPECT_EQ(encode(row, out.data(), row.value("size", size)),
              static_cast<int64_t>(pdu.size() / 2));
    EXPECT_EQ(hex(out), written + repeat("EE", size - written.size() / 2));
    const int step = submit && function != "submit_detail" ? 1 : 0; // also of a failure
    EXPECT_EQ(kest_sms_msg_reference, static_cast<uint8_t>(row.value("msg_reference", 0) + step));
    EXPECT_EQ(kest_sms_concat_reference, static_cast<uint16_t>(concat_reference));
    EXPECT_EQ(log.lines(), row.value("lines", log.lines()));
  }
}

} // namespace
