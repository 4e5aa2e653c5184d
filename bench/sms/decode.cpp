#include "kest/sms_decode.h"

#include "bench/inputs.h"
#include "bench/job.h"
#include "kest/sms_encode.h"
#include "kest/text.h"
#include "tests/support/octets.h"

namespace {

using work = std::function<void()>;

constexpr const char *SERVICE_CENTRE = "07919461009122F9";
constexpr const char *REPORT = "07919461009122F9 06 25 0D91945111325476F8 62113260609340"
                               "62113260705040 00";

constexpr uint8_t DCS_7BIT = 0x01; // English
constexpr uint8_t DCS_UCS2 = 0x48;

// deliver returns the hexadecimal text of a message.
std::string deliver(const std::string &text) {
  uint8_t pdu[KEST_SMS_DELIVER_PDU_SIZE];
  const uint32_t size = kest_sms_encode_gw_deliver_pdu(
      "+4915112345678", text.c_str(), "2026/11/23,06:06:39+04", 0, 0, pdu, sizeof pdu);
  char hex[2 * sizeof pdu + 1];
  kest_binary_to_hexstring_uppercase(pdu, static_cast<uint16_t>(size), hex, sizeof hex);
  return std::string(SERVICE_CENTRE) + hex;
}

// ucs2_segment returns segment 1 of 2, as networks send it: 67 characters after a header with an 8
// bit reference.
std::string ucs2_segment() {
  return compact("07919461009122F9 44 0D91945111325476F8 00 08 62113260609340 8C 050003A70201") +
         repeated("621180FD541E4E0B73BB7483800C4E0D4F248EAB4F533002", size_t{4} * 67);
}

work decode_deliver(const std::string &pdu) {
  return [pdu] {
    char smsc[KEST_SMS_ADDRESS_TEXT_SIZE], sender[KEST_SMS_ADDRESS_TEXT_SIZE];
    char timestamp[KEST_SMS_TIME_TEXT_SIZE], userdata[KEST_SMS_USERDATA_TEXT_SIZE];
    kest_sms_udh_info udh = {};
    kest_sms_msg_class msg_class = 0;
    uint32_t udh_no_concat = 0;
    kest_sms_decode_gw_deliver_pdu_v2(pdu.c_str(), smsc, sender, timestamp, userdata, &udh,
                                      &msg_class, &udh_no_concat);
  };
}

work decode_report() {
  return [pdu = compact(REPORT)] {
    char smsc[KEST_SMS_ADDRESS_TEXT_SIZE], recipient[KEST_SMS_ADDRESS_TEXT_SIZE];
    char scts[KEST_SMS_TIME_TEXT_SIZE], discharge_time[KEST_SMS_TIME_TEXT_SIZE];
    char status[KEST_SMS_STATUS_TEXT_SIZE], userdata[KEST_SMS_USERDATA_TEXT_SIZE];
    kest_sms_udh_info udh = {};
    kest_sms_msg_class msg_class = 0;
    kest_sms_decode_gw_status_report_pdu_v2(pdu.c_str(), smsc, recipient, scts, discharge_time,
                                            status, userdata, &udh, &msg_class);
  };
}

// warning returns a UMTS message of full pages (3GPP TS 23.041, clause 9.4.2).
std::vector<uint8_t> warning(size_t pages, uint8_t dcs) {
  constexpr uint8_t PAGE_SIZE = 82;
  std::vector<uint8_t> message = {0x01, 0x11, 0x13, 0x46, 0xA0, dcs, static_cast<uint8_t>(pages)};
  for (size_t i = 0; i < pages; ++i) {
    const std::vector<uint8_t> page = packed_text(PAGE_SIZE);
    message.insert(message.end(), page.begin(), page.end());
    message.push_back(PAGE_SIZE);
  }
  return message;
}

work decode_warning(const std::vector<uint8_t> &message) {
  return [message] {
    char text[KEST_SMS_CB_TEXT_SIZE];
    kest_sms_cb_info info;
    kest_sms_decode_gw_cb_pdu(message.data(), static_cast<uint16_t>(message.size()), text, &info);
  };
}

} // namespace

void measure_sms_decode(measured &out) {
  out.jobs.push_back(
      {"decode DELIVER, 160 septets", decode_deliver(deliver(repeated(ENGLISH, 160)))});
  out.jobs.push_back(
      {"decode DELIVER, 67 UCS-2 characters after a header", decode_deliver(ucs2_segment())});
  out.jobs.push_back({"decode STATUS-REPORT", decode_report()});
  out.jobs.push_back(
      {"decode cell broadcast, 15 pages, 7 bit", decode_warning(warning(15, DCS_7BIT))});
  out.jobs.push_back(
      {"decode cell broadcast, 15 pages, UCS-2", decode_warning(warning(15, DCS_UCS2))});
  out.curves.push_back({"decode DELIVER, 7 bit", "septets", steps(160, 8), [](size_t size) {
                          return decode_deliver(deliver(repeated(ENGLISH, size)));
                        }});
  out.curves.push_back({"decode DELIVER, UCS-2", "characters", steps(70, 1), [](size_t size) {
                          return decode_deliver(deliver(repeated("我", 3 * size)));
                        }});
  out.curves.push_back({"decode cell broadcast, 7 bit", "pages", steps(13, 1), [](size_t pages) {
                          return decode_warning(warning(pages, DCS_7BIT));
                        }});
}
