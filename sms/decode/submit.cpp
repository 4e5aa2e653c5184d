// SMS-SUBMIT (3GPP TS 23.040, clause 9.2.2.2).
#include "kest/sms_decode.h"
#include "sms/decode/address.h"
#include "sms/decode/data_coding.h"
#include "sms/decode/message.h"

namespace {

// The octets of TP-VP by TP-VPF (clause 9.2.3.3). NOTE: the enhanced format is given none.
constexpr size_t VALIDITY_SIZES[] = {0, 0, 1, 7}; // none, enhanced, relative, absolute

struct submit_targets {
  char *smsc, *destination; // may be null
  user_data_targets user_data;
  kest_sms_msg_class *msg_class; // null for the function that does not report it
};

uint32_t decode_submit(const char *log_name, const char *pdu, const submit_targets &out) {
  if (out.msg_class != nullptr) {
    *out.msg_class = KEST_SMS_CLASS_NONE;
  }
  received_message message(log_name);
  if (!kest_sms_open_message(message, pdu, out.smsc, 1U << MTI_SUBMIT)) {
    return 0;
  }
  message.in.skip(1); // TP-MR
  kest_sms_decode_gw_address(message.in, out.destination);
  message.in.skip(1); // TP-PID
  const kest_gw_alphabet alphabet =
      kest_sms_decode_data_coding(log_name, message.in.u8(), out.msg_class);
  message.in.skip(VALIDITY_SIZES[(message.first_octet >> 3) & 3]);
  return kest_sms_read_user_data(message, alphabet, out.user_data) ? 1 : 0;
}

} // namespace

uint32_t kest_sms_decode_gw_submit_pdu(const char *pdu, char *smsc, char *destination,
                                       char *userdata, kest_sms_udh_info *udh) {
  uint32_t udh_no_concat = 0;
  return decode_submit("kest_sms_decode_gw_submit_pdu", pdu,
                       {smsc, destination, {userdata, udh, &udh_no_concat}, nullptr});
}

uint32_t kest_sms_decode_gw_submit_pdu_v2(const char *pdu, char *smsc, char *destination,
                                          char *userdata, kest_sms_udh_info *udh,
                                          kest_sms_msg_class *msg_class) {
  uint32_t udh_no_concat = 0;
  return decode_submit("kest_sms_decode_gw_submit_pdu_v2", pdu,
                       {smsc, destination, {userdata, udh, &udh_no_concat}, msg_class});
}
