// SMS-DELIVER (3GPP TS 23.040, clause 9.2.2.1). With details it has a class, and a header if the
// options say so; a segment has a header if there are two or more.
#include "kest/sms_encode.h"

#include "sms/encode/message.h"
#include "sms/encode/timestamp.h"
#include "sms/tpdu.h"

namespace {

// A null or short `timestamp` leaves octets of its field unchanged.
uint32_t encode_deliver(const message_content &content, const char *timestamp, bool reply_path,
                        uint8_t *pdu, uint32_t pdu_size) {
  message_text text;
  kest_sms_take_text(content.log_name, content.text, content.is_hex, text);
  octet_writer out{pdu, KEST_SMS_DELIVER_PDU_SIZE};
  // cppcheck-suppress badBitmaskCheck ; MTI_DELIVER is 0, and stands here as the field it is
  out.u8(static_cast<uint8_t>(MTI_DELIVER | (reply_path ? TP_RP : 0) |
                              (content.header ? TP_UDHI : 0)));
  if (!kest_sms_put_address(out, content)) {
    return 0;
  }
  kest_sms_put_coding(out, content, text);
  kest_sms_encode_timestamp(timestamp, out.space(TIMESTAMP_SIZE));
  return kest_sms_put_user_data(out, content, text, pdu_size);
}

} // namespace

uint32_t kest_sms_encode_gw_deliver_pdu(const char *number, const char *text, const char *timestamp,
                                        uint32_t reply_path, uint32_t is_hex, uint8_t *pdu,
                                        uint32_t pdu_size) {
  return encode_deliver({"kest_sms_encode_gw_deliver_pdu", number, text, is_hex != 0}, timestamp,
                        reply_path != 0, pdu, pdu_size);
}

uint32_t kest_sms_encode_gw_deliver_pdu_detail(const char *number, const char *text,
                                               const char *timestamp, uint32_t reply_path,
                                               uint32_t is_hex,
                                               const kest_sms_encode_options *options, uint8_t *pdu,
                                               uint32_t pdu_size) {
  return encode_deliver(
      kest_sms_detail_content({"kest_sms_encode_gw_deliver_pdu_detail", number, text, is_hex != 0},
                              *options),
      timestamp, reply_path != 0, pdu, pdu_size);
}

int32_t kest_sms_encode_long_gw_deliver_pdu(const char *number, const char *text,
                                            const char *timestamp, uint32_t reply_path,
                                            uint32_t is_hex, int32_t total, int32_t sequence,
                                            uint8_t *pdu, uint32_t pdu_size) {
  const uint32_t size = encode_deliver(
      kest_sms_segment_content({"kest_sms_encode_long_gw_deliver_pdu", number, text, is_hex != 0},
                               total, sequence),
      timestamp, reply_path != 0, pdu, pdu_size);
  return kest_sms_close_segment(size, total, sequence);
}
