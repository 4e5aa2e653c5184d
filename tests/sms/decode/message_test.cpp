#include "tests/support/sms_decoders.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/records.h"

namespace {

json taken(const std::vector<char> &text) {
  return text.empty() || text[0] == '~' ? json() : json(text.data());
}

bool applies(const json &row, const sms_decoder &d) {
  return row["kind"] == d.kind && row.value("only", d.name) == d.name;
}

// Messages of real networks, and of both sides of each limit. "address" is the sender or the
// destination; what is missing in a row is left alone by the decoders. "trace" holds the decoder's
// own trace lines.
TEST(DecodeMessage, GivesWhatTheMessageHolds) {
  for (const json &row : vectors("sms/decode/message")) {
    for (const sms_decoder &d : SMS_DECODERS) {
      if (!applies(row, d)) {
        continue;
      }
      SCOPED_TRACE(d.name + row.dump());
      const debug_log log(row.contains("trace") ? KEST_LOG_DEBUG : KEST_LOG_ERROR);
      sms_outputs out;
      if (row.contains("null")) {
        out.smsc = out.address = out.timestamp = out.discharge_time = {};
      }
      out.udh_no_concat = row.value("flag", 0u);
      const std::string line = row.value("line", "");
      const auto pdu = exact_text(hex_value(row, "pdu"));
      EXPECT_EQ(d.decode(pdu.get(), out, row.contains("null_udh") ? nullptr : &out.udh),
                line.empty());
      EXPECT_EQ(taken(out.smsc), row.value("smsc", json()));
      EXPECT_EQ(taken(out.address), row.value("address", json()));
      EXPECT_EQ(taken(out.timestamp), row.value("timestamp", json()));
      EXPECT_EQ(taken(out.discharge_time), row.value("discharge_time", json()));
      EXPECT_EQ(taken(out.status), row.value("status", json()));
      const std::string userdata = row.contains("userdata") ? hex_value(row, "userdata") : "";
      EXPECT_EQ(std::string(out.userdata.begin(), out.userdata.end()),
                line.empty() && !row.contains("no_userdata")
                    ? userdata + std::string(511 - userdata.size(), '\0')
                    : std::string(511, '~'));
      EXPECT_EQ(out.msg_class, d.v2 ? row["msg_class"].get<uint32_t>() : 99);
      EXPECT_EQ(out.udh_no_concat,
                d.decode == DELIVER_V2.decode ? row.value("udh_no_concat", 0u) : 0);
      EXPECT_EQ(json(out.udh), changed(kest_sms_udh_info{}, row, "udh"));
      log_lines own = log.lines(); // without those of digits and headers
      std::erase_if(own, [&](auto &text) { return !text.starts_with(d.name + std::string(" ")); });
      log_lines expected = row.value("trace", log_lines{});
      if (!line.empty()) {
        expected.push_back(line);
      }
      for (std::string &text : expected) {
        text.insert(0, d.name + std::string(" "));
      }
      EXPECT_EQ(own, expected);
    }
  }
}

// 3GPP TS 23.038, clause 4: alphabet and class of all octets, shown by one octet E8: "h" in 7 bit
// text, "è" in 8 bit data, U+E800 in UCS-2.
TEST(DecodeMessage, DataCodingSchemes) {
  const char *const texts[] = {"68", "c3a8", "eea080", "68"};
  for (unsigned dcs = 0; dcs < 256; ++dcs) {
    SCOPED_TRACE(dcs);
    const unsigned group = dcs >> 4;
    const bool has_class = group == 1 || group == 3 || group == 15;
    const unsigned general = dcs >> 2 & 3, closing = group == 15 ? general & 1 : 0;
    const unsigned alphabet = group < 4 ? general : group == 14 ? 2 : closing;
    const std::string octet = hex(std::vector<uint8_t>{static_cast<uint8_t>(dcs)});
    const std::string stamp = "12103211050223";
    const std::string deliver = "00040181F100" + octet + stamp + "01E8";
    const std::string submit = "0001000181F100" + octet + "01E8";
    const std::string report = "0006000181F1" + stamp + stamp + "0006" + octet + "01E8";
    for (const auto &[d, pdu] :
         {std::pair(DELIVER_V2, deliver), {SUBMIT_V2, submit}, {REPORT_V2, report}}) {
      const debug_log log(KEST_LOG_DEBUG);
      sms_outputs out;
      EXPECT_EQ(d.decode(pdu.c_str(), out, nullptr), 1u);
      EXPECT_STREQ(out.userdata.data(), texts[alphabet]);
      EXPECT_EQ(out.msg_class, has_class ? dcs & 3 : 4);
      const std::string name = std::string(d.name) + " alphabet: ";
      EXPECT_EQ(log.lines().at(0), name + std::to_string(alphabet));
      EXPECT_EQ(log.lines().at(1), name + std::to_string(alphabet % 3));
    }
  }
}

// Status reports with all changes of an octet, other and longer messages with some. Each also ends
// in half an octet.
TEST(DecodeMessage, HostileInputEndsInAResult) {
  for (const json &row : vectors("sms/decode/message")) {
    const std::vector<uint8_t> whole = octets_value(row, "pdu");
    const unsigned stride = row["kind"] == "status_report" && whole.size() < 100 ? 1 : 51;
    for (const sms_decoder &d : SMS_DECODERS) {
      if (row["kind"] == d.kind) {
        hostile_inputs(whole, stride, [&](std::span<const uint8_t> pdu) {
          for (const char *end : {"", "7"}) {
            sms_outputs out;
            EXPECT_LE(d.decode(exact_text(hex(pdu) + end).get(), out, &out.udh), 1u);
          }
        });
      }
    }
  }
}

} // namespace
