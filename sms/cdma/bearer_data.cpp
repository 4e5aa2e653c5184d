#include "sms/cdma/bearer_data.h"

#include <cstring>

#include "octets/bit_writer.h"
#include "sms/encode/counters.h"
#include "sms/encode/user_data.h"
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

[[nodiscard]] bool code_user_data(std::span<const uint8_t> text, kest_gw_alphabet alphabet,
                                  user_data &out) {
  uint8_t coded[coded_text::extent];
  const std::optional<uint16_t> count = kest_sms_code_text(
      "kest_sms_encode_cdma_bearer_data_with_validity", alphabet, text, false, coded_text(coded));
  if (!count) {
    return false;
  }
  if (alphabet == KEST_GW_ALPHABET_7BIT) {
    out.encoding = ENCODING_7BIT_ASCII;
    // Octets of the text, not septets, and only those before a NUL.
    out.num_fields = strnlen(reinterpret_cast<const char *>(text.data()), text.size());
    out.size = kest_pack_septets(coded, *count, sizeof out.payload, out.payload);
    return true;
  }
  const bool unicode = alphabet == KEST_GW_ALPHABET_UCS2;
  out.encoding = unicode ? ENCODING_UNICODE : ENCODING_OCTET;
  out.num_fields = unicode ? *count / 2u : *count;
  out.size = *count;
  memcpy(out.payload, coded, *count);
  return true;
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

uint32_t kest_sms_encode_cdma_bearer_data(std::span<const uint8_t> text, uint32_t status_report,
                                          kest_gw_alphabet alphabet, uint8_t *bearer,
                                          uint8_t *bearer_len) {
  if (text.empty() || text[0] == '\0') {
    *bearer_len = 0;
    return 0;
  }
  bit_writer out{bearer, CDMA_BEARER_DATA_SIZE};
  put_message_identifier(out);
  user_data data;
  if (!code_user_data(text, alphabet, data)) {
    return 0;
  }
  put_user_data(out, data);
  put_subparameter(out, VALIDITY_PERIOD_RELATIVE, 1);
  put_bits(out, 8, VALIDITY_SEVEN_DAYS);
  put_subparameter(out, REPLY_OPTION, 1);
  put_bits(out, 8, status_report == 1 ? DAK_REQ : 0);
  *bearer_len = static_cast<uint8_t>(written_octets(out));
  return *bearer_len;
}
