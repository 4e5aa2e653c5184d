// SMS-SUBMIT (3GPP TS 23.040, clause 9.2.2.2). The encoders differ in this:
//
//                     TP-MR               TP-DCS      TP-VP                     header
//   submit            library's counter   alphabet    173                       never
//   .. with_validity  library's counter   alphabet    `validity`, 0 means 173   never
//   .. detail         low octet of        and class   173                       if concatenated
//                     `reference`
//   long ..           library's counter   alphabet    as above                  from two segments
//   on
#include "kest/sms_encode.h"

#include "sms/encode/counters.h"
#include "sms/encode/message.h"
#include "sms/tpdu.h"

namespace {

struct submit_fields {
  bool status_report;
  uint8_t reference; // TP-MR
  uint8_t validity;  // TP-VP, relative format; 0 means KEST_SMS_VALIDITY_DEFAULT
};

uint32_t encode_submit(const message_content &content, const submit_fields &fields, uint8_t *pdu,
                       uint32_t pdu_size) {
  message_text text;
  kest_sms_take_text(content.log_name, content.text, content.is_hex, text);
  octet_writer out{pdu, KEST_SMS_SUBMIT_PDU_SIZE};
  out.u8(static_cast<uint8_t>(MTI_SUBMIT | TP_VPF_RELATIVE | (fields.status_report ? TP_SRR : 0) |
                              (content.header ? TP_UDHI : 0)));
  out.u8(fields.reference);
  if (!kest_sms_put_address(out, content)) {
    return 0;
  }
  kest_sms_put_coding(out, content, text);
  out.u8(fields.validity != 0 ? fields.validity : uint8_t{KEST_SMS_VALIDITY_DEFAULT});
  return kest_sms_put_user_data(out, content, text, pdu_size);
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
  return encode_submit({"kest_sms_encode_gw_submit_pdu_with_validity", number, text, is_hex != 0},
                       {status_report != 0, kest_sms_take_msg_reference(), validity}, pdu,
                       pdu_size);
}

uint32_t kest_sms_encode_gw_submit_pdu_detail(const char *number, const char *text,
                                              uint32_t status_report, uint32_t is_hex,
                                              const kest_sms_encode_options *options, uint8_t *pdu,
                                              uint32_t pdu_size) {
  return encode_submit(
      kest_sms_detail_content({"kest_sms_encode_gw_submit_pdu_detail", number, text, is_hex != 0},
                              *options),
      {status_report != 0, static_cast<uint8_t>(options->reference), KEST_SMS_VALIDITY_DEFAULT},
      pdu, pdu_size);
}

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
  const uint32_t size =
      encode_submit(kest_sms_segment_content({"kest_sms_encode_long_gw_submit_pdu_with_validity",
                                              number, text, is_hex != 0},
                                             total, sequence),
                    {status_report != 0, kest_sms_take_msg_reference(), validity}, pdu, pdu_size);
  return kest_sms_close_segment(size, total, sequence);
}
