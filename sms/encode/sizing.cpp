// How much of a text fits one message or one segment, counted as the encoders will code it.
#include "kest/sms_encode.h"

#include <algorithm>
#include <cstring>

#include "log/debug_log.h"
#include "sms/encode/user_data.h"
#include "text/gsm_alphabet.h"
#include "text/unicode.h"

namespace {

constexpr size_t SIZED_OCTETS = KEST_SMS_SIZED_TEXT / 2;

struct sized_text {
  uint8_t octets[SIZED_OCTETS];
  uint16_t len;
  kest_gw_alphabet alphabet;
  size_t text_size; // characters of the host's text
};

[[nodiscard]] bool take_text(const char *log_name, const char *text, bool is_hex, sized_text &out) {
  if (text == nullptr) {
    kest_log_error("%s some ptr NULL\n", log_name);
    return false;
  }
  out.text_size = strlen(text);
  if (out.text_size > KEST_SMS_SIZED_TEXT) {
    kest_log_error("%s buf overflow strlen: %d\n", log_name, static_cast<int>(out.text_size));
    return false;
  }
  out.len = kest_sms_read_text(log_name, text, is_hex, out.octets);
  out.alphabet = kest_sms_select_alphabet({out.octets, out.len});
  return true;
}

// A position in a text: octets taken, and the septets or octets that they are coded in. A sequence
// that is cut off at the end of the text takes `octets` past it.
struct measure {
  uint32_t octets = 0;
  uint32_t units = 0;
};

// next_character returns the position after the character at `at`. The first byte says all: in a 7
// bit text it is the character. (Inlined, for it would be called for each character.)
[[gnu::always_inline]] inline measure next_character(const sized_text &text, measure at) {
  const uint8_t first = text.octets[at.octets];
  if (text.alphabet == KEST_GW_ALPHABET_7BIT) {
    return {at.octets + 1, at.units + kest_gsm_septets(kest_gsm_codings[first & 0x7F])};
  }
  const uint32_t units = text.alphabet == KEST_GW_ALPHABET_UCS2 ? 2 : 1;
  return {at.octets + kest_utf8_length(first), at.units + units};
}

} // namespace

int32_t kest_sms_is_long_message(const char *text, uint32_t is_hex) {
  sized_text sized;
  if (!take_text("kest_sms_is_long_message", text, is_hex != 0, sized)) {
    return -1;
  }
  measure at;
  while (at.octets < sized.len) {
    at = next_character(sized, at);
  }
  return at.units > kest_sms_user_data_limit(sized.alphabet, false) ? 1 : 0;
}

int32_t kest_sms_get_long_message_segment(const char *text, uint32_t is_hex,
                                          uint16_t *segment_len) {
  constexpr const char *NAME = "kest_sms_get_long_message_segment";
  sized_text sized;
  if (!take_text(NAME, segment_len != nullptr ? text : nullptr, is_hex != 0, sized)) {
    return -1;
  }
  kest_log_debug("%s dcs: 0x%x\n", NAME, static_cast<unsigned>(sized.alphabet));
  const uint32_t limit = kest_sms_user_data_limit(sized.alphabet, true);
  measure at;
  while (at.octets < sized.len && at.units < limit) {
    const measure next = next_character(sized, at);
    if (next.units > limit) {
      break;
    }
    at = next;
    if (sized.alphabet == KEST_GW_ALPHABET_UCS2 && logs(KEST_LOG_DEBUG)) {
      kest_log_debug("%s KEST_GW_ALPHABET_UCS2: i=%d j=%d\n", NAME, static_cast<int>(at.octets),
                     static_cast<int>(at.units));
    }
  }
  // A host goes on after the segment: at the terminator, where the text ends within a character.
  const size_t taken = is_hex != 0 ? 2 * at.octets : at.octets;
  *segment_len = static_cast<uint16_t>(std::min(taken, sized.text_size));
  return static_cast<int32_t>(at.units);
}
