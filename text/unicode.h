// text/unicode.h: UTF-8 and 16-bit units (Unicode Standard, chapter 3.9), below kest/text.h.
// The run converters are strict and know surrogate pairs; the one-character decoder for the
// message encoders takes whatever comes. 16-bit units are in the machine's byte order. Nothing here
// allocates or logs.
#pragma once
#include <cstdint>
#include <span>

// kest_utf8_char_to_ucs2 decodes the sequence at the start of `text` by its first byte alone,
// stores the low 16 bits of its value and returns its length, 1 to 6. Bytes behind the end of
// `text` count as 0, but count: the result can exceed the size of `text`. Following bytes are not
// tested, and a stray one (0x80 to 0xBF) gives its own value. Without any text, or with a null
// `value`, the result is 0.
uint8_t kest_utf8_char_to_ucs2(std::span<const uint8_t> text, uint16_t *value);

// kest_utf8_to_utf16 converts from `source` to `target` until one of them is at its end or a
// sequence is illegal or cut off. Both positions then stand behind the last whole character.
void kest_utf8_to_utf16(const uint8_t *&source, const uint8_t *source_end, uint16_t *&target,
                        uint16_t *target_end);

// kest_utf16_to_utf8 converts from `source` to `target` until one of them is at its end, or a high
// surrogate is the last unit. Other lone surrogates become three bytes. Both positions then stand
// behind the last whole character.
void kest_utf16_to_utf8(const uint16_t *&source, const uint16_t *source_end, uint8_t *&target,
                        uint8_t *target_end);

// kest_utf8_is_legal returns 1 if the `length` bytes of `seq` are one well-formed sequence (Unicode
// Standard, table 3-7), and 0 otherwise.
uint8_t kest_utf8_is_legal(const uint8_t *seq, int32_t length);
