#include "sms/decode/address.h"

#include <array>

#include "kest/sms_decode.h"
#include "text/hex.h"
#include "text/septets.h"

namespace {

// Types of number, and semi-octets that are no digits (TS 23.040, clauses 9.1.2.3 and 9.1.2.5).
// NOTE: those from 12 on are shown as hexadecimal digits, not as the standard names them.
constexpr unsigned TYPE_INTERNATIONAL = 1;
constexpr unsigned TYPE_ALPHANUMERIC = 5;
constexpr unsigned STAR = 10;
constexpr unsigned HASH = 11;
constexpr unsigned FILLER = 15;

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

// read_digits writes up to `octets` octets of digits and returns how many it took. A filler ends
// the number; in a low nibble it leaves its octet uncounted, for odd numbers pad the high nibble.
size_t read_digits(octet_reader &in, size_t octets, number_writer &out) {
  for (size_t used = 0; used < octets; ++used) {
    const uint8_t octet = read_octet(in);
    if ((octet & 0xF) == FILLER) {
      return used;
    }
    put_digit(out, digit_of(octet & 0xF));
    if (octet >> 4 == FILLER) {
      return used + 1;
    }
    put_digit(out, digit_of(octet >> 4));
  }
  return octets;
}

void read_septets(octet_reader &in, size_t octets, char *text) {
  std::array<uint8_t, MAX_PACKED> packed;
  read_octets(in, packed);
  const auto count = static_cast<uint8_t>(octets * 8 / 7);
  kest_unpack_septets(packed.data(), count, MAX_SEPTETS, 0, reinterpret_cast<uint8_t *>(text));
}

// What the two fields make of their length octet.
struct field_layout {
  size_t digit_octets;
  size_t size;
  size_t alphanumeric_size; // NOTE: an address field keeps 7 bits of `digit_octets`: 255 gives 2
};

int32_t decode_address(const field_layout &layout, octet_reader field, char *text) {
  if (text == nullptr) {
    return static_cast<int32_t>(layout.size);
  }
  skip_octets(field, 1);
  const unsigned type_of_number = (read_octet(field) >> 4) & 7;
  if (type_of_number == TYPE_ALPHANUMERIC) {
    read_septets(field, layout.digit_octets, text);
    return static_cast<int32_t>(layout.alphanumeric_size);
  }
  if (type_of_number == TYPE_INTERNATIONAL) {
    *text++ = '+';
  }
  number_writer out{text};
  const size_t used = read_digits(field, layout.digit_octets, out);
  *out.end = '\0';
  return static_cast<int32_t>(used + 2);
}

} // namespace

int32_t kest_sms_decode_smsc_address(octet_reader field, char *text) {
  const size_t octets = peek_octet(field, 0);
  const size_t digit_octets = octets > 0 ? octets - 1 : 0;
  return decode_address({digit_octets, octets + 1, octets + 1}, field, text);
}

int32_t kest_sms_decode_gw_address(octet_reader field, char *text) {
  const size_t digit_octets = (peek_octet(field, 0) + 1u) / 2;
  return decode_address({digit_octets, digit_octets + 2, (digit_octets & 0x7F) + 2}, field, text);
}
