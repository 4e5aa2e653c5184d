// sim/answer_reader.h: the way into what a card sent. Past its end an octet reads as 0 and
// `cut_off` is set, so that a decoder asks once whether it had all that it read.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

struct answer_reader {
  std::span<const uint8_t> octets;
  size_t pos = 0; // at most the size of `octets`
  bool cut_off = false;
};

inline size_t octets_left(const answer_reader &in) {
  return in.octets.size() - in.pos;
}

inline uint8_t take_octet(answer_reader &in) {
  if (octets_left(in) == 0) {
    in.cut_off = true;
    return 0;
  }
  return in.octets[in.pos++];
}

inline uint16_t take_number(answer_reader &in) {
  const unsigned high = take_octet(in);
  return static_cast<uint16_t>(high << 8 | take_octet(in));
}

inline void skip_octets(answer_reader &in, size_t count) {
  in.cut_off |= count > octets_left(in);
  in.pos += std::min(count, octets_left(in));
}

// next_octet moves nothing, and is 0 at the end.
inline uint8_t next_octet(const answer_reader &in) {
  return octets_left(in) == 0 ? uint8_t{0} : in.octets[in.pos];
}
