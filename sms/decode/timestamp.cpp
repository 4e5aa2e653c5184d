#include "sms/decode/timestamp.h"

#include <array>

#include "sms/tpdu.h"
#include "text/hex.h"

namespace {

constexpr size_t ZONE_OCTET = 6;
constexpr unsigned ZONE_TENS = 0x7;
constexpr int ZONE_LOWEST = -48; // quarters of an hour

void put_digits(char *text, unsigned tens, unsigned units) {
  text[0] = hex_digit(tens);
  text[1] = hex_digit(units);
}

// zone_sign returns the sign that is shown for a time zone octet. The digits are shown as they are.
char zone_sign(unsigned octet) {
  const int units = static_cast<int>(octet >> 4);
  if ((octet & ZONE_NEGATIVE) == 0) {
    return '+';
  }
  const int quarters = -(static_cast<int>(octet & ZONE_TENS) * 10 + units);
  return quarters >= ZONE_LOWEST && quarters <= -1 ? '-' : '+';
}

} // namespace

void kest_sms_decode_timestamp(octet_reader &in, char *text) {
  std::array<uint8_t, TIMESTAMP_SIZE> stamp;
  in.read(stamp);
  if (text == nullptr) {
    return;
  }
  const char *const century = (stamp[0] & 0xF) == 9 ? "19" : "20"; // which makes no trace lines
  text[0] = century[0];
  text[1] = century[1];
  static constexpr char SEPARATORS[] = {'/', '/', ',', ':', ':'}; // after each field but the last
  char *field = text + 2;
  for (size_t i = 0; i < ZONE_OCTET; ++i) {
    put_digits(field, stamp[i] & 0xF, stamp[i] >> 4);
    if (i < sizeof SEPARATORS) {
      field[2] = SEPARATORS[i];
    }
    field += 3;
  }
  const unsigned zone = stamp[ZONE_OCTET];
  text[19] = zone_sign(zone);
  put_digits(text + 20, zone & ZONE_TENS, zone >> 4);
}
