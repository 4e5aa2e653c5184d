// SMS-DELIVER (3GPP TS 23.040, clause 9.2.2.1).
#include "kest/sms_decode.h"
#include "log/debug_log.h"
#include "sms/decode/address.h"
#include "sms/decode/data_coding.h"
#include "sms/decode/message.h"
#include "sms/decode/timestamp.h"

namespace {

struct deliver_targets {
  char *smsc, *sender, *timestamp; // may be null
  user_data_targets user_data;
  kest_sms_msg_class *msg_class; // null for the function that neither reports it nor refuses type 0
};

uint32_t decode_deliver(const char *log_name, const char *pdu, const deliver_targets &out) {
  received_message message(log_name);
  if (!kest_sms_open_message(message, pdu, out.smsc, 1U << MTI_DELIVER | 1U << MTI_RESERVED)) {
    return 0;
  }
  kest_sms_decode_gw_address(message.in, out.sender);
  const uint8_t pid = message.in.u8();
  if (out.msg_class != nullptr) {
    if (pid == PID_TYPE_0) {
      kest_log_error("%s ignore PID = WMS_PID_SM_TYPE_0 !!!\n", log_name);
      return 0;
    }
    *out.msg_class = KEST_SMS_CLASS_NONE;
  }
  const kest_gw_alphabet alphabet =
      kest_sms_decode_data_coding(log_name, message.in.u8(), out.msg_class);
  kest_sms_decode_timestamp(message.in, out.timestamp);
  return kest_sms_read_user_data(message, alphabet, out.user_data) ? 1 : 0;
}

} // namespace

uint32_t kest_sms_decode_gw_deliver_pdu(const char *pdu, char *smsc, char *sender, char *timestamp,
                                        char *userdata, kest_sms_udh_info *udh) {
  uint32_t udh_no_concat = 0;
  return decode_deliver("kest_sms_decode_gw_deliver_pdu", pdu,
                        {smsc, sender, timestamp, {userdata, udh, &udh_no_concat}, nullptr});
}

uint32_t kest_sms_decode_gw_deliver_pdu_v2(const char *pdu, char *smsc, char *sender,
                                           char *timestamp, char *userdata, kest_sms_udh_info *udh,
                                           kest_sms_msg_class *msg_class, uint32_t *udh_no_concat) {
  return decode_deliver("kest_sms_decode_gw_deliver_pdu_v2", pdu,
                        {smsc, sender, timestamp, {userdata, udh, udh_no_concat}, msg_class});
}
