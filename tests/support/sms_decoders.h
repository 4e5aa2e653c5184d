// tests/support/sms_decoders.h: the six decoders of short messages, called alike.
#pragma once
#include <string>
#include <vector>

#include "kest/sms_decode.h"

// Outputs in heap blocks of the documented sizes, so that the address sanitizer sees one byte more.
// A text that a decoder leaves alone begins with '~'. The rest of `userdata` is filled with it.
struct sms_outputs {
  std::vector<char> smsc = marked(KEST_SMS_ADDRESS_TEXT_SIZE, '\0');
  std::vector<char> address = marked(KEST_SMS_ADDRESS_TEXT_SIZE, '\0');
  std::vector<char> timestamp = marked(KEST_SMS_TIME_TEXT_SIZE, '\0');
  std::vector<char> discharge_time = marked(KEST_SMS_TIME_TEXT_SIZE, '\0');
  std::vector<char> status = marked(KEST_SMS_STATUS_TEXT_SIZE, '\0');
  std::vector<char> userdata = marked(KEST_SMS_USERDATA_TEXT_SIZE, '~');
  kest_sms_udh_info udh = {};
  kest_sms_msg_class msg_class = 99;
  uint32_t udh_no_concat = 0;

  static std::vector<char> marked(size_t size, char fill) {
    std::vector<char> block(size, fill);
    block[0] = '~';
    return block;
  }
};

struct sms_decoder {
  const char *kind, *name;
  bool v2;
  uint32_t (*decode)(const char *pdu, sms_outputs &out, kest_sms_udh_info *udh);
};

constexpr sms_decoder DELIVER = {"deliver", "kest_sms_decode_gw_deliver_pdu", false,
                                 [](const char *pdu, sms_outputs &o, kest_sms_udh_info *udh) {
                                   return kest_sms_decode_gw_deliver_pdu(
                                       pdu, o.smsc.data(), o.address.data(), o.timestamp.data(),
                                       o.userdata.data(), udh);
                                 }};
constexpr sms_decoder DELIVER_V2 = {"deliver", "kest_sms_decode_gw_deliver_pdu_v2", true,
                                    [](const char *pdu, sms_outputs &o, kest_sms_udh_info *udh) {
                                      return kest_sms_decode_gw_deliver_pdu_v2(
                                          pdu, o.smsc.data(), o.address.data(), o.timestamp.data(),
                                          o.userdata.data(), udh, &o.msg_class, &o.udh_no_concat);
                                    }};
constexpr sms_decoder SUBMIT = {"submit", "kest_sms_decode_gw_submit_pdu", false,
                                [](const char *pdu, sms_outputs &o, kest_sms_udh_info *udh) {
                                  return kest_sms_decode_gw_submit_pdu(
                                      pdu, o.smsc.data(), o.address.data(), o.userdata.data(), udh);
                                }};
constexpr sms_decoder SUBMIT_V2 = {"submit", "kest_sms_decode_gw_submit_pdu_v2", true,
                                   [](const char *pdu, sms_outputs &o, kest_sms_udh_info *udh) {
                                     return kest_sms_decode_gw_submit_pdu_v2(
                                         pdu, o.smsc.data(), o.address.data(), o.userdata.data(),
                                         udh, &o.msg_class);
                                   }};
constexpr sms_decoder REPORT = {"status_report", "kest_sms_decode_gw_status_report_pdu", false,
                                [](const char *pdu, sms_outputs &o, kest_sms_udh_info *udh) {
                                  return kest_sms_decode_gw_status_report_pdu(
                                      pdu, o.smsc.data(), o.address.data(), o.timestamp.data(),
                                      o.discharge_time.data(), o.status.data(), o.userdata.data(),
                                      udh);
                                }};
constexpr sms_decoder REPORT_V2 = {"status_report", "kest_sms_decode_gw_status_report_pdu_v2", true,
                                   [](const char *pdu, sms_outputs &o, kest_sms_udh_info *udh) {
                                     return kest_sms_decode_gw_status_report_pdu_v2(
                                         pdu, o.smsc.data(), o.address.data(), o.timestamp.data(),
                                         o.discharge_time.data(), o.status.data(),
                                         o.userdata.data(), udh, &o.msg_class);
                                   }};
constexpr sms_decoder SMS_DECODERS[] = {DELIVER, DELIVER_V2, SUBMIT, SUBMIT_V2, REPORT, REPORT_V2};
