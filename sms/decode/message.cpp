#include "sms/decode/message.h"

#include <optional>

#include "kest/log.h"
#include "kest/sms_decode.h"
#include "kest/text.h"
#include "sms/decode/address.h"
#include "sms/decode/user_data_header.h"
#include "sms/decode/user_data_text.h"
#include "text/hex.h"
#include "text/septets.h"

namespace {

constexpr unsigned TP_MTI = 0x03;
constexpr unsigned TP_UDHI = 0x40;

constexpr unsigned MAX_SEPTETS = 160;
constexpr unsigned MAX_OCTETS = 140;
static_assert(MAX_SEPTETS * 7 <= MAX_OCTETS * 8 && MAX_SEPTETS < PDU_SIZE);

// Where the text stands in the user data: septets or octets, and for septets the fill bits ahead of
// them, which bring the header to a septet boundary.
struct text_extent {
  uint16_t count;
  uint16_t fill_bits;
};

bool refuse(const received_message &message) {
  kest_log(log_level & KEST_LOG_ERROR, "%s invalid decode pdu !!!\n", message.log_name);
  return false;
}

bool length_in_bounds(const received_message &message, kest_gw_alphabet alphabet, unsigned length) {
  if (alphabet == KEST_GW_ALPHABET_7BIT) {
    if (length > MAX_SEPTETS) {
      kest_log(log_level & KEST_LOG_ERROR,
               "%s user data length > max value for gw 7-bit alphabet !!!\n", message.log_name);
      return false;
    }
  } else if (length > MAX_OCTETS) {
    kest_log(log_level & KEST_LOG_ERROR,
             "%s user data length > max value for gw 8-bit alphabet !!!\n", message.log_name);
    return false;
  }
  return true;
}

// text_behind_header returns what a header of `header_length` octets, beside its length octet,
// leaves of `length` septets or octets; nothing if it is longer than these.
std::optional<text_extent> text_behind_header(kest_gw_alphabet alphabet, unsigned length,
                                              unsigned header_length) {
  const unsigned unit = alphabet == KEST_GW_ALPHABET_7BIT ? 7 : 8; // bits
  const unsigned header_bits = (header_length + 1) * 8;
  if (length * unit < header_bits) {
    return std::nullopt;
  }
  const unsigned bits = length * unit - header_bits;
  return text_extent{static_cast<uint16_t>(bits / unit), static_cast<uint16_t>(bits % unit)};
}

// find_text steps over the header, if there is one, and returns where the text stands. Of a header
// of length 0 the length octet is stepped over and still counts as text.
std::optional<text_extent> find_text(received_message &message, kest_gw_alphabet alphabet,
                                     unsigned length, const user_data_targets &out) {
  const text_extent whole = {static_cast<uint16_t>(length), 0};
  if ((message.first_octet & TP_UDHI) == 0) {
    return whole;
  }
  const uint32_t header_length =
      kest_decode_user_data_header(message.in, out.udh, out.udh_no_concat);
  skip_octets(message.in, header_length + 1);
  if (header_length == 0) {
    return whole;
  }
  const std::optional<text_extent> text = text_behind_header(alphabet, length, header_length);
  if (!text) {
    kest_log(log_level & KEST_LOG_ERROR, "%s user data header length > user data length !!!\n",
             message.log_name);
  }
  return text;
}

void read_septets(octet_reader &in, const text_extent &text, std::span<uint8_t> septets) {
  std::array<uint8_t, MAX_OCTETS> packed;
  read_octets(in, packed);
  const auto shift = static_cast<uint16_t>(text.fill_bits == 0 ? 0 : 8 - text.fill_bits);
  kest_unpack_septets(packed.data(), text.count, static_cast<uint16_t>(septets.size()), shift,
                      septets.data());
}

// write_text replaces the PDU, which is not needed any more, by the text.
void write_text(received_message &message, kest_gw_alphabet alphabet,
                std::span<const uint8_t> units) {
  message.pdu_len =
      static_cast<uint16_t>(kest_convert_userdata_to_utf8(alphabet, units, message.pdu));
}

} // namespace

bool kest_sms_open_message(received_message &message, const char *pdu, char *smsc, unsigned types) {
  const std::optional<uint16_t> len = kest_hex_to_octets(pdu, message.pdu);
  if (!len) {
    return refuse(message);
  }
  message.pdu_len = *len;
  message.in.octets = {message.pdu.data(), *len};
  int32_t smsc_size = 1;
  if (peek_octet(message.in, 0) != 0) {
    smsc_size = kest_sms_decode_smsc_address(message.in, smsc);
  }
  skip_octets(message.in, static_cast<size_t>(smsc_size));
  message.first_octet = read_octet(message.in);
  return (types >> (message.first_octet & TP_MTI) & 1) != 0 || refuse(message);
}

void kest_sms_read_address(received_message &message, char *text) {
  skip_octets(message.in, static_cast<size_t>(kest_sms_decode_gw_address(message.in, text)));
}

bool kest_sms_read_user_data(received_message &message, kest_gw_alphabet alphabet,
                             const user_data_targets &out) {
  const unsigned length = read_octet(message.in);
  if (!length_in_bounds(message, alphabet, length)) {
    return false;
  }
  const std::optional<text_extent> text = find_text(message, alphabet, length, out);
  if (!text) {
    return false;
  }
  std::array<uint8_t, PDU_SIZE> units;
  if (alphabet == KEST_GW_ALPHABET_7BIT) {
    read_septets(message.in, *text, units);
  } else {
    read_octets(message.in, {units.data(), text->count});
  }
  if (*out.udh_no_concat == 0) {
    write_text(message, alphabet, {units.data(), text->count});
  }
  kest_binary_to_hexstring(message.pdu.data(), message.pdu_len, out.userdata,
                           KEST_SMS_USERDATA_TEXT_SIZE);
  return true;
}
