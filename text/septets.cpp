#include "text/septets.h"

#include <cstddef>

namespace {

constexpr unsigned SEPTET = 0x7F;
constexpr unsigned CARRIAGE_RETURN = 0x0D;

} // namespace

uint16_t kest_pack_septets(const uint8_t *src, uint16_t count, uint16_t shift, uint16_t limit,
                           uint8_t *dst) {
  if (src == nullptr || dst == nullptr) {
    return 0;
  }
  const unsigned fill_bits = shift % 7u;
  unsigned placed = 0; // low bits of src[i] that the octet before has taken
  size_t out = 0;
  size_t i = 0;
  if (fill_bits != 0) {
    dst[0] |= static_cast<uint8_t>(src[0] << fill_bits);
    out = 1;
    placed = 8 - fill_bits;
    if (placed == 7) {
      i = 1;
      placed = 0;
    }
  }
  while (out < limit && i < count) {
    unsigned octet = src[i] >> placed;
    if (i + 1 < count) {
      octet |= static_cast<unsigned>(src[i + 1]) << (7 - placed);
      if (++placed == 7) { // the whole of the following septet has gone out with this one
        placed = 0;
        ++i;
      }
    }
    dst[out++] = static_cast<uint8_t>(octet);
    ++i;
  }
  return static_cast<uint16_t>(out);
}

uint8_t kest_unpack_septets(const uint8_t *src, uint16_t count, uint16_t limit, uint16_t shift,
                            uint8_t *dst) {
  if (src == nullptr || dst == nullptr) {
    return 0;
  }
  unsigned carried = shift; // top bits of src[i - 1] that begin the next septet
  size_t out = 0;
  size_t i = shift != 0 ? 1 : 0;
  if (carried == 7) {
    dst[out++] = src[0] >> 1;
    carried = 0;
  }
  while (out < limit && out < count) {
    unsigned septet = static_cast<unsigned>(src[i]) << carried;
    if (i != 0) {
      septet |= static_cast<unsigned>(src[i - 1]) >> (8 - carried);
    }
    dst[out] = septet & SEPTET;
    if (++carried == 7) {
      if (++out == limit) {
        break;
      }
      dst[out] = src[i] >> 1;
      carried = 0;
    }
    ++out;
    ++i;
  }
  return static_cast<uint8_t>(i);
}

uint32_t kest_unpack_ussd_septets(uint8_t *dst, const uint8_t *src, uint16_t src_len) {
  if (src == nullptr || dst == nullptr) {
    return 0;
  }
  uint32_t out = 0;
  unsigned previous = 0;
  for (size_t i = 0; i < src_len; ++i) {
    const unsigned octet = src[i];
    const unsigned carried = out % 8;
    dst[out++] = (octet << carried | previous >> (8 - carried)) & SEPTET;
    previous = octet;
    if (carried == 6) { // the octet's top seven bits are a septet of their own
      if (octet >> 1 == CARRIAGE_RETURN && i + 1u == src_len) {
        return out;
      }
      dst[out++] = static_cast<uint8_t>(octet >> 1);
    }
  }
  return out;
}
