// text/ussd.h: the 7 bit way of USSD strings, below kest/text.h. It knows no extension characters:
// an escape is a blank, and the code after it an ordinary one. Nothing here allocates or logs.
#pragma once
#include <cstdint>

// kest_gsm_to_utf8 converts `count` GSM codes, one to an octet, each below 0x80. It returns the
// bytes in `dst` without the terminator; 0, with nothing written, if a pointer is null or `count`
// is 0. `dst` needs 2 * `count` + 1 bytes. Carriage returns are left out. The commercial at sign of
// a last code 0 is taken away: it may be the fill of packed text.
uint32_t kest_gsm_to_utf8(const uint8_t *src, uint32_t count, char *dst);

// kest_decode_septets_to_utf8 does the same with all septets of `len` packed octets, eight to seven
// of these: `dst` needs 2 * (`len` * 8 / 7) + 1 bytes. A carriage return that pads the last octet
// is no code.
uint32_t kest_decode_septets_to_utf8(const uint8_t *src, uint16_t len, char *dst);
