#include "text/unicode.h"

#include <gtest/gtest.h>

#include "kest/text.h"
#include "tests/support/failing_malloc.h"
#include "tests/support/vectors.h"

namespace {

using units = std::vector<uint16_t>;

units units_of(const std::vector<uint8_t> &octets) {
  units out;
  for (size_t i = 0; i + 1 < octets.size(); i += 2) {
    out.push_back(static_cast<uint16_t>(octets[i] << 8 | octets[i + 1]));
  }
  return out;
}

units to_ucs2(const std::string &text, uint16_t limit) {
  units out(limit / 2);
  out.resize(kest_convert_utf8_to_ucs2(exact_text(text).get(), limit, out.data()) / 2);
  return out;
}

std::string to_utf8(const units &source) {
  std::string out(source.size() * 3 + 1, 'e');
  const auto len = static_cast<uint16_t>(source.size() * 2 + 1); // the odd octet is not read
  const uint16_t result = kest_convert_ucs2_to_utf8(source.data(), len, out.data());
  out.resize(out.find('\0'));
  EXPECT_EQ(result, static_cast<uint16_t>(out.size()));
  return out;
}

TEST(Unicode, Conversions) {
  for (const json &row : vectors("text/unicode")) {
    SCOPED_TRACE(row.dump());
    const std::vector<uint8_t> src = octets_value(row, "src");
    const std::string dst = row["dst"].is_null() ? "" : hex_value(row, "dst");
    if (row["function"] == "utf8_to_ucs2") {
      EXPECT_EQ(to_ucs2(text_of(src), row["size"]), units_of(octets(dst)));
    } else if (row["function"] == "ucs2_to_utf8") {
      EXPECT_EQ(hex(to_utf8(units_of(src))), dst);
    } else if (row["function"] == "utf8_char") {
      const utf8_character next = kest_utf8_char_to_ucs2(src);
      EXPECT_EQ(next.length, row["result"]);
      EXPECT_EQ(next.value, units_of(octets(dst))[0]);
    } else { // ascii_to_utf8
      std::vector<uint8_t> out(row["size"], 0xEE);
      EXPECT_EQ(kest_convert_ascii_to_utf8(src.data(), static_cast<uint8_t>(src.size()),
                                           reinterpret_cast<char *>(out.data()), row["size"]),
                dst.size() / 2);
      const std::string expected = row["dst"].is_null() ? "" : dst + "00";
      EXPECT_EQ(hex(out), expected + repeat("EE", out.size() - expected.size() / 2));
    }
  }
}

TEST(Unicode, EveryCodePointCrossesBothWays) {
  for (uint32_t c = 1; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) {
      continue;
    }
    const auto high = static_cast<uint16_t>(0xD7C0 + (c >> 10));
    const auto low = static_cast<uint16_t>(0xDC00 | (c & 0x3FF));
    const units source = c < 0x10000 ? units{static_cast<uint16_t>(c)} : units{high, low};
    const std::string text = to_utf8(source);
    ASSERT_EQ(text.size(), c < 0x80 ? 1u : c < 0x800 ? 2u : c < 0x10000 ? 3u : 4u);
    ASSERT_EQ(to_ucs2(text, 4), source);
    const utf8_character next = kest_utf8_char_to_ucs2(bytes(text));
    ASSERT_EQ(next.length, text.size());
    ASSERT_EQ(next.value, static_cast<uint16_t>(c));
  }
}

