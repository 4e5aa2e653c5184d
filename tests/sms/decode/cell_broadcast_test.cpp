#include "tests/support/cell_broadcast.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/failing_malloc.h"
#include "tests/support/records.h"

namespace {

void check_row(const json &row, const cb_decoder &d, uint32_t level) {
  SCOPED_TRACE(d.name + row.dump().substr(0, 200));
  const debug_log log(level);
  const cb_outputs out = decode_cb(d, octets_value(row, "cb"));
  EXPECT_EQ(out.result, row.value("result", 1u));
  EXPECT_EQ(json(out.info), changed(kest_sms_cb_info{}, row, "info"));
  EXPECT_EQ(out.msg_class, &d == CB_DECODERS ? 99 : row.value("msg_class", 4u));
  std::string text(KEST_SMS_CB_TEXT_SIZE, '~');
  if (row.contains("text")) {
    text = hex_value(row, "text");
    text.resize(KEST_SMS_CB_TEXT_SIZE);
  }
  EXPECT_EQ(std::string(out.text.begin(), out.text.end()), text);
  const std::string name = row.contains("by_header") ? "kest_sms_decode_gw_cb_header" : d.name;
  log_lines own = log.lines(); // without those of digits, hexadecimal text and conversion
  std::erase_if(own, [](auto &line) { return !line.starts_with("kest_sms_decode_gw_cb_"); });
  const log_lines line = {name + " " + row.value("line", "")};
  EXPECT_EQ(own, row.contains("line") ? at_level(line, level) : log_lines{});
}

// Pages of real networks, and both sides of each limit. Fields that a row does not name are 0; a
// text that it does not name is left alone.
TEST(CellBroadcast, GivesWhatTheMessageHolds) {
  for (const json &row : vectors("sms/decode/cell_broadcast")) {
    for (const cb_decoder &d : CB_DECODERS) {
      for (const uint32_t level : LOG_LEVELS) {
        check_row(row, d, level);
      }
    }
  }
}

// numbers decodes a message of nothing but two numbers, and returns what follows from them.
auto numbers(bool umts, unsigned serial, unsigned identifier) {
  const auto high = [](unsigned n) {
    return static_cast<uint8_t>(n / 256);
  };
  const auto low = [](unsigned n) {
    return static_cast<uint8_t>(n % 256);
  };
  std::vector<uint8_t> cb = {high(serial), low(serial), high(identifier), low(identifier), 0, 0};
  if (umts) {
    cb = {1, high(identifier), low(identifier), high(serial), low(serial)};
    cb.resize(89);
  }
  const kest_sms_cb_info i = decode_cb(CB_DECODERS[0], cb).info;
  return std::tuple(i.format, i.message_identifier, i.serial_number, i.geographical_scope,
                    i.message_code, i.update_number, i.warning_type, i.emergency_user_alert,
                    i.popup, i.cmas_class, i.cmas_severity, i.cmas_urgency, i.cmas_certainty);
}

// 3GPP TS 23.041, clause 9.4.1.2: all serial numbers and identifiers, in both forms.
TEST(CellBroadcast, Numbers) {
  const struct {
    unsigned first, last;
    int message_class, severity, urgency, certainty;
  } cmas[] = {
      {0, 4369, 0, 0, 0, 0},       {4370, 4370, 0, -1, -1, -1}, {4371, 4371, 1, 0, 0, 0},
      {4372, 4372, 1, 0, 0, 1},    {4373, 4373, 1, 0, 1, 0},    {4374, 4374, 1, 0, 1, 1},
      {4375, 4375, 2, 1, 0, 0},    {4376, 4376, 2, 1, 0, 1},    {4377, 4377, 2, 1, 1, 0},
      {4378, 4378, 2, 1, 1, 1},    {4379, 4379, 3, -1, -1, -1}, {4380, 4380, 4, -1, -1, -1},
      {4381, 4381, 5, -1, -1, -1}, {4382, 4382, 6, -1, -1, -1}, {4383, 4399, -1, -1, -1, -1},
      {4400, 65535, 0, 0, 0, 0}};
  for (const auto &row : cmas) {
    for (unsigned n = row.first; n <= row.last; ++n) {
      const bool etws = n >= 4352 && n <= 4359;
      for (const bool umts : {false, true}) {
        const int format = umts ? 2 : etws ? 3 : 1;
        ASSERT_EQ(numbers(umts, 0xA5C3, n),
                  std::tuple(format, n, 0xA5C3, 2, 0x25C, 3, etws ? n - 4352 : 0, etws, 0,
                             row.message_class, row.severity, row.urgency, row.certainty));
        ASSERT_EQ(numbers(umts, n, 0x1104),
                  std::tuple(umts ? 2 : 3, 0x1104, n, n / 0x4000, n % 0x4000 / 16, n % 16, 4,
                             n / 0x2000 % 2, n / 0x1000 % 2, 0, 0, 0, 0));
      }
    }
  }
}

// 3GPP TS 23.038, clause 5: all octets. The alphabets of a group are those of bits 3 and 2; a
// language of -1 is the octet, a class of -1 its low bits.
TEST(CellBroadcast, DataCodingSchemes) {
  const struct {
    unsigned first, last, alphabets[4];
    int language, msg_class;
  } groups[] = {{0x00, 0x0F, {0, 0, 0, 0}, -1, 4},  {0x10, 0x10, {0, 0, 0, 0}, 16, 4},
                {0x11, 0x11, {2, 2, 2, 2}, 16, 4},  {0x12, 0x1F, {0, 0, 0, 0}, 15, 4},
                {0x20, 0x3F, {0, 0, 0, 0}, -1, 4},  {0x40, 0x4F, {0, 1, 2, 0}, 15, 4},
                {0x50, 0x5F, {0, 1, 2, 0}, 15, -1}, {0x60, 0x6F, {0, 1, 2, 0}, 15, 4},
                {0x70, 0x7F, {0, 1, 2, 0}, 15, -1}, {0x80, 0xEF, {0, 0, 0, 0}, 15, 4},
                {0xF0, 0xFF, {0, 1, 0, 1}, 15, -1}};
  for (const auto &group : groups) {
    for (unsigned dcs = group.first; dcs <= group.last; ++dcs) {
      const std::string octet = hex(std::vector<uint8_t>{static_cast<uint8_t>(dcs)});
      for (const std::string &cb : {"00000032" + octet + "11", "0100320000" + octet + "00 00*82"}) {
        const cb_outputs out = decode_cb(CB_DECODERS[1], octets(cb));
        EXPECT_EQ(out.info.alphabet, group.alphabets[dcs >> 2 & 3]) << cb;
        EXPECT_EQ(out.info.language, group.language < 0 ? int(dcs) : group.language) << cb;
        EXPECT_EQ(out.info.language_chars[2], group.language == 16 ? 13 : 0) << cb;
        EXPECT_EQ(out.msg_class, group.msg_class < 0 ? dcs & 3u : 4u) << cb;
      }
    }
  }
}

TEST(CellBroadcast, NoMemoryIsARefusal) {
  for (const cb_decoder &d : CB_DECODERS) {
    cb_outputs out;
    const uint8_t cb[] = {0x40, 0x11, 0x00, 0x32, 0x0F, 0x11, 0x41};
    mallocs_left = 0;
    out.result = d.decode(cb, sizeof cb, out);
    mallocs_left = -1;
    EXPECT_EQ(out.result, 0u);
    EXPECT_EQ(out.text, cb_outputs().text);
    EXPECT_EQ(out.info.page_number, 1);
  }
}

} // namespace
