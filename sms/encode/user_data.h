// sms/encode/user_data.h: a text as user data: read, classified by its bytes, and coded in the
// alphabet that it needs (3GPP TS 23.038, clause 4).
#pragma once
#include <cstdint>
#include <optional>
#include <span>

#include "kest/types.h"
#include "sms/tpdu.h"

// What a segment holds: a message less the seven octets of its concatenation header.
constexpr uint16_t SEGMENT_SEPTETS = 152;
constexpr uint16_t SEGMENT_OCTETS = 133;

// kest_sms_user_data_limit returns the septets or octets that a message holds, or with `cut` a
// segment.
uint16_t kest_sms_user_data_limit(kest_gw_alphabet alphabet, bool cut);

// kest_sms_read_text copies a host's text, or the octets of its hexadecimal text, to the front of
// `octets` and returns how many these are. Plain text is cut to the size of `octets`, hexadecimal
// text of more counts as empty. Trace lines carry `log_name`.
uint16_t kest_sms_read_text(const char *log_name, const char *text, bool is_hex,
                            std::span<uint8_t> octets);

// kest_sms_select_alphabet returns the alphabet that a UTF-8 text takes. The first byte of 0x80
// or more, or backtick, decides; control characters do not.
kest_gw_alphabet kest_sms_select_alphabet(std::span<const uint8_t> text);

// What kest_sms_convert_utf8_to_userdata fills: one septet or octet to an octet.
using coded_text = std::span<uint8_t, 255>;

// kest_sms_convert_utf8_to_userdata codes `text` up to the limit of a message, or with `cut` of a
// segment, and returns the septets or octets in `out`. `*consumed`
// becomes the length of `text`, or with `cut` the bytes that were read: more than `text` has, if a
// sequence is cut off at its end. Characters of the 7
// bit alphabet without a code are left out.
int32_t kest_sms_convert_utf8_to_userdata(kest_gw_alphabet alphabet, std::span<const uint8_t> text,
                                          bool cut, uint16_t *consumed, coded_text out);

// The text of one message, as the encoders take it in.
struct message_text {
  uint8_t octets[255];
  uint16_t len;
  kest_gw_alphabet alphabet;
};

// kest_sms_take_text reads a host's text and chooses its alphabet. Trace lines carry `log_name`.
void kest_sms_take_text(const char *log_name, const char *text, bool is_hex, message_text &out);

// kest_sms_code_text codes `text` as kest_sms_convert_utf8_to_userdata does and returns the septets
// or octets in `out`. With `cut` a text that a segment does not take as a whole, also for a
// sequence that is cut off at its end, gives nullopt and a line that carries `log_name`. Without
// `cut` there is always a result, for the coder keeps to the limits of a message.
std::optional<uint16_t> kest_sms_code_text(const char *log_name, kest_gw_alphabet alphabet,
                                           std::span<const uint8_t> text, bool cut, coded_text out);
