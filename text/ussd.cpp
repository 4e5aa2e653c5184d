#include "text/ussd.h"

#include <cstring>

#include "kest/text.h"
#include "text/apart.h"
#include "text/gsm_alphabet.h"
#include "text/septets.h"

namespace {

constexpr uint8_t CODE_COMMERCIAL_AT = 0x00;

enum class conversion { SEPTETS, COPY, UCS2, UCS2_AFTER_LANGUAGE, REFUSED };

// conversion_of reads a data coding scheme (3GPP TS 23.038, clause 5). Compression and class have
// no effect.
conversion conversion_of(uint8_t dcs) {
  static constexpr conversion BY_ALPHABET[] = {conversion::SEPTETS, conversion::COPY,
                                               conversion::UCS2, conversion::REFUSED};
  switch (dcs >> 4) {
  case 0x1: // a language indication precedes the text
    return dcs == 0x10   ? conversion::SEPTETS
           : dcs == 0x11 ? conversion::UCS2_AFTER_LANGUAGE
                         : conversion::REFUSED;
  case 0x0:
  case 0x2:
  case 0x3:
    return conversion::SEPTETS;
  case 0x8:
  case 0xA:
  case 0xB:
    return conversion::REFUSED;
  case 0xF:
    return (dcs & 0x4) != 0 ? conversion::COPY : conversion::SEPTETS;
  default:
    return BY_ALPHABET[dcs >> 2 & 3];
  }
}

// put_codes writes the characters of `codes` and returns their bytes.
uint32_t put_codes(const uint8_t *codes, uint32_t count, char *dst) {
  uint32_t written = 0;
  for (uint32_t i = 0; i < count; ++i) {
    if (codes[i] == GSM_CARRIAGE_RETURN) {
      continue;
    }
    const unsigned value = codes[i] == GSM_ESCAPE ? GSM_BLANK : kest_gsm_default_alphabet[codes[i]];
    if (value >= 0x80) { // up to U+07FF: two bytes
      dst[written++] = static_cast<char>(0xC0 | value >> 6);
      dst[written++] = static_cast<char>(0x80 | (value & 0x3F));
    } else {
      dst[written++] = static_cast<char>(value);
    }
  }
  return written;
}

uint32_t copy_octets(const uint8_t *src, uint8_t len, char *dst) {
  memmove(dst, src, len);
  dst[len] = '\0';
  return len;
}

// convert_units converts the whole 16-bit units of `src`, high octet first. A language indication,
// two octets before the text, passes as a unit with its low octet first.
uint32_t convert_units(const uint8_t *src, uint8_t len, bool after_language, char *dst) {
  uint16_t units[UINT8_MAX / 2];
  const size_t count = len / 2u;
  for (size_t i = 0; i < count; ++i) {
    units[i] = static_cast<uint16_t>(src[2 * i] << 8 | src[2 * i + 1]);
  }
  if (after_language && count > 0) {
    units[0] = static_cast<uint16_t>(src[1] << 8 | src[0]);
  }
  return kest_convert_ucs2_to_utf8(units, static_cast<uint16_t>(2 * count), dst);
}

} // namespace

uint32_t kest_gsm_to_utf8(const uint8_t *src, uint32_t count, char *dst) {
  if (src == nullptr || dst == nullptr || count == 0) {
    return 0;
  }
  uint32_t written = put_codes(src, count, dst);
  if (src[count - 1] == CODE_COMMERCIAL_AT) {
    --written;
  }
  dst[written] = '\0';
  return written;
}

uint32_t kest_decode_septets_to_utf8(const uint8_t *src, uint16_t len, char *dst) {
  if (src == nullptr || dst == nullptr || len == 0) {
    return 0;
  }
  // Block by block, each of whole groups of seven octets; only the last one has the end of the
  // text. From the others, too, a last carriage return is taken as padding, but none is put anyway.
  constexpr uint16_t BLOCK = 7 * 16;
  uint8_t codes[BLOCK * 8 / 7];
  heap<void> copy;
  const size_t room = 2 * size_t{kest_seventh(size_t{len} * 8)} + 1;
  const auto *octets = static_cast<const uint8_t *>(kest_keep_apart(src, len, dst, room, copy));
  if (octets == nullptr) {
    return 0;
  }
  uint32_t written = 0;
  for (; len > BLOCK; octets += BLOCK, len = static_cast<uint16_t>(len - BLOCK)) {
    written += put_codes(codes, kest_unpack_ussd_septets(codes, octets, BLOCK), dst + written);
  }
  return written +
         kest_gsm_to_utf8(codes, kest_unpack_ussd_septets(codes, octets, len), dst + written);
}

uint32_t kest_convert_ussd_string_to_utf8(uint8_t dcs, uint8_t len, const uint8_t *src, char *dst) {
  if (src == nullptr || dst == nullptr) {
    return 0;
  }
  switch (conversion_of(dcs)) {
  case conversion::SEPTETS:
    return kest_decode_septets_to_utf8(src, len, dst);
  case conversion::COPY:
    return copy_octets(src, len, dst);
  case conversion::UCS2:
    return convert_units(src, len, false, dst);
  case conversion::UCS2_AFTER_LANGUAGE:
    return convert_units(src, len, true, dst);
  case conversion::REFUSED:
    break;
  }
  return 0;
}

uint32_t kest_decode_packed_7bit_gsm_string(char *dst, const uint8_t *src, uint16_t len) {
  constexpr unsigned EIGHTH_SEPTET = 0xFE; // of the last octet of seven
  const bool zero_ends = src != nullptr && len != 0 && len == 7 * kest_seventh(len) &&
                         (src[len - 1] & EIGHTH_SEPTET) == 0;
  const uint32_t written = kest_decode_septets_to_utf8(src, len, dst);
  if (written != 0 && zero_ends && dst[written - 1] == '@') {
    dst[written - 1] = '\0';
  }
  return written;
}
