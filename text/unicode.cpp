#include "text/unicode.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "kest/text.h"
#include "octets/word.h"
#include "text/apart.h"

namespace {

constexpr uint16_t HIGH_SURROGATE = 0xD800;
constexpr uint16_t LOW_SURROGATE = 0xDC00;
constexpr uint32_t LAST_CODE_POINT = 0x10FFFF;

bool is_high_surrogate(uint32_t value) {
  return (value & 0xFC00) == HIGH_SURROGATE;
}

bool is_low_surrogate(uint32_t value) {
  return (value & 0xFC00) == LOW_SURROGATE;
}

bool is_surrogate(uint32_t value) {
  return (value & 0xF800) == HIGH_SURROGATE;
}

// (What is always inlined below would otherwise be called for each character of a text.)

// A character, and the bytes or units that it takes; length 0 if there is none.
struct character {
  uint32_t code_point;
  unsigned length;
};

constexpr character ILLEGAL = {0, 0};

// read_sequence reads the sequence of two to four bytes at the start of `octets`, the first in the
// low bits, and takes none that is not well-formed (Unicode Standard, table 3-7). After the end of
// a sequence that is cut off the octets are 0, which are no trailing bytes.
[[gnu::always_inline]] inline character read_sequence(uint32_t octets) {
  if ((octets & 0xC0E0) == 0x80C0) {
    const uint32_t value = (octets & 0x1F) << 6 | (octets >> 8 & 0x3F);
    return value >= 0x80 ? character{value, 2} : ILLEGAL;
  }
  if ((octets & 0xC0C0F0) == 0x8080E0) {
    const uint32_t value = (octets & 0x0F) << 12 | (octets >> 2 & 0xFC0) | (octets >> 16 & 0x3F);
    return value >= 0x800 && !is_surrogate(value) ? character{value, 3} : ILLEGAL;
  }
  if ((octets & 0xC0C0C0F8) == 0x808080F0) {
    const uint32_t value = (octets & 0x07) << 18 | (octets << 4 & 0x3F000) |
                           (octets >> 10 & 0xFC0) | (octets >> 24 & 0x3F);
    return value >= FIRST_SUPPLEMENTARY && value <= LAST_CODE_POINT ? character{value, 4} : ILLEGAL;
  }
  return ILLEGAL;
}

// read_utf8 reads the character at `seq`, of which there are `size` bytes.
character read_utf8(const uint8_t *seq, size_t size) {
  uint32_t octets = 0;
  for (size_t i = 0; i < std::min(size, sizeof octets); ++i) {
    octets |= static_cast<uint32_t>(seq[i]) << 8 * i;
  }
  return (octets & 0x80) == 0 ? character{octets & 0x7F, 1} : read_sequence(octets);
}

// put returns the bytes or units that it wrote; 0, with nothing written, if they are more than
// `room`.
inline size_t put(uint32_t code_point, uint8_t *dst, size_t room) {
  return put_utf8(code_point, dst, room);
}

inline size_t put(uint32_t code_point, uint16_t *dst, size_t room) {
  if (code_point < FIRST_SUPPLEMENTARY) {
    if (room < 1) {
      return 0;
    }
    dst[0] = static_cast<uint16_t>(code_point);
    return 1;
  }
  if (room < 2) {
    return 0;
  }
  const uint32_t offset = code_point - FIRST_SUPPLEMENTARY;
  dst[0] = static_cast<uint16_t>(HIGH_SURROGATE + (offset >> 10));
  dst[1] = static_cast<uint16_t>(LOW_SURROGATE + (offset & 0x3FF));
  return 2;
}

// is_pair returns whether two units are the surrogates of one character.
bool is_pair(uint32_t first, uint32_t second) {
  return is_high_surrogate(first) && is_low_surrogate(second);
}

uint32_t pair_value(uint32_t high, uint32_t low) {
  return FIRST_SUPPLEMENTARY + ((high & 0x3FF) << 10) + (low & 0x3FF);
}

// read_utf16 reads the character at `units`, of which there are `size`, at least one. A surrogate
// without its partner is a character of its own, but not a high one at the end.
character read_utf16(const uint16_t *units, size_t size) {
  if (is_high_surrogate(units[0]) && size < 2) {
    return ILLEGAL;
  }
  return size >= 2 && is_pair(units[0], units[1]) ? character{pair_value(units[0], units[1]), 2}
                                                  : character{units[0], 1};
}

// A word of ASCII, and the units that are the same characters: two words.

constexpr size_t WORD_UNITS = sizeof(word) / sizeof(uint16_t);
// gather is the inverse of spread.
constexpr word gather(word units) {
  units |= units >> 8;
  if constexpr (sizeof(word) == 8) {
    units = (units & EVEN_UNITS) | (units >> 16 & 0xFFFF0000);
  }
  return units;
}

constexpr bool are_ascii_units(word units) {
  return (units & every_unit(0xFF80)) == 0;
}

void store_ascii_as_units(word octets, uint16_t *dst) {
  constexpr unsigned HALF = 4 * sizeof(word); // bits
  store(dst, spread(octets & every_octet(0xFF) >> HALF));
  store(dst + WORD_UNITS, spread(octets >> HALF));
}

// Where a conversion stands.
template <class from, class to>
struct conversion {
  const from *in, *in_end;
  to *out, *out_end;

