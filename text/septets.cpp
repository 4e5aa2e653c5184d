#include "text/septets.h"

#include <algorithm>

#include "octets/word.h"
#include "text/gsm_alphabet.h"

namespace {

constexpr unsigned SEPTET = 0x7F;

// A group is eight septets, or the seven octets that they fill when the first begins an octet. Both
// halves of it are 28 bits, four septets.
constexpr size_t GROUP_SEPTETS = 8;
constexpr size_t GROUP_OCTETS = 7;

// join closes the gaps between the septets in the octets of `septets`, four to each 32 bits.
template <class number>
constexpr number join(number septets) {
  constexpr auto ODD = static_cast<number>(0xFF00FF00FF00FF00);
  constexpr auto HIGH = static_cast<number>(0xFFFF0000FFFF0000);
  const number pairs = (septets & ~ODD) | (septets & ODD) >> 1;
  return (pairs & ~HIGH) | (pairs & HIGH) >> 2;
}

// part puts the four septets of a half into the octets of the result.
constexpr uint32_t part(uint32_t half) {
  const uint32_t pairs = (half & 0x3FFF) | (half & 0x0FFFC000) << 2;
  return (pairs & 0x007F007F) | (pairs & 0x3F803F80) << 1;
}

// pack_groups packs `count` groups that begin an octet.
void pack_groups(const uint8_t *src, size_t count, uint8_t *dst) {
  for (; count > 0; --count) {
    uint64_t octets;
    if constexpr (sizeof(word) == GROUP_SEPTETS) { // both halves in one register
      const auto halves = join(load<uint64_t>(src));
      octets = (halves & 0xFFFFFFFF) | halves >> 32 << 28;
    } else {
      octets = join(load<uint32_t>(src)) | uint64_t{join(load<uint32_t>(src + 4))} << 28;
    }
    store(dst, static_cast<uint32_t>(octets));
    store(dst + 3, static_cast<uint32_t>(octets >> 24));
    src += GROUP_SEPTETS;
    dst += GROUP_OCTETS;
  }
}

// unpack_groups unpacks `count` groups that begin an octet.
void unpack_groups(const uint8_t *src, size_t count, uint8_t *dst) {
  for (; count > 0; --count) {
    store(dst, part(load<uint32_t>(src)));
    store(dst + 4, part(load<uint32_t>(src + 3) >> 4));
    src += GROUP_OCTETS;
    dst += GROUP_SEPTETS;
  }
}

} // namespace

uint16_t kest_pack_septets(const uint8_t *src, uint16_t count, uint16_t limit, uint8_t *dst) {
  const size_t groups = std::min(count / GROUP_SEPTETS, size_t{kest_seventh(limit)});
  pack_groups(src, groups, dst);
  size_t i = groups * GROUP_SEPTETS;
  size_t out = groups * GROUP_OCTETS;
  // Less than a group is left, of septets or of room. `placed` low bits of src[i] stand in the
  // octet before.
  for (unsigned placed = 0; out < limit && i < count; ++i, ++placed) {
    const unsigned next = i + 1 < count ? src[i + 1] : 0;
    dst[out++] = static_cast<uint8_t>(src[i] >> placed | next << (7 - placed));
  }
  return static_cast<uint16_t>(out);
}

uint8_t kest_unpack_septets(const uint8_t *src, uint16_t count, uint16_t limit, uint16_t shift,
                            uint8_t *dst) {
  unsigned carried = shift; // top bits of src[i - 1] that begin the next septet
  size_t out = 0;
  size_t i = shift != 0 ? 1 : 0;
  if (carried == 7) {
    dst[out++] = src[0] >> 1;
    carried = 0;
  }
  while (out < limit && out < count) {
    if (carried == 0 && count - out >= GROUP_OCTETS && limit - out >= GROUP_SEPTETS) {
      const size_t groups =
          std::min((count - out + 1) / GROUP_SEPTETS, (limit - out) / GROUP_SEPTETS);
      unpack_groups(src + i, groups, dst + out);
      i += groups * GROUP_OCTETS;
      out += groups * GROUP_SEPTETS;
      continue;
    }
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
  const size_t groups = src_len == 0 ? 0 : kest_seventh(src_len - 1u); // the last may be padded
  unpack_groups(src, groups, dst);
  auto out = static_cast<uint32_t>(groups * GROUP_SEPTETS);
  unsigned previous = 0;
  for (size_t i = groups * GROUP_OCTETS; i < src_len; ++i) {
    const unsigned octet = src[i];
    const unsigned carried = out % 8;
    dst[out++] = (octet << carried | previous >> (8 - carried)) & SEPTET;
    previous = octet;
    if (carried == 6) { // the octet's top seven bits are a septet of their own
      if (octet >> 1 == GSM_CARRIAGE_RETURN && i + 1u == src_len) {
        return out;
      }
      dst[out++] = static_cast<uint8_t>(octet >> 1);
    }
  }
  return out;
}
