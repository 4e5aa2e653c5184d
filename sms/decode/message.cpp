#include "sms/decode/message.h"

#include <optional>

#include "kest/sms_decode.h"
#include "kest/text.h"
#include "log/debug_log.h"
#include "sms/decode/address.h"
#include "sms/decode/user_data_header.h"
#include "sms/decode/user_data_text.h"
#include "text/hex.h"
#include "text/septets.h"

namespace {

// Where the text stands in the user data: septets or octets, and for septets the fill bits before
// them, which bring the header to a septet boundary.
struct text_extent {
  uint16_t count;
  uint16_t fill_bits;
};

bool refuse(const received_message &message) {
  kest_log_error("%s invalid decode pdu !!!\n", message.log_name);
  return false;
}

bool udl_in_bounds(const received_message &message, kest_gw_alphabet alphabet, unsigned udl) {
  if (alphabet == KEST_GW_ALPHABET_7BIT ? udl <= MESSAGE_SEPTETS : udl <= MESSAGE_OCTETS) {
    return true;
  }
  kest_log_error("%s user data length > max value for gw %d-bit alphabet !!!\n", message.log_name,
                 alphabet == KEST_GW_ALPHABET_7BIT ? 7 : 8);
  return false;
}

// text_after_header returns what a header of `udhl` octets, and its length octet, leave of `udl`
// septets or octets; nothing if it is longer than these.
std::optional<text_extent> text_after_header(kest_gw_alphabet alphabet, unsigned udl,
                                             unsigned udhl) {
  const bool septets = alphabet == KEST_GW_ALPHABET_7BIT;
  const unsigned header_bits = (udhl + 1) * 8;
  const unsigned bits = udl * (septets ? 7 : 8);
  if (bits < header_bits) {
    return std::nullopt;
  }
  const unsigned left = bits - header_bits;
  const unsigned count = septets ? kest_seventh(left) : left / 8;
  return text_extent{static_cast<uint16_t>(count),
                     static_cast<uint16_t>(septets ? left - count * 7 : 0)};
}

// find_text reads the header, if there is one, and returns where the text stands. Of a header of
// length 0 the length octet still counts as text.
std::optional<text_extent> find_text(received_message &message, kest_gw_alphabet alphabet,
                                     unsigned udl, const user_data_targets &out) {
  uint32_t udhl = 0;
  if ((message.first_octet & TP_UDHI) != 0) {
    udhl = kest_decode_user_data_header(message.in, out.udh, out.udh_no_concat);
  }
  if (udhl == 0) {
    return text_extent{static_cast<uint16_t>(udl), 0};
  }
  const std::optional<text_extent> text = text_after_header(alphabet, udl, udhl);
  if (!text) {
    kest_log_error("%s user data header length > user data length !!!\n", message.log_name);
  }
  return text;
}

void read_septets(octet_reader &in, const text_extent &text, std::span<uint8_t> septets) {
  std::array<uint8_t, MESSAGE_OCTETS> packed;
  in.read(packed);
  const auto shift = static_cast<uint16_t>(text.fill_bits == 0 ? 0 : 8 - text.fill_bits);
  kest_unpack_septets(packed.data(), text.count, static_cast<uint16_t>(septets.size()), shift,
                      septets.data());
}

} // namespace

bool kest_sms_open_message(received_message &message, const char *pdu, char *smsc, unsigned mtis) {
  const std::optional<uint16_t> len = kest_hex_to_octets(pdu, message.pdu);
  if (!len) {
    return refuse(message);
  }
  message.pdu_len = *len;
  message.in.octets = {message.pdu.data(), *len};
  kest_sms_decode_smsc_address(message.in, smsc);
  message.first_octet = message.in.u8();
  return (mtis >> (message.first_octet & TP_MTI) & 1) != 0 || refuse(message);
}

bool kest_sms_read_user_data(received_message &message, kest_gw_alphabet alphabet,
                             const user_data_targets &out) {
  const unsigned udl = message.in.u8();
  if (!udl_in_bounds(message, alphabet, udl)) {
    return false;
  }
  const std::optional<text_extent> text = find_text(message, alphabet, udl, out);
  if (!text) {
    return false;
  }
  std::array<uint8_t, PDU_SIZE> units;
  if (alphabet == KEST_GW_ALPHABET_7BIT) {
    read_septets(message.in, *text, units);
  } else {
    message.in.read({units.data(), text->count});
  }
  if (*out.udh_no_concat == 0) { // the text takes the place of the PDU, which has been read
    message.pdu_len = static_cast<uint16_t>(
        kest_convert_userdata_to_utf8(alphabet, {units.data(), text->count}, message.pdu));
  }
  kest_binary_to_hexstring(message.pdu.data(), message.pdu_len, out.userdata,
                           KEST_SMS_USERDATA_TEXT_SIZE);
  return true;
}
