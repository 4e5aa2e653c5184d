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
/// returns their number. `buf` holds `buf_size` octets, all of which are written: those after the
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
/// terminator. `str` holds `str_size` bytes, all of which are written: those after the text become
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
/// scheme (3GPP TS 23.038, clause 5). Returns the bytes in `dst` without the terminator. Texts that
/// are no septets can hold NUL bytes.
///
/// | scheme | the octets are |
/// |---|---|
/// | groups 0x4 to 0x7, 0x9, 0xC to 0xE | by bits 3 and 2: septets, 8 bit, UCS-2, reserved |
/// | group 0xF | by bit 2: septets, 8 bit |
/// | 0x11 | UCS-2 after a language indication |
/// | 0x12 to 0x1F, groups 0x8, 0xA, 0xB | reserved |
/// | else | septets |
///
/// Septets are converted as by kest_decode_packed_7bit_gsm_string, but for its NOTE. 8 bit data is
/// copied. UCS-2 is converted as by kest_convert_ucs2_to_utf8, without an odd last octet.
///
/// Returns 0, with `dst` unchanged, if a pointer is null, if there are no septets and for a
/// reserved scheme. An empty text gives 0 too: if you read `dst` in any case, set its first byte to
/// NUL.
///
/// `dst` needs a terminator and 2 bytes for each septet, `len` bytes of 8 bit data, or `len` * 3 /
/// 2 of UCS-2: 583 bytes always suffice.
///
/// NOTE: a language indication stays before the text: with scheme 0x10 as its two letters, with
/// 0x11 as a character whose code has the first octet in its low 8 bits.
KEST_API uint32_t kest_convert_ussd_string_to_utf8(uint8_t dcs, uint8_t len, const uint8_t *src,
                                                   char *dst);

/// kest_decode_packed_7bit_gsm_string converts all septets of `len` packed octets of the GSM 7 bit
/// alphabet. Returns the bytes in `dst` without the terminator, or 0, with nothing written, if a
/// pointer is null or `len` is 0. `dst` needs a terminator and 2 bytes for each septet, of which
/// seven octets hold eight.
/// - An escape becomes a blank, and the code after it an ordinary character.
/// - Carriage returns are left out.
/// - A last septet of 0 gives no commercial at sign: it may be the fill of the last octet. The
/// septet
///   before a padding carriage return counts as last.
///
/// NOTE: if `len` is a multiple of 7 and the last septet is 0, a second commercial at sign before
/// it is taken away too. The result still counts that one.
KEST_API uint32_t kest_decode_packed_7bit_gsm_string(char *dst, const uint8_t *src, uint16_t len);

#ifdef __cplusplus
}
#endif

/// @}

#endif
