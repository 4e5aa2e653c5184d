// bench/inputs.h: inputs that several jobs take.
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "text/septets.h"
#include "text/unicode.h"

// repeated returns the first `size` bytes of a text that goes on without end.
inline std::string repeated(const std::string &text, size_t size) {
  std::string out;
  while (out.size() < size) {
    out += text;
  }
  out.resize(size);
  return out;
}

// NOLINTBEGIN(cert-err58-cpp): a benchmark that lacks the memory for its texts may end
inline const std::string ENGLISH =
    "The quick brown fox jumps over the lazy dog, and comes back at 17:45 for 3 pints. ";
inline const std::string RUSSIAN = "Съешь же ещё этих мягких французских булок, да выпей чаю. ";

// Sentences of all lengths of UTF-8 sequences.
inline const std::string MIXED = ENGLISH +
                                 "Zwölf Boxkämpfer jagen Viktor über den großen Sylter "
                                 "Deich; à bientôt, señor. " +
                                 RUSSIAN +
                                 "我能吞下玻璃而不伤身体。我能吞下玻璃而不伤身体。 "
                                 "😀😃😎👍🏽 👋 🎉🎉 ";
// NOLINTEND(cert-err58-cpp)

// mixed_text returns about `size` bytes of it: whole characters, and no more than that.
inline std::string mixed_text(size_t size) {
  std::string text = repeated(MIXED, size + 1);
  while ((static_cast<uint8_t>(text[size]) & 0xC0) == 0x80) {
    --size;
  }
  text.resize(size);
  return text;
}

// A text in both forms, and where conversions write: those of one text are compared on the same
// memory.
struct unicode_buffers {
  std::string utf8;
  std::vector<uint16_t> utf16;
  std::vector<uint16_t> to_utf16;
  std::string to_utf8;
};

inline unicode_buffers &buffers_of(const std::string &text) {
  static std::map<std::string, unicode_buffers> made;
  unicode_buffers &buffers = made[text];
  if (buffers.utf8.empty()) {
    buffers.utf8 = text;
    buffers.to_utf16.resize(text.size());
    buffers.to_utf8.resize(3 * text.size() + 1);
    const auto *source = reinterpret_cast<const uint8_t *>(text.data());
    uint16_t *target = buffers.to_utf16.data();
    kest_utf8_to_utf16(source, source + text.size(), target, target + text.size());
    buffers.utf16.assign(buffers.to_utf16.data(), target);
  }
  return buffers;
}

// some_octets returns `count` octets without a pattern.
inline std::vector<uint8_t> some_octets(size_t count) {
  std::vector<uint8_t> octets(count);
  uint32_t state = 1;
  for (uint8_t &octet : octets) {
    state = state * 1664525 + 1013904223;
    octet = static_cast<uint8_t>(state >> 24);
  }
  return octets;
}

inline std::vector<uint8_t> some_septets(size_t count) {
  std::vector<uint8_t> septets = some_octets(count);
  for (uint8_t &septet : septets) {
    septet &= 0x7F;
  }
  return septets;
}

// packed_text returns `size` octets of packed septets. The text has no character whose GSM code is
// another one than its ASCII code.
inline std::vector<uint8_t> packed_text(size_t size) {
  const std::string text = repeated(ENGLISH, size * 8 / 7 + 1);
  std::vector<uint8_t> octets(size);
  kest_pack_septets(reinterpret_cast<const uint8_t *>(text.data()),
                    static_cast<uint16_t>(text.size()), static_cast<uint16_t>(size), octets.data());
  return octets;
}
