// sms/encode/octet_writer.h: a PDU under construction. put_octet drops what does not fit; a field
// that is written in place behind `pos` states its own bound.
#pragma once
#include <cstddef>
#include <cstdint>

struct octet_writer {
  uint8_t *data;
  size_t size;
  size_t pos = 0;
};

inline void put_octet(octet_writer &out, uint8_t octet) {
  if (out.pos < out.size) {
    out.data[out.pos++] = octet;
  }
}
