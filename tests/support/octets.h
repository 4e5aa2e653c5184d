// tests/support/octets.h: octet strings that a person can read.
#pragma once
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

inline std::string repeat(std::string_view text, size_t times) {
  std::string out;
  while (times-- > 0) {
    out += text;
  }
  return out;
}

// compact drops blanks from a hexadecimal text and writes out "41*3" as "414141".
inline std::string compact(const std::string &text) {
  std::istringstream in(text);
  std::string out;
  for (std::string token; in >> token;) {
    const size_t star = token.find('*');
    out += star == std::string::npos ? token
                                     : repeat(token.substr(0, star), std::stoul(&token[star + 1]));
  }
  return out;
}

inline std::vector<uint8_t> octets(const std::string &text) {
  const std::string digits = compact(text);
  std::vector<uint8_t> out;
  for (const char *at = digits.data(); at + 1 < digits.data() + digits.size(); at += 2) {
    std::from_chars(at, at + 2, out.emplace_back(), 16);
  }
  return out;
}

inline std::span<const uint8_t> bytes(std::string_view text) {
  return {reinterpret_cast<const uint8_t *>(text.data()), text.size()};
}

inline std::string hex(std::span<const uint8_t> data) {
  std::string out;
  for (const uint8_t octet : data) {
    out += {"0123456789ABCDEF"[octet >> 4], "0123456789ABCDEF"[octet & 0xF]};
  }
  return out;
}

inline std::string hex(std::string_view text) {
  return hex(bytes(text));
}

// same_octets compares two records octet for octet, with those between their members.
template <class record>
bool same_octets(const record &a, const record &b) {
  const auto *first = reinterpret_cast<const uint8_t *>(&a);
  return std::equal(first, first + sizeof a, reinterpret_cast<const uint8_t *>(&b));
}

// exact_text is `text` in a heap block of its size and a terminator, so that the address sanitizer
// sees the first byte that is read after it.
inline std::unique_ptr<char[]> exact_text(const std::string &text) {
  auto block = std::make_unique<char[]>(text.size() + 1);
  memcpy(block.get(), text.c_str(), text.size() + 1);
  return block;
}

// exact_octets does so for octets, without a terminator.
inline std::unique_ptr<uint8_t[]> exact_octets(std::span<const uint8_t> data) {
  auto block = std::make_unique<uint8_t[]>(data.size());
  std::copy(data.begin(), data.end(), block.get());
  return block;
}

inline std::string text_of(std::span<const uint8_t> data) {
  return {data.begin(), data.end()};
}

// hostile_inputs checks each truncation of some octets, and the octets with each of them changed to
// every `stride`th value.
template <class check>
void hostile_inputs(std::vector<uint8_t> data, unsigned stride, const check &run) {
  for (size_t size = 0; size < data.size(); ++size) {
    run(std::span<const uint8_t>(data).first(size));
  }
  for (uint8_t &octet : data) {
    const uint8_t before = octet;
    for (unsigned value = 0; value < 256; value += stride) {
      octet = static_cast<uint8_t>(value);
      run(std::span<const uint8_t>(data));
    }
    octet = before;
  }
}
