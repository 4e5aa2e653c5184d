// text/septets.h: packed septets of the GSM 7 bit alphabet (3GPP TS 23.038, clause 6.1.2).
// A septet is one 7-bit code in the low bits of an octet. Packed septets follow each other without
// a gap, the first in bits 0 to 6 of octet 0, so that eight fill seven octets. The characters of
// the codes are in gsm_alphabet.h. Nothing here allocates or logs.
#pragma once
#include <cstddef>
#include <cstdint>

// kest_seventh returns `n` / 7, of which it has no more than 30 bits. (A device has no instruction
// for a division, and a call for it takes more room than all septets.)
constexpr uint32_t kest_seventh(size_t n) {
  return static_cast<uint32_t>(n * uint64_t{0x24924925} >> 32);
}

// kest_pack_septets packs `count` septets, each below 0x80, into `dst`, which holds `limit` octets.
// It returns how many octets of `dst` hold data: (`count` * 7 + 7) / 8, or `limit` if that is less.
uint16_t kest_pack_septets(const uint8_t *src, uint16_t count, uint16_t limit, uint8_t *dst);

// kest_unpack_septets unpacks `count` septets into `dst`, one to each of its `limit` octets.
// `shift` is 8 less the fill bits (2 to 7), or 0 if there are none. It reads
// (`count` * 7 + fill bits + 7) / 8 octets of `src` and returns the low 8 bits of its index there.
// NOTE: an octet that completes two septets yields both: `dst` needs room for `count` + 1, unless
// `limit` holds the last one back.
uint8_t kest_unpack_septets(const uint8_t *src, uint16_t count, uint16_t limit, uint16_t shift,
                            uint8_t *dst);

// kest_unpack_ussd_septets unpacks all septets of `src_len` octets into `dst`, which has room for
// `src_len` * 8 / 7, and returns their number. A carriage return that fills the last seven bits of
// the last octet is padding and left out (clause 6.1.2.3.1). NOTE: `dst` stands first here.
uint32_t kest_unpack_ussd_septets(uint8_t *dst, const uint8_t *src, uint16_t src_len);
