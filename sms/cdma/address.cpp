#include "sms/cdma/address.h"

#include <cstring>

#include "octets/bit_writer.h"

namespace {

constexpr uint32_t DIGIT_MODE_DTMF = 0;
constexpr uint32_t NUMBER_MODE_ANSI = 0;

// dtmf_code returns a character's code (3GPP2 C.S0005, table 2.7.1.3.2.4-4), or the one before it
// if it has none.
unsigned dtmf_code(char c, unsigned previous) {
  if (c >= '1' && c <= '9') {
    return static_cast<unsigned>(c - '0');
  }
  switch (c) {
  case '0':
    return 10;
  case '*':
    return 11;
  case '#':
    return 12;
  default:
    return previous;
  }
}

} // namespace

uint32_t kest_sms_encode_cdma_address(const char *number, uint8_t *address, uint8_t *address_len) {
  if (number[0] == '\0') {
    *address_len = 0;
    return 0;
  }
  const char *const digits = number[0] == '+' ? number + 1 : number;
  const size_t count = strnlen(digits, CDMA_ADDRESS_DIGITS + 1);
  if (count > CDMA_ADDRESS_DIGITS) {
    *address_len = 0;
    return 0;
  }
  bit_writer out{address, CDMA_ADDRESS_SIZE};
  put_bits(out, 1, DIGIT_MODE_DTMF);
  put_bits(out, 1, NUMBER_MODE_ANSI);
  put_bits(out, 8, static_cast<uint32_t>(count)); // NUM_FIELDS
  if (count == 0) {
    return 0;
  }
  unsigned previous = 0;
  for (size_t i = 0; i < count; i += 2) { // an odd number ends in a code of 0
    const unsigned first = dtmf_code(digits[i], previous);
    const unsigned second = i + 1 < count ? dtmf_code(digits[i + 1], first) : 0;
    if (first == 0 && second == 0) { // nothing to repeat: also the digits after it are left out
      break;
    }
    put_bits(out, 4, first);
    put_bits(out, 4, second);
    previous = second;
  }
  *address_len = static_cast<uint8_t>(written_octets(out));
  return *address_len;
}
