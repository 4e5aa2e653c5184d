// octets/word.h: octets or 16-bit units taken a register at a time, the first in the low bits, on
// machines of either byte order. Each fast path is followed by a loop that takes the remainder
// one at a time, so nothing outside a buffer is read or written.
#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

using word = size_t; // eight octets, or four on a 32-bit device
using half_word = std::conditional_t<sizeof(word) == 8, uint32_t, uint16_t>;

// every_octet returns the word whose octets all are `octet`.
constexpr word every_octet(uint8_t octet) {
  return ~word{0} / 0xFF * octet;
}

// every_unit does so with 16-bit units.
constexpr word every_unit(uint16_t unit) {
  return ~word{0} / 0xFFFF * unit;
}

// reversed turns the order of the octets or units in `value` around.
template <class unit, class number>
constexpr number reversed(number value) {
  static_assert(sizeof(unit) <= 2 && sizeof value <= 8);
  uint64_t octets = __builtin_bswap64(value) >> (64 - 8 * sizeof value);
  if constexpr (sizeof(unit) == 2) { // each keeps its own octets as they stood
    constexpr uint64_t LOW = 0x00FF00FF00FF00FF;
    octets = (octets & LOW) << 8 | (octets >> 8 & LOW);
  }
  return static_cast<number>(octets);
}

static_assert(reversed<uint8_t>(uint16_t{0x0102}) == 0x0201);
static_assert(reversed<uint8_t>(uint64_t{0x0102030405060708}) == 0x0807060504030201);
static_assert(reversed<uint16_t>(uint32_t{0x01020304}) == 0x03040102);
static_assert(reversed<uint16_t>(uint64_t{0x0102030405060708}) == 0x0708050603040102);

// A number at any address. (memcpy, which does the same, is a call on MIPS at -Os.)
template <class number>
struct [[gnu::packed, gnu::may_alias]] unaligned {
  number value;
};

// load and store take a number from memory and put it there, its first octet or unit in the low
// bits: a big-endian machine has that in the high bits.

template <class number, class unit>
number load(const unit *from) {
  const number value = reinterpret_cast<const unaligned<number> *>(from)->value;
  return std::endian::native == std::endian::big ? reversed<unit>(value) : value;
}

template <class number, class unit>
void store(unit *to, number value) {
  reinterpret_cast<unaligned<number> *>(to)->value =
      std::endian::native == std::endian::big ? reversed<unit>(value) : value;
}

constexpr auto EVEN_UNITS = static_cast<word>(0x0000FFFF0000FFFF);

// spread puts the octets of the low half of `octets` into 16-bit units.
constexpr word spread(word octets) {
  if constexpr (sizeof(word) == 8) {
    octets = (octets | octets << 16) & EVEN_UNITS;
  }
  return (octets | octets << 8) & every_unit(0x00FF);
}

// is_ascii returns whether all octets of `octets` are below 0x80.
constexpr bool is_ascii(word octets) {
  return (octets & every_octet(0x80)) == 0;
}

// is_ascii_without returns whether all of them are, and none is `octet`, which is below 0x80
// itself.
constexpr bool is_ascii_without(word octets, uint8_t octet) {
  // An octet that is `octet` is 0 here, and one less than 0 has its bit 7 set. What that takes from
  // the octet above counts for nothing more: the word is refused.
  const word differences = octets ^ every_octet(octet);
  return is_ascii(differences | (differences - every_octet(1)));
}
