// The encoders of the segments of a concatenated message, which number them by the counters of the
// library: thin fronts of sms/encode/message.h.
#include "kest/sms_encode.h"

#include "sms/encode/counters.h"
#include "sms/encode/message.h"

namespace {

// segment_content returns the content of segment `sequence` of `total`. A message of less than two
// segments goes out as a single one: no header, and a long text is cut off.
message_content segment_content(const char *log_name, const char *number, const char *text,
                                uint32_t is_hex, int32_t total, int32_t sequence) {
  message_content content = {
      .log_name = log_name, .number = number, .text = text, .is_hex = is_hex != 0};
  if (total >= 2) {
    content.cut = true;
    content.header = {kest_sms_concat_reference, static_cast<uint8_t>(total),
                      static_cast<uint8_t>(sequence)};
  }
  return content;
}

// close_segment ends the message if its last segment, by the numbers of the caller, has been
// encoded. It hands the octets of the PDU through.
int32_t close_segment(uint32_t size, int32_t total, int32_t sequence) {
  if (size != 0 && sequence == total) {
    kest_sms_end_concatenation();
  }
  return static_cast<int32_t>(size);
}

} // namespace

int32_t kest_sms_encode_long_gw_submit_pdu(const char *number, const char *text,
                                           uint32_t status_report, uint32_t is_hex, int32_t total,
                                           int32_t sequence, uint8_t *pdu, uint32_t pdu_size) {
  return kest_sms_encode_long_gw_submit_pdu_with_validity(number, text, status_report, is_hex,
                                                          total, sequence, pdu, pdu_size,
                                                          KEST_SMS_VALIDITY_DEFAULT);
}

int32_t kest_sms_encode_long_gw_submit_pdu_with_validity(const char *number, const char *text,
                                                         uint32_t status_report, uint32_t is_hex,
                                                         int32_t total, int32_t sequence,
                                                         uint8_t *pdu, uint32_t pdu_size,
                                                         uint8_t validity) {
  const submit_message message = {
      .content = segment_content("kest_sms_encode_long_gw_submit_pdu_with_validity", number, text,
                                 is_hex, total, sequence),
      .status_report = status_report != 0,
      .reference = kest_sms_take_msg_reference(),
      .validity = validity,
  };
  return close_segment(kest_sms_encode_submit(message, {pdu, pdu_size}), total, sequence);
}

int32_t kest_sms_encode_long_gw_deliver_pdu(const char *number, const char *text,
                                            const char *timestamp, uint32_t reply_path,
                                            uint32_t is_hex, int32_t total, int32_t sequence,
                                            uint8_t *pdu, uint32_t pdu_size) {
  const deliver_message message = {
      .content = segment_content("kest_sms_encode_long_gw_deliver_pdu", number, text, is_hex, total,
                                 sequence),
      .reply_path = reply_path != 0,
      .timestamp = timestamp,
  };
  return close_segment(kest_sms_encode_deliver(message, {pdu, pdu_size}), total, sequence);
}
