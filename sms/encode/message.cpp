#include "sms/encode/message.h"

#include "log/debug_log.h"
#include "sms/encode/address.h"
#include "sms/encode/counters.h"
#include "sms/tpdu.h"
#include "text/septets.h"

namespace {

constexpr unsigned DCS_ALPHABET_SHIFT = 2; // general data coding group (TS 23.038, clause 4)

constexpr uint8_t HEADER_OCTETS = 7;  // with its length octet
constexpr uint8_t HEADER_SEPTETS = 8; // the same 56 bits: the text after it needs no fill bits

// class_bits returns the bits of TP-DCS that hold the class (TS 23.038, clause 4). Bit 4 says that
// there is one; KEST_SMS_CLASS_NONE leaves all of them 0.
uint8_t class_bits(kest_sms_msg_class msg_class) {
  constexpr unsigned HAS_CLASS = 0x10;
  return static_cast<uint8_t>((msg_class != KEST_SMS_CLASS_NONE ? HAS_CLASS : 0u) |
                              (msg_class & 3u));
}

void put_header(octet_writer &out, const concatenation_header &header) {
  out.u8(HEADER_OCTETS - 1);
  out.u8(IEI_CONCATENATED_16BIT);
  out.u8(HEADER_OCTETS - 3);
  out.u16(header.reference);
  out.u8(header.total);
  out.u8(header.sequence);
}

} // namespace

message_content kest_sms_detail_content(message_content plain,
                                        const kest_sms_encode_options &options) {
  plain.class_bits = class_bits(options.msg_class);
  if (options.concatenated != 0) {
    plain.header = {options.reference, options.total, options.sequence};
  }
  return plain;
}

message_content kest_sms_segment_content(message_content plain, int32_t total, int32_t sequence) {
  if (total >= 2) {
    plain.cut = true;
    plain.header = {kest_sms_concat_reference, static_cast<uint8_t>(total),
                    static_cast<uint8_t>(sequence)};
  }
  return plain;
}

bool kest_sms_put_address(octet_writer &out, const message_content &content) {
  if (!kest_sms_encode_gw_address(content.number, out)) {
    kest_log_error("%s encode gw address fail !!!\n", content.log_name);
    return false;
  }
  return true;
}

void kest_sms_put_coding(octet_writer &out, const message_content &content,
                         const message_text &text) {
  out.u8(PID_DEFAULT);
  out.u8(static_cast<uint8_t>(text.alphabet << DCS_ALPHABET_SHIFT | content.class_bits));
}

uint32_t kest_sms_put_user_data(octet_writer &out, const message_content &content,
                                const message_text &text, uint32_t packing_size) {
  uint8_t coded[coded_text::extent];
  const std::optional<uint16_t> count =
      kest_sms_code_text(content.log_name, text, content.cut, coded_text(coded));
  if (!count) {
    return 0;
  }
  const bool septets = text.alphabet == KEST_GW_ALPHABET_7BIT;
  const int header_length = septets ? HEADER_SEPTETS : HEADER_OCTETS;
  out.u8(static_cast<uint8_t>(content.header ? *count + header_length : *count));
  if (content.header) {
    put_header(out, *content.header);
  }
  if (septets) {
    // Of the room that is left 16 bits count: a size below the place is no limit.
    const auto limit = static_cast<uint16_t>(packing_size - out.pos);
    out.pos += kest_pack_septets(coded, *count, limit, out.data + out.pos);
  } else {
    out.put({coded, *count});
  }
  return static_cast<uint32_t>(out.pos);
}

int32_t kest_sms_close_segment(uint32_t size, int32_t total, int32_t sequence) {
  if (size != 0 && sequence == total) {
    kest_sms_end_concatenation();
  }
  return static_cast<int32_t>(size);
}