  size_t left() const {
    return static_cast<size_t>(in_end - in);
  }
  size_t room() const {
    return static_cast<size_t>(out_end - out);
  }
};

// put_ascii converts the ASCII before another character, which is there.
template <class from, class to>
void put_ascii(conversion<from, to> &at) {
  do {
    *at.out++ = static_cast<to>(*at.in++);
  } while (*at.in < 0x80);
}

using to_utf16 = conversion<uint8_t, uint16_t>;
using to_utf8 = conversion<uint16_t, uint8_t>;

// put_character writes `next` and moves past it. It returns false, and moves nothing, if that is
// illegal or has no room.
template <class from, class to>
[[gnu::always_inline]] inline bool put_character(conversion<from, to> &at, const character &next,
                                                 size_t room) {
  const size_t written = next.length != 0 ? put(next.code_point, at.out, room) : 0;
  if (written == 0) {
    return false;
  }
  at.in += next.length;
  at.out += written;
  return true;
}

// convert_words converts while a word of bytes is left and has room as units: a word of ASCII at
// once, other characters one by one. It returns false at an illegal sequence.
[[gnu::always_inline]] inline bool convert_words(to_utf16 &at) {
  constexpr size_t BYTES = sizeof(word);
  while (at.left() >= BYTES && at.room() >= BYTES) {
    // No byte becomes more than a unit.
    const uint8_t *const last = at.in + std::min(at.left(), at.room()) - BYTES;
    do {
      const word octets = load<word>(at.in);
      if ((octets & 0x80) == 0) {
        if (is_ascii(octets)) {
          store_ascii_as_units(octets, at.out);
          at.in += BYTES;
          at.out += BYTES;
        } else {
          put_ascii(at);
        }
      } else if (!put_character(at, read_sequence(static_cast<uint32_t>(octets)), BYTES)) {
        return false;
      }
    } while (at.in <= last);
  }
  return true;
}

// This one converts while a word of units is left and has room as bytes. Nothing is illegal: each
// surrogate has a unit after it.
[[gnu::always_inline]] inline void convert_words(to_utf8 &at) {
  constexpr size_t ROOM = sizeof(word); // of all that a turn writes
  while (at.left() >= WORD_UNITS && at.room() >= ROOM) {
    // No unit becomes more than three bytes; a division by four takes no call on a device.
    const uint16_t *const last = at.in + std::min(at.left() - WORD_UNITS, (at.room() - ROOM) / 4);
    do {
      const word units = load<word>(at.in);
      const uint32_t unit = units & 0xFFFF;
      if (unit < 0x80) {
        if (are_ascii_units(units)) {
          store(at.out, static_cast<half_word>(gather(units)));
          at.in += WORD_UNITS;
          at.out += WORD_UNITS;
        } else {
          put_ascii(at);
        }
      } else if (is_pair(unit, at.in[1])) {
        at.out += put_utf8(pair_value(unit, at.in[1]), at.out, ROOM);
        at.in += 2;
      } else {
        at.out += put_utf8(unit, at.out, ROOM);
        ++at.in;
      }
    } while (at.in <= last);
  }
}

} // namespace

