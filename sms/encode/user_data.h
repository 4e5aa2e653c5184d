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

// The text of one message, as the encoders take it in.
struct message_text {
  uint8_t octets[255];
  uint16_t len;
  kest_gw_alphabet alphabet;
};

// kest_sms_take_text reads a host's text and chooses its alphabet. Trace lines carry `log_name`.
void kest_sms_take_text(const char *log_name, const char *text, bool is_hex, message_text &out);

// Room for a coded text: one septet or octet to an octet.
using coded_text = std::span<uint8_t, 255>;

// kest_sms_code_text codes `text` up to the limit of a message, or with `cut` of a segment, and
// returns the septets or octets in `out`. Characters of the 7 bit alphabet without a code are left
// out. Without `cut` there is always a result. With it, nullopt and a line that carries `log_name`
// say that the segment does not take the whole text, or that a sequence is cut off at its end.
std::optional<uint16_t> kest_sms_code_text(const char *log_name, const message_text &text, bool cut,
                                           coded_text out);
