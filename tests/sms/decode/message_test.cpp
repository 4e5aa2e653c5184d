#include "tests/support/sms_decoders.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/records.h"

namespace {

json taken(const std::vector<char> &text) {
  return text.empty() || text[0] == '~' ? json() : json(text.data());
}

// The lines that a row expects of a decoder: its own without a name, those of other functions with
// theirs.
log_lines expected_lines(const json &row, const char *name) {
  log_lines lines = row.value(row.contains("lines") ? "lines" : "errors", log_lines{});
  if (row.contains("line")) {
    lines.push_back(row["line"]);
  }
  for (std::string &line : lines) {
    line.insert(0, line.starts_with("kest_") ? "" : name + std::string(" "));
  }
  return lines;
}

void check_row(const json &row, const sms_decoder &d, uint32_t level) {
  SCOPED_TRACE(d.name + row.dump());
  const debug_log log(level);
  sms_outputs out;
  if (row.contains("null")) {
    out.smsc = out.address = out.timestamp = out.discharge_time = {};
  }
  out.udh_no_concat = row.value("flag", 0u);
  const bool refused = row.contains("line");
  const auto pdu = exact_text(hex_value(row, "pdu"));
  EXPECT_EQ(d.decode(pdu.get(), out, row.contains("null_udh") ? nullptr : &out.udh), !refused);
  EXPECT_EQ(taken(out.smsc), row.value("smsc", json()));
  EXPECT_EQ(taken(out.address), row.value("address", json()));
  EXPECT_EQ(taken(out.timestamp), row.value("timestamp", json()));
  EXPECT_EQ(taken(out.discharge_time), row.value("discharge_time", json()));
  EXPECT_EQ(taken(out.status), row.value("status", json()));
  std::string userdata = row.contains("userdata") ? hex_value(row, "userdata") : "";
  userdata.resize(KEST_SMS_USERDATA_TEXT_SIZE, '\0');
  EXPECT_EQ(std::string(out.userdata.begin(), out.userdata.end()),
            refused || row.contains("no_userdata") ? std::string(userdata.size(), '~') : userdata);
  EXPECT_EQ(out.msg_class, d.v2 ? row["msg_class"].get<uint32_t>() : 99);
  EXPECT_EQ(out.udh_no_concat, d.decode == DELIVER_V2.decode ? row.value("udh_no_concat", 0u) : 0);
  EXPECT_EQ(json(out.udh), changed(kest_sms_udh_info{}, row, "udh"));
  if ((level & KEST_LOG_DEBUG) == 0 || row.contains("lines")) {
    log_lines lines = log.lines(); // without those of digits, if none is named
    std::erase_if(lines, [&](auto &line) {
      return !row.contains("digits") && line.starts_with("kest_binary_to_hexchar ");
    });
    EXPECT_EQ(lines, at_level(expected_lines(row, d.name), level));
  }
}

// Messages of real networks, and of both sides of each limit. "address" is the sender or the
// destination; what is missing in a row is left alone by the decoders. "line" is that of a refusal,
// and before it come "lines", or "errors" where traces are left out.
TEST(DecodeMessage, GivesWhatTheMessageHolds) {
  for (const json &row : vectors("sms/decode/message")) {
    for (const sms_decoder &d : SMS_DECODERS) {
      if (row["kind"] == d.kind && row.value("only", d.name) == d.name) {
        for (const uint32_t level : LOG_LEVELS) {
          check_row(row, d, level);
        }
      }
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

// 3GPP TS 23.040, clause 9.2.3.24: both sides of the lengths that an information element may have.
// A length of 253 and more can end the walk by itself.
TEST(DecodeMessage, LengthsOfInformationElements) {
  const struct {
    std::vector<unsigned> identifiers;
    unsigned least, most;
  } cases[] = {
      {{0x00, 0x0A}, 3, 252},
      {{0x05, 0x08}, 4, 252},
      {{0x01, 0x04, 0x0B}, 2, 252},
      {{0x0C, 0x14}, 0, 252},
      {{0x0D}, 2, 2},
      {{0x0E, 0x10}, 129, 129},
      {{0x0F, 0x11}, 33, 33},
      {{0x12}, 3, 137},
      {{0x13, 0x20}, 1, 1},
      {{0x02, 0x03, 0x06, 0x07, 0x09, 0x15, 0x1F, 0x21, 0x70, 0xFF}, 0, 226},
  };
  const std::string name = "kest_decode_user_data_header ";
  for (const auto &c : cases) {
    for (const unsigned iei : c.identifiers) {
      for (const unsigned length : {c.least - 1, c.least, c.most, c.most + 1}) {
        if (length > 252) {
          continue;
        }
        // An octet of 1 satisfies a concatenation, and 1 x (length - 3) the size of a picture.
        std::vector<uint8_t> pdu = octets("00440181F1000412103211050223 8C 02 000001 01 00 01");
        pdu[16] = static_cast<uint8_t>(iei);
        pdu[17] = static_cast<uint8_t>(length);
        pdu[20] = static_cast<uint8_t>(iei == 0x12 ? length - 3 : 1);
        const debug_log log(KEST_LOG_ERROR);
        sms_outputs out;
        EXPECT_EQ(DELIVER.decode(hex(pdu).c_str(), out, &out.udh), 1u);
        log_lines lines = log.lines();
        std::erase_if(lines, [&](auto &line) { return !line.starts_with(name); });
        const bool fits = length >= c.least && length <= c.most;
        const std::string fault = "UDH invalid data length = " + std::to_string(length) + " !!!";
        const std::string size = "UDH Header pic size value mismatch with heigt and weight !!!";
        EXPECT_EQ(lines,
                  fits ? log_lines{} : log_lines{name + (iei == 0x12 && length < 3 ? size : fault)})
            << iei;
      }
    }
  }
}

} // namespace