utf8_character kest_utf8_long_char_to_ucs2(const uint8_t *text, size_t size) {
  const uint8_t first = text[0];
  const unsigned length = kest_utf8_length(first);
  // What a form of two or three bytes keeps of its first byte. The value of a longer one comes from
  // its last three bytes, 18 bits, of which 16 survive.
  uint32_t sum = length == 2 ? first & 0x1Fu : first & 0xFu;
  for (unsigned i = 1; i < length; ++i) {
    sum = sum << 6 | (i < size ? text[i] & 0x3Fu : 0u);
  }
  return {static_cast<uint16_t>(sum), static_cast<uint8_t>(length)};
}

void kest_utf8_to_utf16(const uint8_t *&source, const uint8_t *source_end, uint16_t *&target,
                        uint16_t *target_end) {
  to_utf16 at = {source, source_end, target, target_end};
  bool more = convert_words(at);
  while (more && at.in < at.in_end) {
    more = put_character(at, read_utf8(at.in, at.left()), at.room());
  }
  source = at.in;
  target = at.out;
}

void kest_utf16_to_utf8(const uint16_t *&source, const uint16_t *source_end, uint8_t *&target,
                        uint8_t *target_end) {
  to_utf8 at = {source, source_end, target, target_end};
  convert_words(at);
  while (at.in < at.in_end && put_character(at, read_utf16(at.in, at.left()), at.room())) {
  }
  source = at.in;
  target = at.out;
}

uint16_t kest_convert_utf8_to_ucs2(const char *str, uint16_t limit, uint16_t *dst) {
  const auto *source = reinterpret_cast<const uint8_t *>(str);
  uint16_t *target = dst;
  kest_utf8_to_utf16(source, source + strlen(str), target, dst + limit / 2);
  return static_cast<uint16_t>((target - dst) * 2);
}

uint16_t kest_convert_ucs2_to_utf8(const uint16_t *src, uint16_t len, char *dst) {
  const size_t units = len / 2;
  const size_t room = units * 3; // a unit takes at most three
  heap<void> copy;
  const auto *source =
      static_cast<const uint16_t *>(kest_keep_apart(src, units * sizeof *src, dst, room + 1, copy));
  if (source == nullptr && units > 0) {
    return 0;
  }
  auto *const bytes = reinterpret_cast<uint8_t *>(dst);
  uint8_t *target = bytes;
  kest_utf16_to_utf8(source, source + units, target, bytes + room);
  *target = '\0';
  return static_cast<uint16_t>(target - bytes);
}

uint16_t kest_convert_ascii_to_utf8(const uint8_t *src, uint8_t len, char *dst, uint16_t dst_size) {
  size_t needed = 1; // the terminator
  for (size_t i = 0; i < len; ++i) {
    needed += src[i] == '\r' ? 0u : src[i] < 0x80 ? 1u : 2u;
  }
  if (dst_size < 2u * len || dst_size < needed) {
    return 0;
  }
  size_t out = 0;
  for (size_t i = 0; i < len; ++i) {
    if (src[i] != '\r') {
      out += put_utf8(src[i], reinterpret_cast<uint8_t *>(dst) + out, 2);
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
