#include "sms/cdma/bearer_data.h"

#include <cstring>

#include "octets/bit_writer.h"
#include "sms/encode/counters.h"
#include "text/septets.h"

namespace {

// Subparameters (C.S0015, clause 4.5, table 4.5-1).
constexpr uint32_t MESSAGE_IDENTIFIER = 0x00;
constexpr uint32_t USER_DATA = 0x01;
constexpr uint32_t VALIDITY_PERIOD_RELATIVE = 0x05;
constexpr uint32_t REPLY_OPTION = 0x0A;

constexpr uint32_t MESSAGE_TYPE_SUBMIT = 2;
constexpr uint8_t VALIDITY_SEVEN_DAYS = 173;
constexpr uint32_t DAK_REQ = 0x40;

// MSG_ENCODING (3GPP2 C.R1001, table 9.1-1).
constexpr uint32_t ENCODING_OCTET = 0;
constexpr uint32_t ENCODING_7BIT_ASCII = 2;
constexpr uint32_t ENCODING_UNICODE = 4;

struct user_data {
  uint32_t encoding;
  size_t num_fields;
  uint8_t payload[MESSAGE_OCTETS];
  size_t size; // octets of `payload`
};

void code_user_data(const message_text &text, user_data &out) {
  uint8_t coded[coded_text::extent];
  const size_t count = kest_sms_code_text("", text, false, coded_text(coded)).value_or(0);
  if (text.alphabet == KEST_GW_ALPHABET_7BIT) {
    out.encoding = ENCODING_7BIT_ASCII;
    // Octets of the text, not septets, and only those before a NUL.
    out.num_fields = strnlen(reinterpret_cast<const char *>(text.octets), text.len);
    out.size =
        kest_pack_septets(coded, static_cast<uint16_t>(count), sizeof out.payload, out.payload);
    return;
  }
  const bool unicode = text.alphabet == KEST_GW_ALPHABET_UCS2;
  out.encoding = unicode ? ENCODING_UNICODE : ENCODING_OCTET;
  out.num_fields = unicode ? count / 2 : count;
  out.size = count;
  memcpy(out.payload, coded, count);
}

void put_subparameter(bit_writer &out, uint32_t id, size_t length) {
  put_bits(out, 8, id);
  put_bits(out, 8, static_cast<uint32_t>(length));
}

void put_message_identifier(bit_writer &out) {
  put_subparameter(out, MESSAGE_IDENTIFIER, 3);
  put_bits(out, 4, MESSAGE_TYPE_SUBMIT);
  put_bits(out, 16, kest_cdma_next_message_id());
  put_bits(out, 4, 0); // HEADER_IND: none; three reserved bits
}

void put_user_data(bit_writer &out, const user_data &data) {
  put_subparameter(out, USER_DATA, data.size + 2);
  put_bits(out, 5, data.encoding);
  put_bits(out, 8, static_cast<uint32_t>(data.num_fields));
  put_octets(out, {data.payload, data.size});
  put_bits(out, 3, 0);
}

} // namespace

uint32_t kest_sms_encode_cdma_bearer_data(const message_text &text, uint32_t status_report,
                                          uint8_t *bearer, uint8_t *bearer_len) {
  if (text.len == 0 || text.octets[0] == '\0') {
    *bearer_len = 0;
    return 0;
  }
  bit_writer out{bearer, CDMA_BEARER_DATA_SIZE};
  put_message_identifier(out);
  user_data data;
  code_user_data(text, data);
  put_user_data(out, data);
  put_subparameter(out, VALIDITY_PERIOD_RELATIVE, 1);
  put_bits(out, 8, VALIDITY_SEVEN_DAYS);
  put_subparameter(out, REPLY_OPTION, 1);
  put_bits(out, 8, status_report == 1 ? DAK_REQ : 0);
  *bearer_len = static_cast<uint8_t>(written_octets(out));
  return *bearer_len;
}