// Words of ASCII and of two-byte sequences cross at once. Whatever stands beside them, and wherever
// room ends or a byte is bad, what comes out are the characters before that.
TEST(Unicode, TextsCrossAsTheirCharacters) {
  const char *const characters[] = {"a", "\u00E9", "\u0436", "\u0905", "\u6211", "\U0001F600"};
  uint32_t state = 1;
  for (int round = 0; round < 100; ++round) {
    std::string text;
    units all;
    std::vector<std::pair<size_t, size_t>> ends = {{0, 0}}; // of the characters: bytes, units
    while (ends.size() <= 40) {
      state = state * 1664525 + 1013904223;
      const std::string character = characters[(state >> 28) % std::size(characters)];
      const units alone = to_ucs2(character, 4); // too short to be a word
      for (uint32_t run = state >> 16 & 0xF; run > 0; --run) {
        text += character;
        all.insert(all.end(), alone.begin(), alone.end());
        ends.emplace_back(text.size(), all.size());
      }
    }
    all.shrink_to_fit(); // the address sanitizer sees a unit read after it
    ASSERT_EQ(to_ucs2(text, static_cast<uint16_t>(2 * all.size())), all);
    ASSERT_EQ(to_utf8(all), text);
    for (size_t i = 0; i + 1 < ends.size(); ++i) {
      const auto [bytes, count] = ends[i];
      const units ahead(all.begin(), all.begin() + static_cast<ptrdiff_t>(count));
      for (size_t room = count; room < ends[i + 1].second; ++room) {
        ASSERT_EQ(to_ucs2(text, static_cast<uint16_t>(2 * room)), ahead);
      }
      std::string bad = text;
      bad[ends[i + 1].first - 1] = '\xFF';
      ASSERT_EQ(to_ucs2(bad, 510), ahead);
      for (size_t room = bytes; room < ends[i + 1].first; ++room) {
        std::vector<uint8_t> out(room);
        const uint16_t *source = all.data();
        uint8_t *target = out.data();
        kest_utf16_to_utf8(source, source + all.size(), target, target + room);
        out.resize(static_cast<size_t>(target - out.data()));
        ASSERT_EQ(text_of(out), text.substr(0, bytes));
        ASSERT_EQ(source, all.data() + count);
      }
    }
  }
}

TEST(Unicode, OverlappingBuffersChangeNothing) {
  const units source = {0x20AC, 0x20AD, 0x20AE, 0x0041};
  const std::string text = to_utf8(source);
  for (size_t from = 0; from <= 8; ++from) {
    for (size_t to = 0; to <= 16; ++to) {
      std::vector<uint16_t> block(20);
      std::copy(source.begin(), source.end(), block.begin() + static_cast<ptrdiff_t>(from));
      char *const dst = reinterpret_cast<char *>(block.data()) + to;
      ASSERT_EQ(kest_convert_ucs2_to_utf8(block.data() + from, 8, dst), 10) << from << ' ' << to;
      ASSERT_EQ(dst, text) << from << ' ' << to;
    }
  }
  units in_place = source;
  mallocs_left = 0;
  EXPECT_EQ(
      kest_convert_ucs2_to_utf8(in_place.data(), 8, reinterpret_cast<char *>(in_place.data())), 0);
  mallocs_left = -1;
  EXPECT_EQ(in_place, source) << "without memory for a copy";
}

// All first and second bytes: table 3-7 of the standard.
TEST(Unicode, LegalSequencesAreThoseOfTheStandard) {
  for (unsigned pair = 0x100; pair < 0x10000; ++pair) {
    const unsigned first = pair >> 8, second = pair & 0xFF;
    const bool trailing = second >= 0x80 && second <= 0xBF;
    const bool two = first >= 0xC2 && first <= 0xDF && trailing;
    const bool three = first >= 0xE0 && first <= 0xEF && trailing && pair >= 0xE0A0 &&
                       !(pair >= 0xEDA0 && pair <= 0xEDBF);
    const bool four = pair >= 0xF090 && pair <= 0xF48F && trailing;
    const char text[] = {static_cast<char>(first), static_cast<char>(second), '\x80', '\xBF'};
    ASSERT_EQ(!to_ucs2({text, sizeof text}, 4).empty(), first < 0x80 || two || three || four)
        << pair;
  }
  EXPECT_TRUE(to_ucs2("\xF0\x90\x80\x41", 4).empty());
  EXPECT_TRUE(to_ucs2("\xE1\x80\xC0", 4).empty());
}

TEST(Unicode, CountsCharacters) {
  EXPECT_EQ(strlen_utf8("A\u00E9\u20AC"), 3);
  EXPECT_EQ(strlen_utf8("\x80\xFF\xBF"), 1);
}

} // namespace
