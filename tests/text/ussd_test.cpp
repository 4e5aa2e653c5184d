#include "text/ussd.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "kest/text.h"
#include "tests/support/vectors.h"
#include "text/gsm_alphabet.h"
#include "text/septets.h"

namespace {

using octet_string = std::vector<uint8_t>;

// What a converter left in an exact block of `size` bytes that held '~', and its result.
struct converted {
  std::string block;
  uint32_t result;
};

template <typename Convert>
converted run(size_t size, Convert convert) {
  const std::unique_ptr<char[]> block(new char[size]);
  memset(block.get(), '~', size);
  const uint32_t result = convert(block.get());
  return {{block.get(), size}, result};
}

std::string written(const std::string &text, size_t size) {
  const std::string terminated = text + '\0';
  return terminated + repeat("~", size - terminated.size());
}

converted convert(unsigned dcs, const octet_string &src, size_t size) {
  const std::unique_ptr<uint8_t[]> exact(new uint8_t[src.size()]); // not null, also if empty
  std::copy(src.begin(), src.end(), exact.get());
  return run(size, [&](char *dst) {
    return kest_convert_ussd_string_to_utf8(static_cast<uint8_t>(dcs),
                                            static_cast<uint8_t>(src.size()), exact.get(), dst);
  });
}

converted decode_packed(const octet_string &src) {
  return run(src.size() * 8 / 7 * 2 + 1, [&](char *dst) {
    return kest_decode_packed_7bit_gsm_string(dst, src.data(), static_cast<uint16_t>(src.size()));
  });
}

TEST(Ussd, KnownStrings) {
  for (const json &row : vectors("text/ussd")) {
    SCOPED_TRACE(row.dump());
    const octet_string src = octets_value(row, "octets");
    const std::string text = row["text"];
    const uint32_t result = row.value("result", static_cast<uint32_t>(text.size()));
    if (row.contains("dcs")) {
      const converted out = convert(row["dcs"], src, 600);
      EXPECT_STREQ(out.block.c_str(), text.c_str());
      EXPECT_EQ(out.result, result);
    }
    if (row.contains("packed") || row.value("dcs", 0xFF) == 0x0F) {
      const converted out = decode_packed(src);
      EXPECT_EQ(out.block.c_str(), row.value("packed", text));
      EXPECT_EQ(out.result, result);
    }
  }
  char dst[] = "~";
  const uint8_t octet = 0x41;
  EXPECT_EQ(kest_convert_ussd_string_to_utf8(0x44, 1, nullptr, dst), 0u);
  EXPECT_EQ(kest_convert_ussd_string_to_utf8(0x44, 1, &octet, nullptr), 0u);
  EXPECT_EQ(kest_decode_packed_7bit_gsm_string(dst, nullptr, 1), 0u);
  EXPECT_EQ(kest_decode_packed_7bit_gsm_string(nullptr, &octet, 1), 0u);
  EXPECT_EQ(kest_gsm_to_utf8(&octet, 0, dst), 0u);
  EXPECT_STREQ(dst, "~");
}

octet_string some_octets(size_t count) {
  octet_string octets(count);
  for (size_t i = 0; i < count; ++i) {
    octets[i] = static_cast<uint8_t>(i * 151 + 97);
  }
  return octets;
}

// A second opinion: all septets at once, each through the table of code points.
std::string text_of_septets(const octet_string &packed) {
  octet_string codes(packed.size() * 8 / 7);
  codes.resize(
      kest_unpack_ussd_septets(codes.data(), packed.data(), static_cast<uint16_t>(packed.size())));
  std::string text;
  for (const uint8_t code : codes) {
    const uint16_t c = code == GSM_ESCAPE ? GSM_BLANK : kest_gsm_default_alphabet[code];
    if (c >= 0x80) {
      text += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
    } else if (c != '\r') {
      text += static_cast<char>(c);
    }
  }
  if (!codes.empty() && codes.back() == 0) {
    text.pop_back();
  }
  return text;
}

// 7: septets, c: copy, u: UCS-2, k: UCS-2 behind a language, -: refused. A row has four schemes to
// a character, but for those of group 1.
char way_of(unsigned dcs) {
  constexpr const char *WAYS[] = {"7777", "",     "7777", "7777", "7cu-", "7cu-", "7cu-", "7cu-",
                                  "----", "7cu-", "----", "----", "7cu-", "7cu-", "7cu-", "7c7c"};
  if (dcs >> 4 == 1) {
    return dcs == 0x10 ? '7' : dcs == 0x11 ? 'k' : '-';
  }
  return WAYS[dcs >> 4][dcs >> 2 & 3];
}

TEST(Ussd, EverySchemeAndLength) {
  for (size_t len = 0; len <= 255; ++len) {
    const octet_string src = some_octets(len);
    for (unsigned dcs = 0; dcs <= 255; ++dcs) {
      SCOPED_TRACE(testing::Message() << dcs << ' ' << len);
      const char way = way_of(dcs);
      std::string expected;
      size_t size = 1;
      if (way == '7') {
        expected = text_of_septets(src);
        size = len * 8 / 7 * 2 + 1;
      } else if (way == 'c') {
        expected = {src.begin(), src.end()};
        size = len + 1;
      } else if (way != '-') {
        std::vector<uint16_t> units;
        for (size_t i = 0; i + 1 < len; i += 2) {
          const bool low_first = way == 'k' && i == 0;
          units.push_back(static_cast<uint16_t>(src[i + low_first] << 8 | src[i + !low_first]));
        }
        std::vector<char> text(units.size() * 3 + 1);
        kest_convert_ucs2_to_utf8(units.data(), static_cast<uint16_t>(2 * units.size()),
                                  text.data());
        expected = text.data();
        size = len * 3 / 2 + 1;
      }
      const bool untouched = way == '-' || (way == '7' && len == 0);
      const converted out = convert(dcs, src, size);
      ASSERT_EQ(out.block, untouched ? "~" : written(expected, size));
      ASSERT_EQ(out.result, expected.size());
    }
  }
}

TEST(Ussd, LongPackedStrings) {
  for (size_t len = 1; len <= 65535; len += len < 400 ? 1 : 6511) {
    const octet_string src = some_octets(len);
    const std::string expected = text_of_septets(src);
    const converted out = decode_packed(src);
    ASSERT_EQ(out.result, expected.size()) << len;
    ASSERT_EQ(out.block, written(expected, out.block.size())) << len;
  }
}

} // namespace
