// text/word.h: octets taken a register at a time, the first in the low bits. A fast path stands
// ahead of the step for one octet, which takes what is less than a word; so nothing outside a
// buffer is read or written.
#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

static_assert(std::endian::native == std::endian::little);

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

template <class number>
number load(const void *from) {
  number value;
  memcpy(&value, from, sizeof value);
  return value;
}

template <class number>
void store(void *to, number value) {
  memcpy(to, &value, sizeof value);
}

// is_ascii tells whether all octets of `octets` are below 0x80.
constexpr bool is_ascii(word octets) {
  return (octets & every_octet(0x80)) == 0;
}

// is_ascii_without tells whether all of them are, and none is `octet`, which is below 0x80 itself.
constexpr bool is_ascii_without(word octets, uint8_t octet) {
  // An octet that is `octet` is 0 here, and one less than 0 has its bit 7 set. What that takes from
  // the octet above counts for nothing more: the word is refused.
  const word differences = octets ^ every_octet(octet);
  return is_ascii(differences | (differences - every_octet(1)));
}
