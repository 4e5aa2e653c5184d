// SMS-STATUS-REPORT (3GPP TS 23.040, clause 9.2.2.3).
#include "kest/sms_decode.h"
#include "kest/text.h"
#include "log/debug_log.h"
#include "sms/decode/address.h"
#include "sms/decode/data_coding.h"
#include "sms/decode/message.h"
#include "sms/decode/timestamp.h"

namespace {

// TP-PI (clause 9.2.3.27): which of the optional fields are there.
constexpr unsigned TP_PI_PID = 1 << 0;
constexpr unsigned TP_PI_DCS = 1 << 1;
constexpr unsigned TP_PI_USER_DATA = 1 << 2;

struct status_report_targets {
  char *smsc, *recipient, *scts, *discharge_time; // may be null
  char *status;
  user_data_targets user_data;
  kest_sms_msg_class *msg_class; // null for the function that does not report it
};

uint32_t decode_status_report(const char *log_name, const char *pdu,
                              const status_report_targets &out) {
  if (out.msg_class != nullptr) {
    *out.msg_class = KEST_SMS_CLASS_NONE;
  }
  received_message message(log_name);
  octet_reader &in = message.in;
  if (!kest_sms_open_message(message, pdu, out.smsc, 1U << MTI_STATUS_REPORT)) {
    return 0;
  }
  in.skip(1); // TP-MR
  kest_sms_decode_gw_address(in, out.recipient);
  kest_sms_decode_timestamp(in, out.scts);
  kest_sms_decode_timestamp(in, out.discharge_time);
  const uint8_t status = in.u8();
  kest_binary_to_hexstring(&status, 1, out.status, KEST_SMS_STATUS_TEXT_SIZE);
  if (in.left() == 0) { // the PDU ends here, or ended before
    kest_log_debug("%s no user data done!!\n", log_name);
    return 1;
  }
  const unsigned present = in.u8();
  if ((present & TP_PI_PID) != 0) {
    in.skip(1);
  }
  kest_gw_alphabet alphabet = KEST_GW_ALPHABET_7BIT;
  if ((present & TP_PI_DCS) != 0) {
    alphabet = kest_sms_decode_data_coding(log_name, in.u8(), out.msg_class);
  }
  if ((present & TP_PI_USER_DATA) == 0) {
    return 1;
  }
  return kest_sms_read_user_data(message, alphabet, out.user_data) ? 1 : 0;
}

} // namespace

uint32_t kest_sms_decode_gw_status_report_pdu(const char *pdu, char *smsc, char *recipient,
                                              char *scts, char *discharge_time, char *status,
                                              char *userdata, kest_sms_udh_info *udh) {
  uint32_t udh_no_concat = 0;
  return decode_status_report(
      "kest_sms_decode_gw_status_report_pdu", pdu,
      {smsc, recipient, scts, discharge_time, status, {userdata, udh, &udh_no_concat}, nullptr});
}

uint32_t kest_sms_decode_gw_status_report_pdu_v2(const char *pdu, char *smsc, char *recipient,
                                                 char *scts, char *discharge_time, char *status,
                                                 char *userdata, kest_sms_udh_info *udh,
                                                 kest_sms_msg_class *msg_class) {
  uint32_t udh_no_concat = 0;
  return decode_status_report(
      "kest_sms_decode_gw_status_report_pdu_v2", pdu,
      {smsc, recipient, scts, discharge_time, status, {userdata, udh, &udh_no_concat}, msg_class});
}
