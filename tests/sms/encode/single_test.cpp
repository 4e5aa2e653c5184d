#include "kest/sms_encode.h"

#include <gtest/gtest.h>

#include "sms/encode/counters.h"
#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

constexpr const char *TIME = "2011/12/31,23:59:58 08";

uint32_t encode(const json &row, uint8_t *pdu, uint32_t size) {
  const std::string function = row["function"], time = row.value("time", json(TIME)).dump();
  const auto number = exact_text(row["number"]);
  const auto text = exact_text(text_of(octets_value(row, "text")));
  const auto stamp = exact_text(time.substr(1, time.size() - 2));
  const char *const timestamp = time == "null" ? nullptr : stamp.get();
  const uint32_t flag = row.value("flag", 0u), is_hex = row.value("is_hex", 0u);
  const json o = row.value("options", json{0, 4, 0, 0, 0});
  const kest_sms_encode_options options = {o[0], o[1], o[2], o[3], o[4]};
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
  return function == "deliver"
             ? kest_sms_encode_gw_deliver_pdu(number.get(), text.get(), timestamp, flag, is_hex,
                                              pdu, size)
             : kest_sms_encode_gw_deliver_pdu_detail(number.get(), text.get(), timestamp, flag,
                                                     is_hex, &options, pdu, size);
}

TEST(EncodeSingle, LayoutOctetByOctet) {
  for (const json &row : vectors("sms/encode/single")) {
    SCOPED_TRACE(row.dump());
    const bool submit = row["function"].get<std::string>().starts_with("submit");
    const uint32_t size = submit ? KEST_SMS_SUBMIT_PDU_SIZE : KEST_SMS_DELIVER_PDU_SIZE;
    std::vector<uint8_t> out(size, 0xEE); // exact: the sanitizer sees one octet more
    kest_sms_msg_reference = row.value("msg_reference", uint8_t{0});
    const std::string pdu = hex_value(row, "pdu"), left = compact(row.value("left", ""));
    EXPECT_EQ(encode(row, out.data(), size), pdu.size() / 2);
    const std::string written = pdu + left; // a failure leaves what stands ahead of the address
    EXPECT_EQ(hex(out), written + repeat("EE", size - written.size() / 2));
    const bool steps = row["function"] == "submit" || row["function"] == "submit_with_validity";
    EXPECT_EQ(kest_sms_msg_reference,
              static_cast<uint8_t>(row.value("msg_reference", 0) + (steps ? 1 : 0)));
  }
}

TEST(EncodeSingle, SizeStopsThePackingOfSeptetsAlone) {
  // The text begins at octet 10. A size below that wraps to 16 bits, and is no limit.
  const std::pair<uint32_t, uint32_t> cases[] = {{0, 15},  {9, 15},  {10, 10},
                                                 {12, 12}, {15, 15}, {0x1000A, 10}};
  for (const auto &[size, written] : cases) {
    std::vector<uint8_t> out(KEST_SMS_SUBMIT_PDU_SIZE);
    kest_sms_msg_reference = 0;
    EXPECT_EQ(kest_sms_encode_gw_submit_pdu("+4917", "hello", 0, 0, out.data(), size), written);
    out.resize(written);
    EXPECT_EQ(hex(out), std::string("1100049194710000AD05E8329BFD06").substr(0, 2 * written));
  }
  std::vector<uint8_t> out(KEST_SMS_SUBMIT_PDU_SIZE);
  EXPECT_EQ(kest_sms_encode_gw_submit_pdu("+4917", "\u00E9", 0, 0, out.data(), 0), 12u);
}

TEST(EncodeSingle, LogLines) {
  const debug_log log;
  uint8_t out[KEST_SMS_DELIVER_PDU_SIZE];
  const kest_sms_encode_options options = {0, 4, 0, 0, 0};
  kest_sms_encode_gw_submit_pdu("1", "41C3", 0, 1, out, 165);
  kest_sms_encode_gw_submit_pdu("", "\x80", 0, 0, out, 165);
  const std::string too_long = repeat("41", 256);
  EXPECT_EQ(kest_sms_encode_gw_deliver_pdu("1", too_long.c_str(), TIME, 0, 1, out, 170), 14u);
  kest_sms_encode_gw_submit_pdu_detail("", "a", 0, 0, &options, out, 165);
  log_level = KEST_LOG_ERROR;
  kest_sms_encode_gw_deliver_pdu_detail("", "a", TIME, 0, 0, &options, out, 170);
  const std::string with_validity = "kest_sms_encode_gw_submit_pdu_with_validity ";
  const std::string deliver = "kest_sms_encode_gw_deliver_pdu ";
  const std::string submit_detail = "kest_sms_encode_gw_submit_pdu_detail ";
  const std::string failed = "encode gw address fail !!!";
  EXPECT_EQ(log.lines(),
            (log_lines{with_validity + "buf_len: 2", with_validity + "buf[0]: 0x41",
                       with_validity + "buf[1]: 0xc3", with_validity + "alphabet: 2",
                       with_validity + "alphabet: 1", with_validity + failed,
                       "kest_hexstring_to_binary Buffer is too small!!!", deliver + "buf_len: 0",
                       deliver + "alphabet: 0", submit_detail + "alphabet: 0",
                       submit_detail + failed, "kest_sms_encode_gw_deliver_pdu_detail " + failed}));
}

} // namespace
