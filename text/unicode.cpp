#include "text/unicode.h"

#include <array>
#include <cstring>

#include "kest/text.h"

namespace {

constexpr uint16_t HIGH_SURROGATE = 0xD800;
constexpr uint16_t LOW_SURROGATE = 0xDC00;
constexpr uint32_t FIRST_SUPPLEMENTARY = 0x10000; // the first code point that takes a pair

// The number of bytes behind a first byte. The forms of five and six bytes are never legal, but
// have their length.
constexpr std::array<int8_t, 256> trailing_bytes() {
  std::array<int8_t, 256> table = {};
  for (size_t first = 0xC0; first < table.size(); ++first) {
    table[first] = first < 0xE0 ? 1 : first < 0xF0 ? 2 : first < 0xF8 ? 3 : first < 0xFC ? 4 : 5;
  }
  return table;
}
constexpr std::array<int8_t, 256> kest_utf8_trailing_bytes = trailing_bytes();

// What the marker bits of a sequence add to the sum of its bytes, by the number of trailing bytes.
constexpr uint32_t kest_utf8_offsets[] = {0x00000000, 0x00003080, 0x000E2080,
                                          0x03C82080, 0xFA082080, 0x82082080};

// The marker bits of a first byte, by the sequence's length.
constexpr uint8_t kest_utf8_first_byte_mark[] = {0x00, 0x00, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC};

bool is_high_surrogate(uint32_t value) {
  return (value & 0xFC00) == HIGH_SURROGATE;
}

bool is_low_surrogate(uint32_t value) {
  return (value & 0xFC00) == LOW_SURROGATE;
}

// second_byte_fits narrows the range of a second byte: no overlong forms, no surrogates, nothing
// above U+10FFFF.
bool second_byte_fits(uint8_t first, uint8_t second) {
  switch (first) {
  case 0xE0:
    return second >= 0xA0 && second <= 0xBF;
  case 0xED:
    return second >= 0x80 && second <= 0x9F;
  case 0xF0:
    return second >= 0x90 && second <= 0xBF;
  case 0xF4:
    return second >= 0x80 && second <= 0x8F;
  default:
    return second >= 0x80 && second <= 0xBF;
  }
}

// decode_legal returns the code point of a legal sequence with `trailing` bytes behind the first.
uint32_t decode_legal(const uint8_t *seq, unsigned trailing) {
  uint32_t sum = 0;
  for (unsigned i = 0; i <= trailing; ++i) {
    sum = (sum << 6) + seq[i];
  }
  return sum - kest_utf8_offsets[trailing];
}

unsigned utf8_length(uint32_t code_point) {
  if (code_point < 0x80) {
    return 1;
  }
  if (code_point < 0x800) {
    return 2;
  }
  return code_point < FIRST_SUPPLEMENTARY ? 3 : 4;
}

void put_utf8(uint8_t *dst, uint32_t code_point, unsigned length) {
  for (unsigned i = length - 1; i > 0; --i) {
    dst[i] = static_cast<uint8_t>(0x80 | (code_point & 0x3F));
    code_point >>= 6;
  }
  dst[0] = static_cast<uint8_t>(code_point | kest_utf8_first_byte_mark[length]);
}

} // namespace

uint8_t kest_utf8_char_to_ucs2(std::span<const uint8_t> text, uint16_t *value) {
  if (text.empty() || value == nullptr) {
    return 0;
  }
  const uint8_t first = text[0];
  const unsigned trailing = static_cast<unsigned>(kest_utf8_trailing_bytes[first]);
  // What a form of two or three bytes keeps of its first byte. The value of a longer one comes from
  // its last three bytes, 18 bits, of which 16 survive.
  uint32_t sum = trailing == 0 ? first : trailing == 1 ? first & 0x1Fu : first & 0xFu;
  for (unsigned i = 1; i <= trailing; ++i) {
    sum = sum << 6 | (i < text.size() ? text[i] & 0x3Fu : 0u);
  }
  *value = static_cast<uint16_t>(sum);
  return static_cast<uint8_t>(trailing + 1);
}

