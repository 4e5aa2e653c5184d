// What the encoders build, the decoders read back.
#include <random>

#include <gtest/gtest.h>

#include "kest/kest.h"
#include "sms/encode/counters.h"
#include "tests/support/octets.h"
#include "tests/support/sms_decoders.h"

namespace {

constexpr const char *NUMBER = "+491701234567";
constexpr const char *TIME = "2026/11/22,21:30:05-14";

// A character as it is sent, and as a receiver shows it. The first of an alphabet settles it.
struct character {
  std::string sent, shown;
};

character pick(kest_gw_alphabet alphabet, bool first, std::mt19937 &random) {
  static const std::string septets = "abcXYZ 019@$_\n\r!\"#%&'()*+,-./:;<=>?\f^{}[~]|\\";
  static const std::string units[] = {"\u0416", "a", "`", "\u00E9", "\u20AC", "\uFFFD"};
  if (alphabet == KEST_GW_ALPHABET_8BIT) { // an octet, shown as the code point of its value
    const auto octet = static_cast<char>(0x80 + random() % 0x40);
    return {std::string(1, octet), {'\xC2', octet}};
  }
  const std::string text = alphabet == KEST_GW_ALPHABET_7BIT
                               ? std::string(1, septets[random() % septets.size()])
                               : units[first ? 0 : random() % std::size(units)];
  return {text, text};
}

std::string encode(bool submit, const std::string &text, const kest_sms_encode_options &options) {
  std::vector<uint8_t> pdu(1 + (submit ? KEST_SMS_SUBMIT_PDU_SIZE : KEST_SMS_DELIVER_PDU_SIZE));
  const auto size = static_cast<uint32_t>(pdu.size() - 1);
  const auto exact = exact_text(text);
  pdu.resize(1 + (submit ? kest_sms_encode_gw_submit_pdu_detail(NUMBER, exact.get(), 1, 0, &options,
                                                                &pdu[1], size)
                         : kest_sms_encode_gw_deliver_pdu_detail(NUMBER, exact.get(), TIME, 1, 0,
                                                                 &options, &pdu[1], size)));
  return hex(pdu);
}

TEST(RoundTrip, EveryAlphabetWithAndWithoutHeader) {
  std::mt19937 random(20261122);
  for (unsigned run = 0; run < 6000; ++run) {
    const bool submit = run % 2 == 0;
    character text;
    for (size_t left = random() % (run % 3 == KEST_GW_ALPHABET_UCS2 ? 67 : 77); left > 0; --left) {
      const character next = pick(run % 3, text.sent.empty(), random);
      text.sent += next.sent;
      text.shown += next.shown;
    }
    SCOPED_TRACE(hex(text.sent));
    const kest_sms_encode_options options = {
        static_cast<uint16_t>(random()), static_cast<uint32_t>(random() % 5), run % 4 < 2, 3, 2};
    const sms_decoder &d = submit ? SUBMIT_V2 : DELIVER_V2;
    sms_outputs out;
    ASSERT_EQ(d.decode(encode(submit, text.sent, options).c_str(), out, &out.udh), 1u);
    EXPECT_EQ(octets(out.userdata.data()), octets(hex(text.shown)));
    EXPECT_STREQ(out.address.data(), NUMBER);
    EXPECT_STREQ(out.timestamp.data(), submit ? "~" : TIME);
    EXPECT_EQ(out.msg_class, options.msg_class);
    const bool segment = options.concatenated != 0;
    EXPECT_EQ(out.udh.reference, segment ? options.reference : 0);
    EXPECT_EQ(out.udh.total * 10 + out.udh.sequence, segment ? 32 : 0);
  }
}

// A text in stretches of plain ASCII and of what settles its alphabet, so that segments choose
// another one than the whole. Among 8 bit data brackets would be too much for a segment, and every
// fourth octet is ASCII: a decoder has room for 127 characters of two bytes.
character mixed_text(kest_gw_alphabet alphabet, size_t max_octets, std::mt19937 &random) {
  character text;
  while (true) {
    const kest_gw_alphabet stretch = alphabet * (random() % 2); // or 7 bit
    for (size_t left = random() % 200; left > 0; --left) {
      const bool plain = alphabet == KEST_GW_ALPHABET_8BIT && (stretch == 0 || left % 4 == 0);
      const character next = plain ? character{"a", "a"} : pick(stretch, left % 4 == 1, random);
      if (text.sent.size() + next.sent.size() > max_octets) {
        return text;
      }
      text.sent += next.sent;
      text.shown += next.shown;
    }
  }
}

std::vector<std::string> segments_of(const std::string &text, uint32_t is_hex) {
  std::vector<std::string> segments;
  for (size_t at = 0; at < text.size(); at += segments.back().size()) {
    const auto rest = exact_text(text.substr(at));
    uint16_t len = 0;
    const int32_t units = kest_sms_get_long_message_segment(rest.get(), is_hex, &len);
    EXPECT_TRUE(len > 0 && units <= 152) << hex(rest.get());
    segments.push_back(text.substr(at, std::max<size_t>(len, 1)));
  }
  return segments;
}

TEST(RoundTrip, LongTextsSegmentBySegment) {
  std::mt19937 random(1);
  for (unsigned run = 0; run < 1500; ++run) {
    const character text = mixed_text(run % 3, 1 + random() % 1024, random);
    const bool submit = run % 2 == 0;
    const uint32_t is_hex = run % 5 == 0;
    SCOPED_TRACE(hex(text.sent));
    const std::vector<std::string> segments =
        segments_of(is_hex != 0 ? hex(text.sent) : text.sent, is_hex);
    const auto total = static_cast<int32_t>(segments.size());
    const uint16_t reference = kest_sms_concat_reference = static_cast<uint16_t>(random());
    std::string read;
    for (int32_t sequence = 1; sequence <= total; ++sequence) {
      const auto part = exact_text(segments[static_cast<size_t>(sequence - 1)]);
      std::vector<uint8_t> pdu(1 + (submit ? 158 : 163)); // the octet 0: no service centre
      const int32_t size =
          submit ? kest_sms_encode_long_gw_submit_pdu(NUMBER, part.get(), 0, is_hex, total,
                                                      sequence, &pdu[1], 158)
                 : kest_sms_encode_long_gw_deliver_pdu(NUMBER, part.get(), TIME, 0, is_hex, total,
                                                       sequence, &pdu[1], 163);
      pdu.resize(1 + static_cast<size_t>(size));
      sms_outputs out;
      const sms_decoder &d = submit ? SUBMIT_V2 : DELIVER_V2;
      ASSERT_EQ(d.decode(hex(pdu).c_str(), out, &out.udh), 1u) << sequence << " of " << total;
      EXPECT_EQ(out.udh.total, total > 1 ? total : 0);
      EXPECT_EQ(out.udh.sequence, total > 1 ? sequence : 0);
      EXPECT_EQ(out.udh.reference, total > 1 ? reference : 0);
      read += text_of(octets(out.userdata.data()));
    }
    EXPECT_EQ(read, text.shown);
    EXPECT_EQ(kest_sms_concat_reference, static_cast<uint16_t>(reference + (total > 0)));
  }
}

} // namespace
