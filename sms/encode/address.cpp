#include "sms/encode/address.h"

#include <algorithm>
#include <cstring>

#include "kest/sms_encode.h"
#include "sms/tpdu.h"

namespace {

// Types of address with the numbering plan E.164, and the most digits (clause 9.1.2.5).
constexpr uint8_t PLAN_E164 = 0x81;
constexpr size_t MAX_DIGITS = 20;

struct number_text {
  const char *digits;
  size_t count;
  uint8_t type;
};

number_text read_number(const char *str) {
  if (str[0] == '+') {
    return {str + 1, strlen(str + 1), TON_INTERNATIONAL << 4 | PLAN_E164};
  }
  return {str, strlen(str), PLAN_E164};
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

// put_digits writes the first `limit` digits, two to an octet.
void put_digits(octet_writer &out, const number_text &number, size_t limit) {
  const size_t count = std::min(number.count, limit);
  unsigned nibble = 0;
  for (size_t i = 0; i < count; i += 2) {
    nibble = semi_octet(number.digits[i], nibble);
    const unsigned low = nibble;
    if (i + 1 < number.count) {
      nibble = semi_octet(number.digits[i + 1], nibble);
      out.u8(static_cast<uint8_t>(nibble << 4 | low));
    } else {
      out.u8(static_cast<uint8_t>(FILLER << 4 | low));
    }
  }
}

} // namespace

bool kest_sms_encode_gw_address(const char *str, octet_writer &out) {
  if (str[0] == '\0') {
    return false;
  }
  const number_text number = read_number(str);
  out.u8(static_cast<uint8_t>(number.count)); // semi-octets, also those that find no room
  out.u8(number.type);
  put_digits(out, number, MAX_DIGITS);
  return true;
}

int32_t kest_sms_encode_gw_smsc(const char *str, uint8_t *out, int32_t out_size) {
  if (str[0] == '\0') {
    return 0;
  }
  constexpr int32_t HEAD = 2; // written whatever `out_size` says
  const number_text number = read_number(str);
  octet_writer field{out, static_cast<size_t>(std::max(out_size, HEAD)), HEAD};
  put_digits(field, number, number.count);
  out[0] = static_cast<uint8_t>(field.pos - 1); // octets after this one
  out[1] = number.type;
  return static_cast<int32_t>(field.pos);
}
