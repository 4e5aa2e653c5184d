// What the encoders build, the decoders read back.
#include <random>

#include <gtest/gtest.h>

#include "kest/kest.h"
#include "tests/support/octets.h"

namespace {

constexpr const char *NUMBER = "+491701234567";
constexpr const char *TIME = "2026/11/22,21:30:05-14";

// A text of `size` septets or octets in the alphabet that its first character settles.
std::string some_text(kest_gw_alphabet alphabet, size_t size, std::mt19937 &random) {
  static const std::string septets = "abcXYZ 019@$_\n\r!\"#%&'()*+,-./:;<=>?";
  static const std::string escapes = "\f^{}[~]|\\";
  static const std::vector<std::string> units = {"a", "`", "\u00E9", "\u0416", "\u20AC", "\uFFFD"};
  std::string text = alphabet == KEST_GW_ALPHABET_UCS2 && size >= 2 ? "\u0416" : "";
  for (size_t left = size - (text.empty() ? 0 : 2); left > 0;) {
    if (alphabet == KEST_GW_ALPHABET_8BIT) {
      text += static_cast<char>(0x80 + random() % 0x40);
      left -= 1;
    } else if (alphabet == KEST_GW_ALPHABET_UCS2) {
      text += left >= 2 ? units[random() % units.size()] : "";
      left -= left >= 2 ? 2 : 1;
    } else {
      const bool escape = left >= 2 && random() % 4 == 0;
      text += escape ? escapes[random() % escapes.size()] : septets[random() % septets.size()];
      left -= escape ? 2 : 1;
    }
  }
  return text;
}

// What a receiver shows: 8 bit data comes back as the UTF-8 form of its octets.
std::string shown(kest_gw_alphabet alphabet, const std::string &text) {
  std::string out;
  for (const char c : text) {
    out += alphabet == KEST_GW_ALPHABET_8BIT ? std::string{'\xC2', c} : std::string(1, c);
  }
  return out;
}

TEST(RoundTrip, EveryAlphabetWithAndWithoutHeader) {
  std::mt19937 random(20261122);
  for (unsigned run = 0; run < 6000; ++run) {
    const kest_gw_alphabet alphabet = run % 3;
    const bool submit = run % 2 == 0, segment = run / 6 % 2 == 0;
    const size_t limit = alphabet == KEST_GW_ALPHABET_7BIT ? 152 : 132;
    const std::string text = some_text(alphabet, random() % (limit + 1), random);
    const std::string wanted = shown(alphabet, text);
    if (wanted.size() > 254 || text.size() > 255) {
      continue; // more than an encoder takes or a decoder gives
    }
    SCOPED_TRACE(hex(text));
    const kest_sms_encode_options options = {static_cast<uint16_t>(random()),
                                             static_cast<uint32_t>(random() % 5), segment, 3, 2};
    std::vector<uint8_t> pdu(1 + (submit ? KEST_SMS_SUBMIT_PDU_SIZE : KEST_SMS_DELIVER_PDU_SIZE));
    const auto size = static_cast<uint32_t>(pdu.size() - 1);
    pdu.resize(1 + (submit ? kest_sms_encode_gw_submit_pdu_detail(NUMBER, text.c_str(), 1, 0,
                                                                  &options, &pdu[1], size)
                           : kest_sms_encode_gw_deliver_pdu_detail(NUMBER, text.c_str(), TIME, 1, 0,
                                                                   &options, &pdu[1], size)));
    char address[KEST_SMS_ADDRESS_TEXT_SIZE], time[KEST_SMS_TIME_TEXT_SIZE] = "";
    char userdata[KEST_SMS_USERDATA_TEXT_SIZE];
    kest_sms_udh_info udh = {};
    kest_sms_msg_class msg_class = 99;
    uint32_t flag = 0;
    const std::string in = hex(pdu);
    ASSERT_EQ(submit ? kest_sms_decode_gw_submit_pdu_v2(in.c_str(), nullptr, address, userdata,
                                                        &udh, &msg_class)
                     : kest_sms_decode_gw_deliver_pdu_v2(in.c_str(), nullptr, address, time,
                                                         userdata, &udh, &msg_class, &flag),
              1u);
    EXPECT_EQ(octets(userdata), octets(hex(wanted)));
    EXPECT_STREQ(address, NUMBER);
    EXPECT_STREQ(time, submit ? "" : TIME);
    EXPECT_EQ(msg_class, options.msg_class);
    EXPECT_EQ(udh.reference, segment ? options.reference : 0);
    EXPECT_EQ(udh.total * 10 + udh.sequence, segment ? 32 : 0);
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
    std::vector<uint8_t> submit(KEST_SMS_SUBMIT_PDU_SIZE), deliver(KEST_SMS_DELIVER_PDU_SIZE);
    const kest_sms_encode_options options = {1, 0, static_cast<uint8_t>(run % 3), 2, 1};
    EXPECT_LE(kest_sms_encode_gw_submit_pdu_detail(number.get(), text.get(), 1, run % 5 == 0,
                                                   &options, submit.data(), 165),
              165u);
    EXPECT_LE(kest_sms_encode_gw_deliver_pdu_detail(number.get(), text.get(), text.get(), 1,
                                                    run % 5 == 0, &options, deliver.data(), 170),
              170u);
  }
}

} // namespace
