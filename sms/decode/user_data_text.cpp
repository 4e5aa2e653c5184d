#include "sms/decode/user_data_text.h"

#include <cstring>

#include "log/debug_log.h"
#include "text/gsm_alphabet.h"
#include "text/unicode.h"

namespace {

constexpr const char *NAME = "kest_convert_userdata_to_utf8";

// put_code_point writes a character after the `used` octets of `dst` and counts its own in. It
// returns false if there is no room. The last octet of `dst` stays unused.
[[nodiscard]] inline bool put_code_point(unsigned value, std::span<uint8_t> dst, size_t &used) {
  const size_t room = used < dst.size() ? dst.size() - used - 1 : 0;
  const size_t length = put_utf8(value, dst.data() + used, room);
  used += length;
  return length != 0;
}

// Where a conversion stands: codes read, and octets written.
struct position {
  size_t read = 0;
  size_t used = 0;
};

// convert_singles converts codes up to the first whose character takes more than an octet, or is
// none: an escape. No code that reads in two ways is among them.
inline position convert_singles(std::span<const uint8_t> codes, std::span<uint8_t> dst,
                                position at) {
  while (at.read < codes.size() && at.used + 1 < dst.size()) {
    const uint16_t value = kest_gsm_default_alphabet[codes[at.read] & 0x7F];
    if (value >= 0x80) {
      break;
    }
    dst[at.used++] = static_cast<uint8_t>(value);
    ++at.read;
  }
  return at;
}

size_t convert_7bit(std::span<const uint8_t> codes, std::span<uint8_t> dst) {
  const bool has_escape = memchr(codes.data(), GSM_ESCAPE, codes.size()) != nullptr;
  position at = convert_singles(codes, dst, {});
  bool escaped = false;
  while (at.read < codes.size()) {
    const uint8_t code = codes[at.read] & 0x7F;
    if (code == GSM_ESCAPE && !escaped) {
      escaped = true;
      ++at.read;
      continue;
    }
    const unsigned value = escaped      ? kest_gsm_extended(code)
                           : has_escape ? kest_gsm_default_alphabet[code]
                                        : kest_gsm_unescaped(code);
    if (!put_code_point(value, dst, at.used)) {
      break;
    }
    ++at.read;
    escaped = false;
    at = convert_singles(codes, dst, at);
  }
  return at.used;
}

size_t convert_ucs2(std::span<const uint8_t> octets, std::span<uint8_t> dst) {
  size_t used = 0;
  for (size_t i = 0; i < octets.size() && used < dst.size(); i += 2) {
    const unsigned low = i + 1 < octets.size() ? octets[i + 1] : 0;
    const unsigned value = static_cast<unsigned>(octets[i]) << 8 | low;
    if (logs(KEST_LOG_DEBUG)) {
      kest_log_debug("%s val: 0x%x\n", NAME, value);
    }
    if (!put_code_point(value, dst, used)) {
      break;
    }
  }
  return used;
}

size_t convert_8bit(std::span<const uint8_t> octets, std::span<uint8_t> dst) {
  size_t used = 0;
  for (const uint8_t octet : octets) {
    if (!put_code_point(octet, dst, used)) {
      break;
    }
  }
  return used;
}

} // namespace

uint32_t kest_convert_userdata_to_utf8(kest_gw_alphabet alphabet, std::span<const uint8_t> src,
                                       std::span<uint8_t> dst) {
  kest_log_debug("%s dcs: 0x%x\n", NAME, alphabet);
  const size_t used = alphabet == KEST_GW_ALPHABET_7BIT   ? convert_7bit(src, dst)
                      : alphabet == KEST_GW_ALPHABET_UCS2 ? convert_ucs2(src, dst)
                                                          : convert_8bit(src, dst);
  return static_cast<uint32_t>(used);
}
