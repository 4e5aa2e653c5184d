#include "sms/encode/address.h"

#include <cstring>

#include "kest/sms_encode.h"

namespace {

// Types of address: numbering plan E.164, and the type of number (TS 23.040, clause 9.1.2.5).
constexpr uint8_t TYPE_INTERNATIONAL = 0x91;
constexpr uint8_t TYPE_UNKNOWN = 0x81;
constexpr unsigned FILLER = 0xF; // in the last high nibble of an odd number of digits

struct number_text {
  const char *digits;
  size_t count;
  uint8_t type;
};

number_text read_number(const char *str) {
  if (str[0] == '+') {
    return {str + 1, strlen(str + 1), TYPE_INTERNATIONAL};
  }
  return {str, strlen(str), TYPE_UNKNOWN};
}

// semi_octet returns a character's nibble, or that of the character before it if it has none.
unsigned semi_octet(char c, unsigned previous) {
  if (c >= '0' && c <= '9') {
    return static_cast<unsigned>(c - '0');
  }
  if (c == '*') {
    return 0xA;
  }
  return c == '#' ? 0xB : previous;
}

// put_digits writes behind the type octet, up to `out_size`, and returns the field's octets.
int32_t put_digits(const number_text &number, uint8_t *out, int32_t out_size) {
  int32_t written = 2;
  unsigned nibble = 0;
  for (size_t i = 0; i < number.count && written < out_size; i += 2) {
    nibble = semi_octet(number.digits[i], nibble);
    const unsigned low = nibble;
    if (i + 1 < number.count) {
      nibble = semi_octet(number.digits[i + 1], nibble);
      out[written++] = static_cast<uint8_t>(nibble << 4 | low);
    } else {
      out[written++] = static_cast<uint8_t>(FILLER << 4 | low);
    }
  }
  return written;
}

} // namespace

int32_t kest_sms_encode_gw_address(const char *str, uint8_t *out, int32_t out_size) {
  if (str[0] == '\0') {
    return 0;
  }
  const number_text number = read_number(str);
  out[0] = static_cast<uint8_t>(number.count); // semi-octets, also those that find no room
  out[1] = number.type;
  return put_digits(number, out, out_size);
}

int32_t kest_sms_encode_gw_smsc(const char *str, uint8_t *out, int32_t out_size) {
  if (str[0] == '\0') {
    return 0;
  }
  const number_text number = read_number(str);
  out[1] = number.type;
  const int32_t written = put_digits(number, out, out_size);
  out[0] = static_cast<uint8_t>(written - 1); // octets behind this one
  return written;
}
