#include "sms/decode/user_data_text.h"

#include <algorithm>

#include "kest/log.h"
#include "text/gsm_alphabet.h"

namespace {

constexpr const char *NAME = "kest_convert_userdata_to_utf8";

struct utf8_writer {
  std::span<uint8_t> dst;
  size_t used = 0;
};

uint8_t trailing_byte(unsigned bits) {
  return static_cast<uint8_t>(0x80 | (bits & 0x3F));
}

// put_code_point returns false if there is no room. The last octet of `dst` stays unused.
[[nodiscard]] bool put_code_point(utf8_writer &out, unsigned value) {
  const size_t length = value < 0x80 ? 1 : value < 0x800 ? 2 : 3;
  if (out.used + length >= out.dst.size()) {
    return false;
  }
  uint8_t *const bytes = &out.dst[out.used];
  if (length == 1) {
    bytes[0] = static_cast<uint8_t>(value);
  } else if (length == 2) {
    bytes[0] = static_cast<uint8_t>(0xC0 | value >> 6);
    bytes[1] = trailing_byte(value);
  } else {
    bytes[0] = static_cast<uint8_t>(0xE0 | value >> 12);
    bytes[1] = trailing_byte(value >> 6);
    bytes[2] = trailing_byte(value);
  }
  out.used += length;
  return true;
}

uint16_t extension_character(uint8_t code) {
  const uint16_t value = kest_gsm_extension_alphabet[code];
  return value != GSM_BLANK ? value : kest_gsm_default_alphabet[code];
}

void convert_7bit(std::span<const uint8_t> codes, utf8_writer &out) {
  const bool has_escape = std::find(codes.begin(), codes.end(), GSM_ESCAPE) != codes.end();
  const gsm_alphabet &alphabet = has_escape ? kest_gsm_default_alphabet : kest_gsm_ascii_alphabet;
  bool escaped = false;
  for (const uint8_t octet : codes) {
    const uint8_t code = octet & 0x7F;
    if (code == GSM_ESCAPE && !escaped) {
      escaped = true;
      continue;
    }
    unsigned value = alphabet[code];
    if (escaped) {
      value = code == GSM_ESCAPE ? GSM_BLANK : extension_character(code);
    }
    if (!put_code_point(out, value)) {
      return;
    }
    escaped = false;
  }
}

void convert_ucs2(std::span<const uint8_t> octets, utf8_writer &out) {
  for (size_t i = 0; i < octets.size() && out.used < out.dst.size(); i += 2) {
    const unsigned low = i + 1 < octets.size() ? octets[i + 1] : 0;
    const unsigned value = static_cast<unsigned>(octets[i]) << 8 | low;
    kest_log(log_level & KEST_LOG_DEBUG, "%s val: 0x%x\n", NAME, value);
    if (!put_code_point(out, value)) {
      return;
    }
  }
}

void convert_8bit(std::span<const uint8_t> octets, utf8_writer &out) {
  for (const uint8_t octet : octets) {
    if (!put_code_point(out, octet)) {
      return;
    }
  }
}

} // namespace

uint32_t kest_convert_userdata_to_utf8(kest_gw_alphabet alphabet, std::span<const uint8_t> src,
                                       std::span<uint8_t> dst) {
  if (src.data() == nullptr || dst.data() == nullptr) {
    return 0;
  }
  kest_log(log_level & KEST_LOG_DEBUG, "%s dcs: 0x%x\n", NAME, alphabet);
  utf8_writer out{dst};
  if (alphabet == KEST_GW_ALPHABET_7BIT) {
    convert_7bit(src, out);
  } else if (alphabet == KEST_GW_ALPHABET_UCS2) {
    convert_ucs2(src, out);
  } else {
    convert_8bit(src, out);
  }
  return static_cast<uint32_t>(out.used);
}
