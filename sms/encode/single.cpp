// The encoders of single messages, and of segments that the caller numbers: thin fronts of
// sms/encode/message.h. The table of their differences:
//
//                     TP-MR               TP-DCS      TP-VP                     header
//   submit            library's counter   alphabet    173                       never
//   .. with_validity  library's counter   alphabet    `validity`, 0 means 173   never
//   .. detail         low octet of        and class   173                       if concatenated
//                     `reference`
//   deliver           -                   alphabet    -                         never
//   .. detail         -                   and class   -                         if concatenated
#include "kest/sms_encode.h"

#include <cstddef>

#include "sms/encode/counters.h"
#include "sms/encode/message.h"

// The host's record, on 32-bit and 64-bit targets alike.
static_assert(sizeof(kest_sms_encode_options) == 12 &&
              offsetof(kest_sms_encode_options, msg_class) == 4 &&
              offsetof(kest_sms_encode_options, concatenated) == 8 &&
              offsetof(kest_sms_encode_options, total) == 9 &&
              offsetof(kest_sms_encode_options, sequence) == 10);

namespace {

// class_bits returns the bits of TP-DCS that tell the class (TS 23.038, clause 4). Bit 4 says that
// there is one; KEST_SMS_CLASS_NONE leaves all of them 0.
uint8_t class_bits(kest_sms_msg_class msg_class) {
  constexpr unsigned HAS_CLASS = 0x10;
  return static_cast<uint8_t>((msg_class != KEST_SMS_CLASS_NONE ? HAS_CLASS : 0u) |
                              (msg_class & 3u));
}

message_content plain_content(const char *log_name, const char *number, const char *text,
                              uint32_t is_hex) {
  return {.log_name = log_name, .number = number, .text = text, .is_hex = is_hex != 0};
}

message_content detail_content(const char *log_name, const char *number, const char *text,
                               uint32_t is_hex, const kest_sms_encode_options &options) {
  message_content content = plain_content(log_name, number, text, is_hex);
  content.class_bits = class_bits(options.msg_class);
  if (options.concatenated != 0) {
    content.header = {options.reference, options.total, options.sequence};
  }
  return content;
}

} // namespace

uint32_t kest_sms_encode_gw_submit_pdu(const char *number, const char *text, uint32_t status_report,
                                       uint32_t is_hex, uint8_t *pdu, uint32_t pdu_size) {
  return kest_sms_encode_gw_submit_pdu_with_validity(number, text, status_report, is_hex, pdu,
                                                     pdu_size, KEST_SMS_VALIDITY_DEFAULT);
}

uint32_t kest_sms_encode_gw_submit_pdu_with_validity(const char *number, const char *text,
                                                     uint32_t status_report, uint32_t is_hex,
                                                     uint8_t *pdu, uint32_t pdu_size,
                                                     uint8_t validity) {
  const submit_message message = {
      .content = plain_content("kest_sms_encode_gw_submit_pdu_with_validity", number, text, is_hex),
      .status_report = status_report != 0,
      .reference = kest_sms_take_msg_reference(),
      .validity = validity,
  };
  return kest_sms_encode_submit(message, {pdu, pdu_size});
}

uint32_t kest_sms_encode_gw_submit_pdu_detail(const char *number, const char *text,
                                              uint32_t status_report, uint32_t is_hex,
                                              const kest_sms_encode_options *options, uint8_t *pdu,
                                              uint32_t pdu_size) {
  const submit_message message = {
      .content =
          detail_content("kest_sms_encode_gw_submit_pdu_detail", number, text, is_hex, *options),
      .status_report = status_report != 0,
      .reference = static_cast<uint8_t>(options->reference),
      .validity = KEST_SMS_VALIDITY_DEFAULT,
  };
  return kest_sms_encode_submit(message, {pdu, pdu_size});
}

uint32_t kest_sms_encode_gw_deliver_pdu(const char *number, const char *text, const char *timestamp,
                                        uint32_t reply_path, uint32_t is_hex, uint8_t *pdu,
                                        uint32_t pdu_size) {
  const deliver_message message = {
      .content = plain_content("kest_sms_encode_gw_deliver_pdu", number, text, is_hex),
      .reply_path = reply_path != 0,
      .timestamp = timestamp,
  };
  return kest_sms_encode_deliver(message, {pdu, pdu_size});
}

uint32_t kest_sms_encode_gw_deliver_pdu_detail(const char *number, const char *text,
                                               const char *timestamp, uint32_t reply_path,
                                               uint32_t is_hex,
                                               const kest_sms_encode_options *options, uint8_t *pdu,
                                               uint32_t pdu_size) {
  const deliver_message message = {
      .content =
          detail_content("kest_sms_encode_gw_deliver_pdu_detail", number, text, is_hex, *options),
      .reply_path = reply_path != 0,
      .timestamp = timestamp,
  };
  return kest_sms_encode_deliver(message, {pdu, pdu_size});
}
