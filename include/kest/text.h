/// @file
/// kest/text.h: hexadecimal text, Unicode conversion and USSD strings.

/// @defgroup kest_text Hexadecimal text, Unicode conversion and USSD strings
///
/// Lengths and capacities count octets. Values too large for their parameter type are truncated.
/// The caller owns the buffers. They must not overlap, except in kest_convert_ucs2_to_utf8 and the
/// two conversions of USSD strings. These then copy `src`, and return 0 with nothing written if
/// memory runs out. A pointer may be null only where it is said. Any thread may call these
/// functions.
/// @{
#ifndef KEST_TEXT_H
#define KEST_TEXT_H

#include "kest/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// kest_hexchar_to_binary returns the value 0 to 15 of a hexadecimal digit in either case, and 0
/// for any other character.
KEST_API uint8_t kest_hexchar_to_binary(char c);

/// kest_hexstring_to_binary turns the hexadecimal text `str`, high nibble first, into octets and
/// returns their number. `buf` holds `buf_size` octets, all of which are written: those behind the
/// text become 0. Characters that are no digits count as 0. An odd last digit is the high nibble of
/// an octet of its own. If `buf` is too small it stays untouched, the debug log says so, and the
/// result is 0.
KEST_API uint16_t kest_hexstring_to_binary(const char *str, uint8_t *buf, uint16_t buf_size);

/// kest_binary_to_hexchar returns the digit of a nibble, in lower case. With KEST_LOG_ERROR in
/// `log_level` each call writes a line to the debug log, whatever the value. Values above 15 run on
/// past the letters: 16 gives 'g'.
KEST_API int8_t kest_binary_to_hexchar(uint8_t value);

/// kest_binary_to_hexchar_uppercase is kest_binary_to_hexchar with capital letters.
KEST_API int8_t kest_binary_to_hexchar_uppercase(uint8_t value);

/// kest_binary_to_hexstring writes `data_len` octets as hexadecimal text, in lower case, and its
/// terminator. `str` holds `str_size` bytes, all of which are written: those behind the text become
/// 0. If `str_size` is below 2 * `data_len` + 1, `str` stays untouched and the debug log says so.
/// With KEST_LOG_ERROR in `log_level` each digit is a line there, as of kest_binary_to_hexchar.
KEST_API void kest_binary_to_hexstring(const uint8_t *data, uint16_t data_len, char *str,
                                       uint16_t str_size);

/// kest_binary_to_hexstring_uppercase is kest_binary_to_hexstring with capital letters.
KEST_API void kest_binary_to_hexstring_uppercase(const uint8_t *data, uint16_t data_len, char *str,
                                                 uint16_t str_size);

/// kest_convert_utf8_to_ucs2 converts well-formed UTF-8 to UTF-16 in the machine's byte order: a
/// character above U+FFFF becomes a surrogate pair. `dst` holds `limit` octets (an odd one stays
/// unused). It returns how many octets it wrote, and writes no terminator. The first bad sequence,
/// or the first character without room, ends the conversion; what came before it stands.
KEST_API uint16_t kest_convert_utf8_to_ucs2(const char *str, uint16_t limit, uint16_t *dst);

/// kest_convert_ucs2_to_utf8 converts `len` octets of UTF-16 in the machine's byte order (an odd
/// last one is not read). `dst` needs `len` * 3 / 2 + 1 bytes. It returns the bytes written without
/// the terminator, cut to 16 bits. A surrogate without its partner becomes a form of three bytes,
/// but a high one at the very end ends the conversion.
KEST_API uint16_t kest_convert_ucs2_to_utf8(const uint16_t *src, uint16_t len, char *dst);

/// kest_convert_ascii_to_utf8 takes each of `len` bytes as the code point of its value; 0x0D is
/// dropped. It returns the bytes written without the terminator. A `dst_size` below 2 * `len` gives
/// 0 with nothing written, and so does one that leaves no room for the terminator.
KEST_API uint16_t kest_convert_ascii_to_utf8(const uint8_t *src, uint8_t len, char *dst,
                                             uint16_t dst_size);

/// strlen_utf8 returns the number of characters of a UTF-8 text: of bytes that do not have 10 as
/// their top two bits.
KEST_API int32_t strlen_utf8(const char *s);

/// kest_convert_ussd_string_to_utf8 converts the `len` octets of a USSD string by its data coding
/// scheme (3GPP TS 23.038, clause 5) and returns the bytes in `dst` without the terminator. Septets
/// are converted as by kest_decode_packed_7bit_gsm_string, without what its NOTE tells; 8 bit data
/// is copied as it is; UCS-2 is converted as by kest_convert_ucs2_to_utf8, without an odd last
/// octet. Texts that are no septets can hold NUL bytes. Bits 3 and 2 tell the alphabet in the
/// groups 0x4 to 0x7, 0x9 and 0xC to 0xE, bit 2 in 0xF; of the other schemes that are taken 0x11 is
/// UCS-2, and all else are septets.
///
/// The result is 0, and `dst` stays untouched, if a pointer is null, if there are no septets, or
/// for the schemes 0x12 to 0x1F, 0x80 to 0x8F, 0xA0 to 0xBF, and those of the groups 0x4 to 0x7,
/// 0x9 and 0xC to 0xE that name the reserved alphabet (bits 3 and 2 are 11). It is 0 for an empty
/// text, too: a host that reads `dst` in any case sets its first byte to NUL before.
///
/// `dst` needs 2 bytes for each septet, of which seven octets hold eight, or `len` bytes of 8 bit
/// data, or `len` * 3 / 2 of UCS-2, and a terminator: 583 bytes hold whatever comes.
///
/// NOTE: a language indication stays ahead of the text: with scheme 0x10 as its two letters, with
/// 0x11 as a character whose code has the first octet in its low 8 bits.
KEST_API uint32_t kest_convert_ussd_string_to_utf8(uint8_t dcs, uint8_t len, const uint8_t *src,
                                                   char *dst);

/// kest_decode_packed_7bit_gsm_string converts all septets of `len` packed octets of the GSM 7 bit
/// alphabet and returns the bytes in `dst` without the terminator; 0, with nothing written, if a
/// pointer is null or `len` is 0. `dst` needs 2 bytes for each septet, of which seven octets hold
/// eight, and a terminator. An escape becomes a blank, and the code behind it an ordinary
/// character; carriage returns are left out. The commercial at sign of a last septet of 0 is taken
/// away, for nothing tells it from the fill of the last octet; one that a carriage return pads
/// counts as last.
///
/// NOTE: if `len` is a multiple of 7 and the last septet is 0, a second commercial at sign ahead of
/// it is taken away too. The result still counts that one.
KEST_API uint32_t kest_decode_packed_7bit_gsm_string(char *dst, const uint8_t *src, uint16_t len);

#ifdef __cplusplus
}
#endif

/// @}

#endif
