// sms/decode/octet_reader.h: the one way into a received message. Past its end every octet reads
// as 0: a short PDU decodes as if zeros followed.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

struct octet_reader {
  std::span<const uint8_t> octets;
  size_t pos = 0; // at most the size of `octets`
};

inline uint8_t read_octet(octet_reader &in) {
  return in.pos < in.octets.size() ? in.octets[in.pos++] : uint8_t{0};
}

// skip_octets stops at the end.
inline void skip_octets(octet_reader &in, size_t count) {
  in.pos += std::min(count, in.octets.size() - in.pos);
}

// read_octets fills `dst`.
inline void read_octets(octet_reader &in, std::span<uint8_t> dst) {
  const auto rest = in.octets.subspan(in.pos);
  const size_t count = std::min(dst.size(), rest.size());
  std::copy_n(rest.begin(), count, dst.begin());
  std::fill(dst.begin() + static_cast<ptrdiff_t>(count), dst.end(), uint8_t{0});
  in.pos += count;
}

// peek_octet returns the octet `offset` behind the position, and moves nothing.
inline uint8_t peek_octet(const octet_reader &in, size_t offset) {
  const size_t left = in.octets.size() - in.pos;
  return offset < left ? in.octets[in.pos + offset] : uint8_t{0};
}
