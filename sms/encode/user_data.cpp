#include "sms/encode/user_data.h"

#include <algorithm>
#include <cstring>

#include "log/debug_log.h"
#include "octets/word.h"
#include "text/gsm_alphabet.h"
#include "text/hex.h"
#include "text/unicode.h"

namespace {

// What came of coding a text.
struct coded {
  size_t read; // bytes of the text; past its end if a sequence is cut off there
  size_t used; // places of `out`
};

// Each of these reads characters as long as their places are below `limit`. A character whose
// places do not fit is not read.

coded code_ucs2(std::span<const uint8_t> text, size_t limit, coded_text out) {
  coded at = {};
  while (at.read < text.size() && at.used + 1 < limit) {
    const utf8_character next = kest_utf8_char_to_ucs2(text.subspan(at.read));
    at.read += next.length;
    out[at.used++] = static_cast<uint8_t>(next.value >> 8);
    out[at.used++] = static_cast<uint8_t>(next.value);
  }
  return at;
}

coded code_8bit(std::span<const uint8_t> text, size_t limit, coded_text out) {
  coded at = {};
  while (at.read < text.size() && at.used < limit) {
    const utf8_character next = kest_utf8_char_to_ucs2(text.subspan(at.read));
    at.read += next.length;
    out[at.used++] = static_cast<uint8_t>(next.value);
  }
  return at;
}

// code_singles codes up to `most` characters of one septet each, and returns how many these are.
size_t code_singles(const uint8_t *text, size_t most, uint8_t *out) {
  size_t count = 0;
  for (; count < most; ++count) {
    const uint8_t coding = kest_gsm_codings[text[count] & 0x7F];
    if (kest_gsm_septets(coding) != 1) {
      break;
    }
    out[count] = coding;
  }
  return count;
}

// code_7bit codes ASCII: other text takes another alphabet. It leaves out characters without a
// code. They need no place, and so are read also where none is left.
coded code_7bit(std::span<const uint8_t> text, size_t limit, coded_text out) {
  coded at = {};
  for (;;) {
    const size_t singles = code_singles(
        text.data() + at.read, std::min(text.size() - at.read, limit - at.used), &out[at.used]);
    at.read += singles;
    at.used += singles;
    if (at.read == text.size()) {
      return at;
    }
    const uint8_t coding = kest_gsm_codings[text[at.read] & 0x7F];
    if (at.used + kest_gsm_septets(coding) > limit) {
      return at;
    }
    if (coding != GSM_NO_CODE) {
      out[at.used++] = GSM_ESCAPE;
      out[at.used++] = coding & 0x7F;
    }
    ++at.read;
  }
}

constexpr uint8_t BACKTICK = '`'; // the one printable ASCII character without a code

// undecided_words returns the octets of the whole words before the first that holds a byte that
// decides the alphabet.
size_t undecided_words(std::span<const uint8_t> text) {
  size_t size = 0;
  for (; text.size() - size >= sizeof(word); size += sizeof(word)) {
    if (!is_ascii_without(load<word>(text.data() + size), BACKTICK)) {
      break;
    }
  }
  return size;
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
  kest_log_debug("%s buf_len: %d\n", log_name, len);
  for (uint16_t i = 0; i < len; ++i) {
    if (logs(KEST_LOG_DEBUG)) {
      kest_log_debug("%s buf[%d]: 0x%x\n", log_name, i, octets[i]);
    }
  }
  return len;
}

kest_gw_alphabet kest_sms_select_alphabet(std::span<const uint8_t> text) {
  for (const uint8_t byte : text.subspan(undecided_words(text))) {
    if (byte >= 0xC0 || byte == BACKTICK) { // a longer sequence
      return KEST_GW_ALPHABET_UCS2;
    }
    if (byte >= 0x80) {
      return KEST_GW_ALPHABET_8BIT;
    }
  }
  return KEST_GW_ALPHABET_7BIT;
}

void kest_sms_take_text(const char *log_name, const char *text, bool is_hex, message_text &out) {
  out.len = kest_sms_read_text(log_name, text, is_hex, out.octets);
  out.alphabet = kest_sms_select_alphabet({out.octets, out.len});
  kest_log_debug("%s alphabet: %d\n", log_name, static_cast<int>(out.alphabet));
}

std::optional<uint16_t> kest_sms_code_text(const char *log_name, const message_text &text, bool cut,
                                           coded_text out) {
  const std::span<const uint8_t> octets(text.octets, text.len);
  const size_t limit = kest_sms_user_data_limit(text.alphabet, cut);
  const coded result = text.alphabet == KEST_GW_ALPHABET_UCS2   ? code_ucs2(octets, limit, out)
                       : text.alphabet == KEST_GW_ALPHABET_8BIT ? code_8bit(octets, limit, out)
                                                                : code_7bit(octets, limit, out);
  if (cut && result.read != octets.size()) {
    kest_log_error("%s cut segment fail segment_len=%d buf_len=%d !!!\n", log_name,
                   static_cast<int>(result.read), text.len);
    return std::nullopt;
  }
  return static_cast<uint16_t>(result.used);
}
