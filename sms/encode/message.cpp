#include "sms/encode/message.h"

#include "kest/log.h"
#include "kest/sms_encode.h"
#include "sms/encode/address.h"
#include "sms/encode/octet_writer.h"
#include "sms/encode/timestamp.h"
#include "sms/encode/user_data.h"
#include "text/septets.h"

namespace {

// First octet: TP-MTI and flags (TS 23.040, clauses 9.2.3.1 to 9.2.3.23).
constexpr uint8_t TP_MTI_DELIVER = 0x00;
constexpr uint8_t TP_MTI_SUBMIT = 0x01;
constexpr uint8_t TP_VPF_RELATIVE = 0x10;
constexpr uint8_t TP_SRR = 0x20;
constexpr uint8_t TP_UDHI = 0x40;
constexpr uint8_t TP_RP = 0x80;

constexpr uint8_t TP_PID_DEFAULT = 0;
constexpr unsigned DCS_ALPHABET_SHIFT = 2; // general data coding group (TS 23.038, clause 4)

constexpr uint8_t IEI_CONCATENATED_16BIT = 0x08;
constexpr uint8_t HEADER_OCTETS = 7;  // with its length octet
constexpr uint8_t HEADER_SEPTETS = 8; // the same 56 bits: the text behind needs no fill bits

uint8_t flag(bool condition, uint8_t bit) {
  return condition ? bit : uint8_t{0};
}

uint8_t data_coding(const message_content &content, const message_text &text) {
  return static_cast<uint8_t>(text.alphabet << DCS_ALPHABET_SHIFT | content.class_bits);
}

[[nodiscard]] bool put_address(octet_writer &out, const message_content &content) {
  const int32_t written =
      kest_sms_encode_gw_address(content.number, out.data + out.pos, ADDRESS_FIELD_SIZE);
  if (written == 0) {
    kest_log(log_level & KEST_LOG_ERROR, "%s encode gw address fail !!!\n", content.log_name);
    return false;
  }
  out.pos += static_cast<size_t>(written);
  return true;
}

// put_timestamp takes the place of seven octets, also if the text fills fewer of them.
void put_timestamp(octet_writer &out, const char *timestamp) {
  kest_sms_encode_timestamp(timestamp, out.data + out.pos);
  out.pos += TIMESTAMP_SIZE;
}

void put_header(octet_writer &out, const concatenation_header &header) {
  put_octet(out, HEADER_OCTETS - 1);
  put_octet(out, IEI_CONCATENATED_16BIT);
  put_octet(out, HEADER_OCTETS - 3);
  put_octet(out, static_cast<uint8_t>(header.reference >> 8));
  put_octet(out, static_cast<uint8_t>(header.reference));
  put_octet(out, header.total);
  put_octet(out, header.sequence);
}

// put_user_data writes TP-UDL and TP-UD and returns the octets of the whole PDU.
uint32_t put_user_data(octet_writer &out, const message_content &content, const message_text &text,
                       uint32_t packing_size) {
  uint8_t coded[coded_text::extent];
  const std::optional<uint16_t> count = kest_sms_code_text(
      content.log_name, text.alphabet, {text.octets, text.len}, content.cut, coded_text(coded));
  if (!count) {
    return 0;
  }
  const bool septets = text.alphabet == KEST_GW_ALPHABET_7BIT;
  const int header_length = septets ? HEADER_SEPTETS : HEADER_OCTETS;
  put_octet(out, static_cast<uint8_t>(content.header ? *count + header_length : *count));
  if (content.header) {
    put_header(out, *content.header);
  }
  if (septets) {
    // Of the room that is left 16 bits count: a size below the place is no limit.
    const auto limit = static_cast<uint16_t>(packing_size - out.pos);
    out.pos += kest_pack_septets(coded, *count, 0, limit, out.data + out.pos);
  } else {
    put_octets(out, {coded, *count});
  }
  return static_cast<uint32_t>(out.pos);
}

} // namespace

uint32_t kest_sms_encode_submit(const submit_message &message, pdu_buffer pdu) {
  const message_content &content = message.content;
  message_text text;
  kest_sms_take_text(content.log_name, content.text, content.is_hex, text);
  octet_writer out{pdu.octets, KEST_SMS_SUBMIT_PDU_SIZE};
  put_octet(out, TP_MTI_SUBMIT | TP_VPF_RELATIVE | flag(message.status_report, TP_SRR) |
                     flag(content.header.has_value(), TP_UDHI));
  put_octet(out, message.reference);
  if (!put_address(out, content)) {
    return 0;
  }
  put_octet(out, TP_PID_DEFAULT);
  put_octet(out, data_coding(content, text));
  put_octet(out, message.validity != 0 ? message.validity : uint8_t{KEST_SMS_VALIDITY_DEFAULT});
  return put_user_data(out, content, text, pdu.packing_size);
}

uint32_t kest_sms_encode_deliver(const deliver_message &message, pdu_buffer pdu) {
  const message_content &content = message.content;
  message_text text;
  kest_sms_take_text(content.log_name, content.text, content.is_hex, text);
  octet_writer out{pdu.octets, KEST_SMS_DELIVER_PDU_SIZE};
  // cppcheck-suppress badBitmaskCheck ; TP_MTI_DELIVER is 0, and stands here as the field it is
  put_octet(out, TP_MTI_DELIVER | flag(message.reply_path, TP_RP) |
                     flag(content.header.has_value(), TP_UDHI));
  if (!put_address(out, content)) {
    return 0;
  }
  put_octet(out, TP_PID_DEFAULT);
  put_octet(out, data_coding(content, text));
  put_timestamp(out, message.timestamp);
  return put_user_data(out, content, text, pdu.packing_size);
}
