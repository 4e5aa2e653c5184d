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

// put_digits writes the first `limit` digits, two to an octet, as far as there is room.
void put_digits(octet_writer &out, const number_text &number, size_t limit) {
  const char *digit = number.digits;
  unsigned previous = 0;
  for (uint8_t &octet : out.space((std::min(number.count, limit) + 1) / 2)) {
    const unsigned low = semi_octet(digit[0], previous);
    const unsigned high = digit[1] != '\0' ? semi_octet(digit[1], low) : FILLER;
    octet = static_cast<uint8_t>(high << 4 | low);
    previous = high;
    digit += 2;
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
