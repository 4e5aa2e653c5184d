#include "sim/access.h"

#include <gtest/gtest.h>

#include "tests/support/records.h"
#include "tests/support/sim.h"

namespace {

const json NEVER = {1, 0};

// file_with returns a record with these rules, and no other field changed.
json file_with(const json &rules) {
  json file = untouched_file();
  for (const char *rule : {"read", "update", "increase", "deactivate", "activate"}) {
    file[rule] = rules.value(rule, NEVER);
  }
  return file;
}

// Rules that a row does not name are "never". From the size "from" on, each prefix gives the same.
TEST(Access, ExpandedRules) {
  for (const json &row : vectors("sim/access")) {
    const std::vector<uint8_t> value = octets_value(row, "value");
    for (size_t size = row.value("from", value.size()); size <= value.size(); ++size) {
      EXPECT_EQ(json(decode_rules(std::span(value).first(size))), file_with(row["rules"]))
          << row["what"] << ' ' << size;
    }
  }
}

constexpr struct {
  const char *rule;
  unsigned bit;
} SELECTORS[] = {{"read", 0x01}, {"update", 0x02}, {"deactivate", 0x08}, {"activate", 0x10}};

TEST(Access, AllModesOfExpandedRules) {
  for (unsigned mode = 0; mode < 256; ++mode) {
    json named = json::object();
    for (const auto &selector : SELECTORS) {
      named[selector.rule] = (mode & selector.bit) != 0 ? json({0, 0}) : NEVER;
    }
    if ((mode & 0x32) == 0x32) {
      named = {{"increase", {0, 0}}};
    }
    for (const uint8_t tag : {uint8_t{0x80}, uint8_t{0x84}}) {
      const std::vector<uint8_t> value = {tag, 1, static_cast<uint8_t>(mode), 0x90, 0};
      EXPECT_EQ(json(decode_rules(value)), file_with(named)) << mode;
    }
  }
}

// ETSI TS 102 221, table 9.3: all key references, alone, and after application PIN 1.
TEST(Access, AllKeyReferences) {
  std::map<unsigned, unsigned> bits = {{0x11, 0x4}};
  for (unsigned i = 0; i < 8; ++i) {
    bits[0x01 + i] = 0x1;
    bits[0x81 + i] = 0x2;
  }
  for (unsigned i = 0; i < 5; ++i) {
    bits[0x0A + i] = 0x10u << i;
    bits[0x8A + i] = 0x200u << i;
  }
  for (unsigned key = 0; key < 256; ++key) {
    const std::string octet = hex(std::vector<uint8_t>{static_cast<uint8_t>(key)});
    const unsigned bit = bits.contains(key) ? bits[key] : 0;
    const auto read = [&](const std::string &value) {
      return json(decode_rules(octets("800101" + value + octet)).read);
    };
    EXPECT_EQ(read("A4038301"), bit != 0 ? json({4, bit}) : NEVER) << key;
    EXPECT_EQ(read("A00AA403830101A4038301"), bit != 0 ? json({3, bit | 1}) : NEVER) << key;
    EXPECT_EQ(read("AF0AA403830101A4038301"), bit != 0 ? json({2, bit | 1}) : NEVER) << key;
  }
}

TEST(Access, AllNibbles) {
  const std::vector<json> known = {{0, 0},      {4, 0x0001}, {4, 0x0002}, NEVER,       {4, 0x0010},
                                   {4, 0x0020}, {4, 0x0040}, {4, 0x0080}, {4, 0x0100}, {4, 0x0200},
                                   {4, 0x0400}, {4, 0x0800}, {4, 0x1000}, {4, 0x2000}, {4, 0x4000}};
  for (unsigned nibble = 0; nibble < 256; ++nibble) {
    kest_sim_access_condition rule = {9, 9};
    kest_sim_decode_access_nibble(static_cast<uint8_t>(nibble), rule);
    EXPECT_EQ(json(rule), nibble < known.size() ? known[nibble] : NEVER) << nibble;
  }
}

TEST(Access, AllCompactConditions) {
  for (unsigned condition = 0; condition < 256; ++condition) {
    kest_sim_access_condition rule = {9, 0x4010};
    kest_sim_decode_compact_rule(static_cast<uint8_t>(condition), rule);
    const std::map<unsigned, json> known = {
        {0x00, {0, 0}}, {0x10, {3, 0x4011}}, {0x90, {3, 0x4010}}, {0xFF, {1, 0}}};
    EXPECT_EQ(json(rule), known.contains(condition) ? known.at(condition) : json({9, 0x4010}));
  }
}

// All access modes with 0 to 7 conditions. The last condition is for reading, the one before it for
// updating, and so on, whatever the mode says of the others.
TEST(Access, AllModesOfCompactRules) {
  const uint8_t conditions[] = {0x90, 0x11, 0x10, 0x00, 0x90, 0x10, 0x90}; // 7th to last one
  const json with_count[][8] = {
      {NEVER, {3, 16}, {3, 16}, {3, 16}, {3, 16}, {3, 16}, {3, 16}, {3, 16}},
      {NEVER, NEVER, {3, 1}, {3, 1}, {3, 1}, {3, 1}, {3, 1}, {3, 1}},
      {NEVER, NEVER, NEVER, {3, 16}, {3, 16}, {3, 16}, {3, 16}, {3, 16}},
      {NEVER, NEVER, NEVER, NEVER, {0, 0}, {0, 0}, {0, 0}, {0, 0}}};
  for (unsigned mode = 0; mode < 256; ++mode) {
    for (size_t count = 0; count <= 7; ++count) {
      std::vector<uint8_t> value(1 + count, static_cast<uint8_t>(mode));
      std::copy_n(std::end(conditions) - count, count, value.begin() + 1);
      kest_sim_file_info info = untouched_file();
      kest_sim_decode_compact_attributes({value}, info);
      json named = json::object();
      for (size_t i = 0; i < std::size(SELECTORS); ++i) {
        const bool selected = (mode & SELECTORS[i].bit) != 0;
        named[SELECTORS[i].rule] = selected ? with_count[i][count] : NEVER;
      }
      EXPECT_EQ(json(info), file_with(named)) << mode << ' ' << count;
    }
  }
}

} // namespace
