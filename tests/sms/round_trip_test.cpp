// What the encoders build, the decoders read back.
#include <random>

#include <gtest/gtest.h>

#include "tests/support/segments.h"
#include "tests/support/sms_decoders.h"

namespace {

constexpr const char *NUMBER = "+491701234567";

// A text as it is sent, and as a receiver shows it.
struct text_pair {
  std::string sent, shown;
};

text_pair some_character(kest_gw_alphabet alphabet, std::mt19937 &random) {
  static const std::string septets = "abcXYZ 019@$_\n\r!\"#%&'()*+,-./:;<=>?\f^{}[~]|\\";
  static const std::string units[] = {"\u0416", "a", "`", "\u00E9", "\u20AC", "\uFFFD"};
  if (alphabet == KEST_GW_ALPHABET_8BIT) { // an octet, shown as the code point of its value
    const auto octet = static_cast<char>(0x80 + random() % 0x40);
    return {std::string(1, octet), {'\xC2', octet}};
  }
  const std::string text = alphabet == KEST_GW_ALPHABET_7BIT
                               ? std::string(1, septets[random() % septets.size()])
                               : units[random() % std::size(units)];
  return {text, text};
}

// A text in stretches of plain ASCII and of what settles its alphabet, so that segments choose
// another one than the whole. Among 8 bit data brackets would be too much for a segment, and every
// fourth octet is ASCII: a decoder has room for 127 characters of two bytes.
text_pair some_text(kest_gw_alphabet alphabet, size_t max_octets, std::mt19937 &random) {
  text_pair text;
  while (true) {
    const kest_gw_alphabet stretch = alphabet * (random() % 2); // or 7 bit
    for (size_t left = random() % 200; left > 0; --left) {
      const bool plain = alphabet == KEST_GW_ALPHABET_8BIT && (stretch == 0 || left % 4 == 0);
      const text_pair next = plain ? text_pair{"a", "a"} : some_character(stretch, random);
      if (text.sent.size() + next.sent.size() > max_octets) {
        return text;
      }
      text.sent += next.sent;
      text.shown += next.shown;
    }
  }
}

TEST(RoundTrip, TextsOfAnyLength) {
  std::mt19937 random(1);
  const auto before = segment_pdu(true, "1", "a", 0, 2, 2); // its reference is in octets 12 and 13
  auto reference = static_cast<uint16_t>((before[12] << 8 | before[13]) + 1);
  for (unsigned run = 0; run < 1500; ++run) {
    const text_pair text = some_text(run % 3, 1 + random() % 1024, random);
    const bool submit = run % 2 == 0;
    const uint32_t is_hex = run % 5 == 0;
    SCOPED_TRACE(hex(text.sent));
    const auto segments = segments_of(is_hex != 0 ? hex(text.sent) : text.sent, is_hex);
    const auto total = static_cast<int32_t>(segments.size());
    std::string read;
    for (int32_t sequence = 1; sequence <= total; ++sequence) {
      const std::string &part = segments[static_cast<size_t>(sequence - 1)];
      const std::string pdu =
          "00" + hex(segment_pdu(submit, NUMBER, part, is_hex, total, sequence));
      const sms_decoder &d = submit ? SUBMIT_V2 : DELIVER_V2;
      sms_outputs out;
      ASSERT_EQ(d.decode(pdu.c_str(), out, &out.udh), 1u) << sequence << " of " << total;
      EXPECT_STREQ(out.address.data(), NUMBER);
      EXPECT_STREQ(out.timestamp.data(), submit ? "~" : SEGMENT_TIME);
      EXPECT_EQ(out.udh.total * 256 + out.udh.sequence, total > 1 ? total * 256 + sequence : 0);
      EXPECT_EQ(out.udh.reference, total > 1 ? reference : 0);
      read += text_of(octets(out.userdata.data()));
    }
    EXPECT_EQ(read, text.shown);
    reference = static_cast<uint16_t>(reference + (total > 0));
  }
}

} // namespace
