// sms/decode/user_data_text.h: a message's user data as UTF-8.
#pragma once
#include <cstdint>
#include <span>

#include "kest/types.h"

// kest_convert_userdata_to_utf8 converts `src` and returns the octets that it wrote to `dst`: less
// than `dst` holds. It ends at the first character without room, and writes no terminator. An octet
// of `src` is a GSM code or an 8 bit character. A 16-bit unit has its high octet first; a missing
// last octet counts as 0.
//
// One escape anywhere in 7 bit text decides how nine codes of the whole text read: as in the
// default alphabet, otherwise as ASCII. A code after an escape that has no extension character
// reads as in the default alphabet, two escapes as a blank. Each 16-bit unit is converted by
// itself: a surrogate pair comes out as two forms of three octets.
uint32_t kest_convert_userdata_to_utf8(kest_gw_alphabet alphabet, std::span<const uint8_t> src,
                                       std::span<uint8_t> dst);
