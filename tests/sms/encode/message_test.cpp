#include "kest/sms_encode.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

constexpr const char *TIME = "2011/12/31,23:59:58 08";

int64_t encode(const json &row, uint8_t *pdu, uint32_t size) {
  const std::string function = row["function"], time = row.value("time", json(TIME)).dump();
  const auto number = exact_text(row["number"]);
  const auto text = exact_text(text_of(octets_value(row, "text")));
  const auto stamp = exact_text(time.substr(1, time.size() - 2));
  const char *const to = number.get(), *const said = text.get();
  const char *const timestamp = time == "null" ? nullptr : stamp.get();
  const uint32_t flag = row.value("flag", 0u), is_hex = row.value("is_hex", 0u);
  const json o = row.value("options", json{0, 4, 0, 0, 0}), s = row.value("segment", json{0, 0});
  const kest_sms_encode_options options = {o[0], o[1], o[2], o[3], o[4]};
  const int32_t sequence = s[0], total = s[1];
  if (function == "submit") {
    return kest_sms_encode_gw_submit_pdu(to, said, flag, is_hex, pdu, size);
  }
  if (function == "submit_with_validity") {
    return kest_sms_encode_gw_submit_pdu_with_validity(to, said, flag, is_hex, pdu, size,
                                                       row["validity"]);
  }
  if (function == "submit_detail") {
    return kest_sms_encode_gw_submit_pdu_detail(to, said, flag, is_hex, &options, pdu, size);
  }
  if (function == "submit_long") {
    return kest_sms_encode_long_gw_submit_pdu(to, said, flag, is_hex, total, sequence, pdu, size);
  }
  if (function == "submit_long_with_validity") {
    return kest_sms_encode_long_gw_submit_pdu_with_validity(to, said, flag, is_hex, total, sequence,
                                                            pdu, size, row["validity"]);
  }
  if (function == "deliver_long") {
    return kest_sms_encode_long_gw_deliver_pdu(to, said, timestamp, flag, is_hex, total, sequence,
                                               pdu, size);
  }
  return function == "deliver"
             ? kest_sms_encode_gw_deliver_pdu(to, said, timestamp, flag, is_hex, pdu, size)
             : kest_sms_encode_gw_deliver_pdu_detail(to, said, timestamp, flag, is_hex, &options,
                                                     pdu, size);
}

// The counters of the library: octet 1 of a SUBMIT, and octets 12 and 13 of a segment of it.
struct counters {
  uint8_t message = 0;
  uint16_t concatenation = 0;
};

// next_counters encodes the last of two segments and so steps both counters.
counters next_counters() {
  uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
  kest_sms_encode_long_gw_submit_pdu("1", "a", 0, 0, 2, 2, pdu, sizeof pdu);
  return {pdu[1], static_cast<uint16_t>(pdu[12] << 8 | pdu[13])};
}

const counters AT_LOAD = next_counters();

TEST(EncodeMessage, CountersBeginAt0AndWrap) {
  EXPECT_EQ(AT_LOAD.message, 0);
  EXPECT_EQ(AT_LOAD.concatenation, 0);
  counters last = next_counters();
  for (unsigned i = 0; i <= UINT16_MAX; ++i) {
    const counters next = next_counters();
    ASSERT_EQ(next.message, static_cast<uint8_t>(last.message + 1));
    ASSERT_EQ(next.concatenation, static_cast<uint16_t>(last.concatenation + 1));
    last = next;
  }
}

// A failure leaves in the PDU what it had written, "left". The counters stand in both as "MR" and
// "REFR". The first steps with each SUBMIT without options, also one that fails; the second where
// a row "ends" a message. The result of the long encoders is signed, but never below 0.
TEST(EncodeMessage, GivesThePduOctetByOctet) {
  counters now = next_counters();
  ++now.message;
  ++now.concatenation;
  const auto counted = [&now](std::string text) {
    const std::string both =
        hex(std::vector<uint8_t>{now.message, static_cast<uint8_t>(now.concatenation >> 8),
                                 static_cast<uint8_t>(now.concatenation)});
    for (const auto &[mark, value] :
         {std::pair("REFR", both.substr(2)), {"MR", both.substr(0, 2)}}) {
      if (const size_t at = text.find(mark); at != std::string::npos) {
        text.replace(at, value.size(), value);
      }
    }
    return text;
  };
  for (const json &row : vectors("sms/encode/message")) {
    for (const uint32_t level : LOG_LEVELS) {
      SCOPED_TRACE(row.dump());
      const debug_log log(level);
      const std::string function = row["function"];
      const bool submit = function.starts_with("submit");
      const uint32_t size = submit ? KEST_SMS_SUBMIT_PDU_SIZE : KEST_SMS_DELIVER_PDU_SIZE;
      std::vector<uint8_t> out(size, 0xEE); // exact: the sanitizer sees one octet more
      const std::string pdu = counted(hex_value(row, "pdu"));
      const std::string written = pdu + counted(compact(row.value("left", "")));
      EXPECT_EQ(encode(row, out.data(), row.value("size", size)),
                static_cast<int64_t>(pdu.size() / 2));
      EXPECT_EQ(hex(out), written + repeat("EE", size - written.size() / 2));
      const int step = submit && function != "submit_detail" ? 1 : 0;
      now.message = static_cast<uint8_t>(now.message + step);
      now.concatenation = static_cast<uint16_t>(now.concatenation + row.value("ends", 0));
      if ((level & KEST_LOG_DEBUG) == 0 || row.contains("lines")) {
        EXPECT_EQ(log.lines(), at_level(row.value("lines", log_lines{}), level));
      }
    }
  }
}

TEST(EncodeMessage, ServiceCentre) {
  const struct {
    const char *number, *field;
    size_t size;
  } cases[] = {
      {"+4917", "03919471", 12},
      {"4917123", "0581947121F3", 12},
      {"12x", "038121F2", 12},
      {"+", "0191", 12},
      {"", "", 12},
      {"4917", "028194", 3},
      {"4917", "0181", 2},
      {"12345678901234567890123", "0B8121436587092143658709", 12},
  };
  for (const auto &c : cases) {
    const std::string field = c.field;
    std::vector<uint8_t> out(c.size, 0xEE);
    EXPECT_EQ(kest_sms_encode_gw_smsc(exact_text(c.number).get(), out.data(),
                                      static_cast<int32_t>(c.size)),
              static_cast<int32_t>(field.size() / 2));
    EXPECT_EQ(hex(out), field + repeat("EE", c.size - field.size() / 2)) << c.number;
  }
}

// The first byte that is not in the 7 bit alphabet decides, at each place of a word.
TEST(EncodeMessage, AlphabetOfAText) {
  const struct {
    int data_coding;
    std::vector<std::string> texts;
  } cases[] = {
      {0, {"", "a[{}]~\\|^\f\x7F"}},
      {4, {"\x80", "a\xBF", "\x80\u00E9", "\xBF`"}},
      {8, {"a`", "\u00E9", "\u20AC", "\u00E9\x80", "`\x80", "\xFF", "\xC0", "\xE0"}},
  };
  for (const auto &c : cases) {
    for (const std::string &text : c.texts) {
      for (size_t i = 0; i <= 16; ++i) {
        const std::string plain(i, 'a');
        uint8_t pdu[KEST_SMS_SUBMIT_PDU_SIZE];
        kest_sms_encode_gw_submit_pdu("1", (plain + text + plain).c_str(), 0, 0, pdu, sizeof pdu);
        EXPECT_EQ(pdu[6], c.data_coding) << hex(text) << ' ' << i;
      }
    }
  }
}

} // namespace
