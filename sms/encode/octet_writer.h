// sms/encode/octet_writer.h: a PDU under construction. put_octet drops what does not fit; a field
// that is written in place behind `pos` states its own bound.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

struct octet_writer {
  uint8_t *data;
  size_t size;
  size_t pos = 0; // at most `size`
};

inline void put_octet(octet_writer &out, uint8_t octet) {
  if (out.pos < out.size) {
    out.data[out.pos++] = octet;
  }
}

inline void put_octets(octet_writer &out, std::span<const uint8_t> octets) {
  const size_t count = std::min(octets.size(), out.size - out.pos);
  memcpy(out.data + out.pos, octets.data(), count);
  out.pos += count;
}
