// text/unicode.h: UTF-8 and 16-bit units (Unicode Standard, chapter 3.9), below kest/text.h.
// The run converters are strict and know surrogate pairs; the one-character decoder for the
// message encoders takes whatever comes. 16-bit units are in the machine's byte order. Nothing here
// allocates or logs.
#pragma once
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

// kest_utf8_length returns the length of the form that begins with `first`. The number of leading 1
// bits is the length; 0xFE and 0xFF count as 6, and a stray byte (0x80 to 0xBF) as 1.
inline unsigned kest_utf8_length(uint8_t first) {
  return first < 0xC0 ? 1 : static_cast<unsigned>(std::min(std::countl_one(first), 6));
}

// A character of UTF-8: the low 16 bits of its value, and the length of its form.
struct utf8_character {
  uint16_t value;
  uint8_t length;
};

// kest_utf8_char_to_ucs2 decodes the sequence at the start of `text`, which is not empty, by its
// first byte alone. Following bytes are not tested. A stray one (0x80 to 0xBF) gives its own value.
// Bytes after the end of `text` count as 0, but count: the length, 1 to 6, can exceed the size of
// `text`.
//
// kest_utf8_long_char_to_ucs2 is the same for a first byte of 0xC0 or more. Whole forms of two and
// three bytes need no call of it.
utf8_character kest_utf8_long_char_to_ucs2(const uint8_t *text, size_t size);
[[gnu::always_inline]] inline utf8_character kest_utf8_char_to_ucs2(std::span<const uint8_t> text) {
  const unsigned first = text[0];
  if (first >> 4 == 0xE) {
    if (text.size() >= 3) {
      return {static_cast<uint16_t>(first << 12 | (text[1] & 0x3Fu) << 6 | (text[2] & 0x3Fu)), 3};
    }
  } else if (first < 0xC0) {
    return {static_cast<uint16_t>(first), 1};
  } else if (first < 0xE0 && text.size() >= 2) {
    return {static_cast<uint16_t>((first & 0x1F) << 6 | (text[1] & 0x3Fu)), 2};
  }
  return kest_utf8_long_char_to_ucs2(text.data(), text.size());
}

// kest_utf8_to_utf16 converts from `source` to `target` until one of them is at its end or a
// sequence is illegal or cut off. Both positions then stand after the last whole character.
void kest_utf8_to_utf16(const uint8_t *&source, const uint8_t *source_end, uint16_t *&target,
                        uint16_t *target_end);

// kest_utf16_to_utf8 converts from `source` to `target` until one of them is at its end, or a high
// surrogate is the last unit. Other lone surrogates become three bytes. Both positions then stand
// after the last whole character.
void kest_utf16_to_utf8(const uint16_t *&source, const uint16_t *source_end, uint8_t *&target,
                        uint8_t *target_end);

constexpr uint32_t FIRST_SUPPLEMENTARY = 0x10000; // the first code point that takes a pair

// put_utf8 writes the form of `code_point`, which is a value of up to 21 bits, and returns its
// length, 1 to 4; 0, with nothing written, if that is more than `room`.
inline size_t put_utf8(uint32_t code_point, uint8_t *dst, size_t room) {
  const auto trailing = [code_point](unsigned shift) {
    return static_cast<uint8_t>(0x80 | (code_point >> shift & 0x3F));
  };
  if (code_point < 0x80) {
    if (room < 1) {
      return 0;
    }
    dst[0] = static_cast<uint8_t>(code_point);
    return 1;
  }
  if (code_point < 0x800) {
    if (room < 2) {
      return 0;
    }
    dst[0] = static_cast<uint8_t>(0xC0 | code_point >> 6);
    dst[1] = trailing(0);
    return 2;
  }
  if (code_point < FIRST_SUPPLEMENTARY) {
    if (room < 3) {
      return 0;
    }
    dst[0] = static_cast<uint8_t>(0xE0 | code_point >> 12);
    dst[1] = trailing(6);
    dst[2] = trailing(0);
    return 3;
  }
  if (room < 4) {
    return 0;
  }
  dst[0] = static_cast<uint8_t>(0xF0 | code_point >> 18);
  dst[1] = trailing(12);
  dst[2] = trailing(6);
  dst[3] = trailing(0);
  return 4;
}
