// octets/bit_writer.h: a field under construction, bit by bit, from the top bit of its first octet.
// An octet is cleared before its first bit goes in. Bits without room are dropped.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

struct bit_writer {
  uint8_t *data;
  size_t size;    // in octets
  size_t pos = 0; // in bits
};

// put_bits appends the low `width` bits of `value`, the highest first.
inline void put_bits(bit_writer &out, unsigned width, uint32_t value) {
  while (width > 0 && out.pos / 8 < out.size) {
    uint8_t &octet = out.data[out.pos / 8];
    const unsigned room = 8 - out.pos % 8;
    const unsigned taken = std::min(width, room);
    const uint32_t bits = value >> (width - taken) & ((1u << taken) - 1);
    octet = static_cast<uint8_t>((room == 8 ? 0u : octet) | bits << (room - taken));
    out.pos += taken;
    width -= taken;
  }
}

// put_octets appends octets as put_bits does with 8 bits each: in two parts, to the octet that is
// begun and to the next one.
inline void put_octets(bit_writer &out, std::span<const uint8_t> octets) {
  const unsigned begun = out.pos % 8;
  for (const uint8_t octet : octets) {
    const size_t at = out.pos / 8;
    if (begun == 0 || at + 1 >= out.size) { // in one part, or without room for both
      put_bits(out, 8, octet);
    } else {
      out.data[at] |= static_cast<uint8_t>(octet >> begun);
      out.data[at + 1] = static_cast<uint8_t>(octet << (8 - begun));
      out.pos += 8;
    }
  }
}

// written_octets returns the octets that the bits so far have reached.
inline size_t written_octets(const bit_writer &out) {
  return (out.pos + 7) / 8;
}
