// tests/support/cell_broadcast.h: the two decoders of cell broadcast, called alike.
#pragma once
#include "kest/sms_decode.h"
#include "tests/support/octets.h"

// Outputs as the caller left them. A text that a decoder leaves alone stays filled with '~'.
struct cb_outputs {
  std::vector<char> text = std::vector<char>(KEST_SMS_CB_TEXT_SIZE, '~');
  kest_sms_cb_info info;
  kest_sms_msg_class msg_class = 99;
  uint32_t result = 99;

  cb_outputs() {
    memset(&info, 0xEE, sizeof info);
  }
};

struct cb_decoder {
  const char *name;
  uint32_t (*decode)(const uint8_t *data, uint16_t length, cb_outputs &out);
};

constexpr cb_decoder CB_DECODERS[] = {
    {"kest_sms_decode_gw_cb_pdu",
     [](const uint8_t *data, uint16_t length, cb_outputs &out) {
       return kest_sms_decode_gw_cb_pdu(data, length, out.text.data(), &out.info);
     }},
    {"kest_sms_decode_gw_cb_pdu_v2",
     [](const uint8_t *data, uint16_t length, cb_outputs &out) {
       return kest_sms_decode_gw_cb_pdu_v2(data, length, out.text.data(), &out.info,
                                           &out.msg_class);
     }},
};

// decode_cb decodes octets that stand in a heap block of their exact size.
inline cb_outputs decode_cb(const cb_decoder &d, std::span<const uint8_t> octets) {
  cb_outputs out;
  out.result = d.decode(exact_octets(octets).get(), static_cast<uint16_t>(octets.size()), out);
  return out;
}
