#include "sms/decode/address.h"

#include <array>

#include "kest/sms_decode.h"
#include "sms/tpdu.h"
#include "text/hex.h"
#include "text/septets.h"

namespace {

// NOTE: nibbles from 12 on are shown as hexadecimal digits, not as the standard names them.
constexpr unsigned STAR = 10;
constexpr unsigned HASH = 11;

constexpr size_t MAX_DIGITS = 20;
constexpr uint16_t MAX_SEPTETS = 20;
static_assert(MAX_DIGITS + sizeof "+" <= KEST_SMS_ADDRESS_TEXT_SIZE);
constexpr size_t MAX_PACKED = (MAX_SEPTETS * 7 + 7) / 8;

// The text of a number, and how many digits more it takes. What does not fit is dropped.
struct number_writer {
  char *end;
  size_t digits_left = MAX_DIGITS;
};

void put_digit(number_writer &out, char digit) {
  if (out.digits_left > 0) {
    *out.end++ = digit;
    --out.digits_left;
  }
}

char digit_of(unsigned nibble) {
  if (nibble == STAR) {
    return '*';
  }
  return nibble == HASH ? '#' : hex_digit(nibble);
}

// read_digits reads up to `octets` octets of digits. A filler ends the number. In a low nibble it
// leaves its octet unread, for odd numbers pad the high nibble.
void read_digits(octet_reader &in, size_t octets, number_writer &out) {
  for (; octets > 0 && (in.next() & 0xF) != FILLER; --octets) {
    const unsigned octet = in.u8();
    put_digit(out, digit_of(octet & 0xF));
    if (octet >> 4 == FILLER) {
      return;
    }
    put_digit(out, digit_of(octet >> 4));
  }
}

void read_septets(octet_reader in, size_t octets, char *text) {
  std::array<uint8_t, MAX_PACKED> packed;
  in.read(packed);
  const auto count = static_cast<uint8_t>(kest_seventh(octets * 8));
  kest_unpack_septets(packed.data(), count, MAX_SEPTETS, 0, reinterpret_cast<uint8_t *>(text));
}

// read_address reads a type octet and an address of `octets` octets, of which an alphanumeric one
// takes `alphanumeric`.
void read_address(octet_reader &in, size_t octets, size_t alphanumeric, char *text) {
  if (text == nullptr) {
    in.skip(1 + octets);
    return;
  }
  const unsigned type_of_number = (in.u8() >> 4) & 7;
  if (type_of_number == TON_ALPHANUMERIC) {
    read_septets(in, octets, text);
    in.skip(alphanumeric);
    return;
  }
  if (type_of_number == TON_INTERNATIONAL) {
    *text++ = '+';
  }
  number_writer out{text};
  read_digits(in, octets, out);
  *out.end = '\0';
}

} // namespace

void kest_sms_decode_smsc_address(octet_reader &in, char *text) {
  const size_t octets = in.u8();
  if (octets > 0) {
    read_address(in, octets - 1, octets - 1, text);
  }
}

void kest_sms_decode_gw_address(octet_reader &in, char *text) {
  const size_t octets = (in.u8() + 1u) / 2;
  read_address(in, octets, octets & 0x7F, text); // NOTE: 255 semi-octets of text count as none
}