uint8_t kest_utf8_is_legal(const uint8_t *seq, int32_t length) {
  if (length < 1 || length > 4 || kest_utf8_trailing_bytes[seq[0]] != length - 1) {
    return 0;
  }
  for (int32_t i = length - 1; i > 1; --i) {
    if ((seq[i] & 0xC0) != 0x80) {
      return 0;
    }
  }
  if (length > 1 && !second_byte_fits(seq[0], seq[1])) {
    return 0;
  }
  return seq[0] < 0x80 || (seq[0] >= 0xC2 && seq[0] <= 0xF4) ? 1 : 0;
}

void kest_utf8_to_utf16(const uint8_t *&source, const uint8_t *source_end, uint16_t *&target,
                        uint16_t *target_end) {
  while (source < source_end) {
    const int trailing = kest_utf8_trailing_bytes[*source];
    if (trailing >= source_end - source || kest_utf8_is_legal(source, trailing + 1) == 0) {
      return;
    }
    const uint32_t code_point = decode_legal(source, static_cast<unsigned>(trailing));
    if (code_point < FIRST_SUPPLEMENTARY) {
      if (target >= target_end) {
        return;
      }
      *target++ = static_cast<uint16_t>(code_point);
    } else {
      if (target_end - target < 2) {
        return;
      }
      const uint32_t offset = code_point - FIRST_SUPPLEMENTARY;
      *target++ = static_cast<uint16_t>(HIGH_SURROGATE + (offset >> 10));
      *target++ = static_cast<uint16_t>(LOW_SURROGATE + (offset & 0x3FF));
    }
    source += trailing + 1;
  }
}

void kest_utf16_to_utf8(const uint16_t *&source, const uint16_t *source_end, uint8_t *&target,
                        uint8_t *target_end) {
  while (source < source_end) {
    uint32_t code_point = *source;
    unsigned units = 1;
    if (is_high_surrogate(code_point)) {
      if (source_end - source < 2) {
        return;
      }
      if (is_low_surrogate(source[1])) {
        code_point = FIRST_SUPPLEMENTARY + ((code_point & 0x3FF) << 10) + (source[1] & 0x3FFu);
        units = 2;
      }
    }
    const unsigned length = utf8_length(code_point);
    if (target_end - target < static_cast<ptrdiff_t>(length)) {
      return;
    }
    put_utf8(target, code_point, length);
    source += units;
    target += length;
  }
}

uint16_t kest_convert_utf8_to_ucs2(const char *str, uint16_t limit, uint16_t *dst) {
  const auto *source = reinterpret_cast<const uint8_t *>(str);
  uint16_t *target = dst;
  kest_utf8_to_utf16(source, source + strlen(str), target, dst + limit / 2);
  return static_cast<uint16_t>((target - dst) * 2);
}

uint16_t kest_convert_ucs2_to_utf8(const uint16_t *src, uint16_t len, char *dst) {
  const size_t units = len / 2;
  const uint16_t *source = src;
  auto *const bytes = reinterpret_cast<uint8_t *>(dst);
  uint8_t *target = bytes;
  kest_utf16_to_utf8(source, src + units, target, bytes + units * 3); // a unit takes at most three
  *target = '\0';
  return static_cast<uint16_t>(target - bytes);
}

uint16_t kest_convert_ascii_to_utf8(const uint8_t *src, uint8_t len, char *dst, uint16_t dst_size) {
  size_t needed = 1; // the terminator
  for (size_t i = 0; i < len; ++i) {
    needed += src[i] == '\r' ? 0u : utf8_length(src[i]);
  }
  if (dst_size < 2u * len || dst_size < needed) {
    return 0;
  }
  size_t out = 0;
  for (size_t i = 0; i < len; ++i) {
    if (src[i] != '\r') {
      const unsigned length = utf8_length(src[i]);
      put_utf8(reinterpret_cast<uint8_t *>(dst) + out, src[i], length);
      out += length;
    }
  }
  dst[out] = '\0';
  return static_cast<uint16_t>(out);
}

int32_t strlen_utf8(const char *s) {
  int32_t characters = 0;
  for (; *s != '\0'; ++s) {
    characters += (static_cast<uint8_t>(*s) & 0xC0) != 0x80 ? 1 : 0;
  }
  return characters;
}
