// octets/reader.h: the one way into octets from outside: messages, pages and answers of cards.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

// Past the end every octet reads as 0: a short message decodes as if zeros followed. `overrun`
// stays set then, so that a decoder that refuses short input asks once.
struct octet_reader {
  std::span<const uint8_t> octets;
  size_t pos = 0; // at most the size of `octets`
  bool overrun = false;

  size_t left() const {
    return octets.size() - pos;
  }

  // next returns the next octet and moves nothing.
  uint8_t next() const {
    return pos < octets.size() ? octets[pos] : uint8_t{0};
  }

  uint8_t u8() {
    if (pos < octets.size()) {
      return octets[pos++];
    }
    overrun = true;
    return 0;
  }

  // u16 reads the high octet first.
  uint16_t u16() {
    const unsigned high = u8();
    return static_cast<uint16_t>(high << 8 | u8());
  }

  // take returns the next `count` octets, or those that are left.
  std::span<const uint8_t> take(size_t count) {
    const size_t there = std::min(count, left());
    overrun |= there < count;
    pos += there;
    return octets.subspan(pos - there, there);
  }

  void skip(size_t count) {
    take(count);
  }

  // read fills `dst`.
  void read(std::span<uint8_t> dst) {
    const std::span<const uint8_t> there = take(dst.size());
    std::fill(std::copy(there.begin(), there.end(), dst.begin()), dst.end(), uint8_t{0});
  }
};
