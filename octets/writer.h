// octets/writer.h: octets under construction. What does not fit is dropped and sets `overrun`.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

struct octet_writer {
  uint8_t *data;
  size_t size;
  size_t pos = 0; // at most `size`
  bool overrun = false;

  // space returns the next `count` octets for a field that is written in place, or those that are
  // left.
  std::span<uint8_t> space(size_t count) {
    const size_t there = std::min(count, size - pos);
    overrun |= there < count;
    pos += there;
    return {data + pos - there, there};
  }

  void u8(uint8_t octet) {
    if (pos < size) {
      data[pos++] = octet;
    } else {
      overrun = true;
    }
  }

  // u16 writes the high octet first.
  void u16(uint16_t value) {
    u8(static_cast<uint8_t>(value >> 8));
    u8(static_cast<uint8_t>(value));
  }

  void put(std::span<const uint8_t> octets) {
    const std::span<uint8_t> there = space(octets.size());
    std::copy_n(octets.begin(), there.size(), there.begin());
  }
};
