// What the encoders build, the decoders read back.
#include <random>

#include <gtest/gtest.h>

#include "kest/kest.h"
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

// Any number and text end in a result; the buffers have their documented sizes to the octet.
TEST(RoundTrip, AnyNumberAndTextEndInAResult) {
  std::mt19937 random(7);
  const auto some_bytes = [&](size_t max, unsigned top) {
    std::string text;
    for (size_t left = random() % max; left > 0; --left) {
      text += static_cast<char>(1 + random() % top);
    }
    return exact_text(text);
  };
  for (unsigned run = 0; run < 4000; ++run) {
    const auto number = some_bytes(30, 255), text = some_bytes(300, run % 2 == 0 ? 255 : 127);
    const uint32_t is_hex = run % 5 == 0;
    std::vector<uint8_t> submit(KEST_SMS_SUBMIT_PDU_SIZE), deliver(KEST_SMS_DELIVER_PDU_SIZE);
    const kest_sms_encode_options options = {1, 0, static_cast<uint8_t>(run % 3), 2, 1};
    EXPECT_LE(kest_sms_encode_gw_submit_pdu_detail(number.get(), text.get(), 1, is_hex, &options,
                                                   submit.data(), 165),
              165u);
    EXPECT_LE(kest_sms_encode_gw_deliver_pdu_detail(number.get(), text.get(), text.get(), 1, is_hex,
                                                    &options, deliver.data(), 170),
              170u);
  }
}

} // namespace
