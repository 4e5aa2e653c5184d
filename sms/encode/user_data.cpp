#include "sms/encode/user_data.h"

#include <algorithm>
#include <cstring>

#include "kest/log.h"
#include "text/gsm_alphabet.h"
#include "text/hex.h"
#include "text/unicode.h"

namespace {

// Where the coding of a text stands. A character whose places do not fit is not read.
struct coder {
  std::span<const uint8_t> text;
  uint16_t limit;
  coded_text out;
  size_t read = 0; // bytes of `text`; past its end if a sequence is cut off there
  size_t used = 0; // places of `out`
};

struct character {
  uint16_t value;
  size_t length; // in bytes
};

character next_character(const coder &c) {
  character next = {};
  next.length = kest_utf8_char_to_ucs2(c.text.subspan(c.read), &next.value);
  return next;
}

void code_ucs2(coder &c) {
  while (c.read < c.text.size() && c.used + 1 < c.limit) {
    const character next = next_character(c);
    c.read += next.length;
    c.out[c.used++] = static_cast<uint8_t>(next.value >> 8);
    c.out[c.used++] = static_cast<uint8_t>(next.value);
  }
}

void code_8bit(coder &c) {
  while (c.read < c.text.size() && c.used < c.limit) {
    const character next = next_character(c);
    c.read += next.length;
    c.out[c.used++] = static_cast<uint8_t>(next.value);
  }
}

// code_7bit leaves out characters without a code. They need no place, and so are read also where
// none is left.
void code_7bit(coder &c) {
  while (c.read < c.text.size()) {
    const character next = next_character(c);
    const gsm_coding coding = kest_gsm_codings[next.value & 0xFF];
    if (c.used + coding.septets > c.limit) {
      return;
    }
    c.read += next.length;
    if (coding.septets == 2) {
      c.out[c.used++] = GSM_ESCAPE;
    }
    if (coding.septets != 0) {
      c.out[c.used++] = coding.code;
    }
  }
}

} // namespace

uint16_t kest_sms_user_data_limit(kest_gw_alphabet alphabet, bool cut) {
  if (alphabet == KEST_GW_ALPHABET_7BIT) {
    return cut ? SEGMENT_SEPTETS : MESSAGE_SEPTETS;
  }
  return cut ? SEGMENT_OCTETS : MESSAGE_OCTETS;
}

uint16_t kest_sms_read_text(const char *log_name, const char *text, bool is_hex,
                            std::span<uint8_t> octets) {
  if (!is_hex) {
    const size_t len = strnlen(text, octets.size());
    memcpy(octets.data(), text, len);
    return static_cast<uint16_t>(len);
  }
  const uint16_t len = kest_hex_to_octets(text, octets).value_or(0);
  kest_log(log_level & KEST_LOG_DEBUG, "%s buf_len: %d\n", log_name, len);
  for (uint16_t i = 0; i < len; ++i) {
    kest_log(log_level & KEST_LOG_DEBUG, "%s buf[%d]: 0x%x\n", log_name, i, octets[i]);
  }
  return len;
}

kest_gw_alphabet kest_sms_select_alphabet(std::span<const uint8_t> text) {
  for (const uint8_t byte : text) {
    if (byte >= 0xC0 || byte == '`') { // a longer sequence, or the one ASCII letter without a code
      return KEST_GW_ALPHABET_UCS2;
    }
    if (byte >= 0x80) {
      return KEST_GW_ALPHABET_8BIT;
    }
  }
  return KEST_GW_ALPHABET_7BIT;
}

int32_t kest_sms_convert_utf8_to_userdata(kest_gw_alphabet alphabet, std::span<const uint8_t> text,
                                          bool cut, uint16_t *consumed, coded_text out) {
  if (text.data() == nullptr) {
    return 0;
  }
  std::fill(out.begin(), out.end(), uint8_t{0});
  coder c{text, kest_sms_user_data_limit(alphabet, cut), out};
  if (alphabet == KEST_GW_ALPHABET_UCS2) {
    code_ucs2(c);
  } else if (alphabet == KEST_GW_ALPHABET_8BIT) {
    code_8bit(c);
  } else {
    code_7bit(c);
  }
  *consumed = static_cast<uint16_t>(cut ? c.read : text.size());
  return static_cast<int32_t>(c.used);
}

void kest_sms_take_text(const char *log_name, const char *text, bool is_hex, message_text &out) {
  out.len = kest_sms_read_text(log_name, text, is_hex, out.octets);
  out.alphabet = kest_sms_select_alphabet({out.octets, out.len});
  kest_log(log_level & KEST_LOG_DEBUG, "%s alphabet: %d\n", log_name,
           static_cast<int>(out.alphabet));
}

std::optional<uint16_t> kest_sms_code_text(const char *log_name, kest_gw_alphabet alphabet,
                                           std::span<const uint8_t> text, bool cut,
                                           coded_text out) {
  uint16_t consumed = 0;
  const int32_t count = kest_sms_convert_utf8_to_userdata(alphabet, text, cut, &consumed, out);
  if (consumed != text.size()) {
    kest_log(log_level & KEST_LOG_ERROR, "%s cut segment fail segment_len=%d buf_len=%d !!!\n",
             log_name, consumed, static_cast<int>(text.size()));
    return std::nullopt;
  }
  if (count > kest_sms_user_data_limit(alphabet, false)) {
    kest_log(log_level & KEST_LOG_ERROR, "%s encode gw userdata fail !!!\n", log_name);
    return std::nullopt;
  }
  return static_cast<uint16_t>(count);
}
