#include "text/ussd.h"

#include <gtest/gtest.h>

#include "kest/text.h"
#include "tests/support/vectors.h"
#include "text/gsm_alphabet.h"
#include "text/septets.h"

namespace {

using octet_string = std::vector<uint8_t>;

// What a converter leaves in an exact block of `size` bytes that held '~', and its result.
using converted = std::pair<std::string, uint32_t>;

// call takes the scheme's way, or that of packed septets for a scheme of -1.
uint32_t call(int dcs, const uint8_t *src, size_t len, char *dst) {
  return dcs < 0 ? kest_decode_packed_7bit_gsm_string(dst, src, static_cast<uint16_t>(len))
                 : kest_convert_ussd_string_to_utf8(static_cast<uint8_t>(dcs),
                                                    static_cast<uint8_t>(len), src, dst);
}

converted convert(int dcs, const octet_string &src, size_t size) {
  const std::unique_ptr<uint8_t[]> exact(new uint8_t[src.size()]); // not null, also if empty
  std::copy(src.begin(), src.end(), exact.get());
  const std::unique_ptr<char[]> dst(new char[size]);
  memset(dst.get(), '~', size);
  const uint32_t result = call(dcs, exact.get(), src.size(), dst.get());
  return {{dst.get(), size}, result};
}

converted written(const std::string &text, size_t size) {
  return {text + '\0' + repeat("~", size - text.size() - 1), text.size()};
}

TEST(Ussd, KnownStrings) {
  for (const json &row : vectors("text/ussd")) {
    SCOPED_TRACE(row.dump());
    const octet_string src = octets_value(row, "octets");
    const std::string text = row["text"], packed = row.value("packed", text);
    const uint32_t result = row.value("result", static_cast<uint32_t>(text.size()));
    EXPECT_EQ(convert(row["dcs"], src, 600).first.c_str(), text);
    EXPECT_EQ(convert(row["dcs"], src, 600).second, result);
    if (row["dcs"] == 15) {
      EXPECT_EQ(convert(-1, src, 600).first.c_str(), packed);
      EXPECT_EQ(convert(-1, src, 600).second, result);
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

// text_of_units takes the whole units of a string; a language in front has its low octet first.
std::string text_of_units(octet_string src, bool behind_language) {
  if (behind_language && src.size() > 1) {
    std::swap(src[0], src[1]);
  }
  std::vector<uint16_t> whole;
  for (size_t i = 0; i + 1 < src.size(); i += 2) {
    whole.push_back(static_cast<uint16_t>(src[i] << 8 | src[i + 1]));
  }
  std::vector<char> text(whole.size() * 3 + 1);
  kest_convert_ucs2_to_utf8(whole.data(), static_cast<uint16_t>(2 * whole.size()), text.data());
  return text.data();
}

octet_string some_octets(size_t count) {
  octet_string octets(count);
  for (size_t i = 0; i < count; ++i) {
    octets[i] = static_cast<uint8_t>(i * 151 + 97);
  }
  return octets;
}

// The way of a scheme: 7 is septets, c a copy, u UCS-2, k UCS-2 after a language, - refused. A row
// has four schemes to a character; of group 1, the first two differ.
char way_of(int dcs) {
  constexpr const char *WAYS[] = {"7777", "----", "7777", "7777", "7cu-", "7cu-", "7cu-", "7cu-",
                                  "----", "7cu-", "----", "----", "7cu-", "7cu-", "7cu-", "7c7c"};
  return dcs == 0x10 ? '7' : dcs == 0x11 ? 'k' : WAYS[dcs >> 4][dcs >> 2 & 3];
}

// Of packed strings also longer ones than the schemes take.
TEST(Ussd, EverySchemeAndLength) {
  for (size_t len = 0; len <= 65535; len += len < 255 ? 1 : len < 300 ? 9 : 6523) {
    const octet_string src = some_octets(len);
    for (int dcs = -1; dcs <= (len <= 255 ? 255 : -1); ++dcs) {
      SCOPED_TRACE(testing::Message() << dcs << ' ' << len);
      const char way = dcs < 0 ? '7' : way_of(dcs);
      if (way == '-' || (way == '7' && len == 0)) {
        ASSERT_EQ(convert(dcs, src, 1), converted("~", 0));
      } else if (way == '7') {
        const size_t size = len * 8 / 7 * 2 + 1;
        ASSERT_EQ(convert(dcs, src, size), written(text_of_septets(src), size));
      } else if (way == 'c') {
        ASSERT_EQ(convert(dcs, src, len + 1), written(text_of(src), len + 1));
      } else {
        const size_t size = len * 3 / 2 + 1;
        ASSERT_EQ(convert(dcs, src, size), written(text_of_units(src, way == 'k'), size));
      }
    }
  }
}

// In place, and with `dst` some octets before or after, for texts of one block and of several.
TEST(Ussd, OverlappingBuffersChangeNothing) {
  for (const size_t len : {7u, 14u, 255u}) {
    octet_string src = some_octets(len);
    src[len - 1] = 0; // a commercial at sign, or its fill
    for (const int dcs : {-1, 15, 0x44, 0x48}) {
      const converted apart = convert(dcs, src, 600);
      for (size_t to = 0; to <= 600; to += to < 310 && to > 290 ? 1 : 10) {
        octet_string block(1200, '~');
        std::copy(src.begin(), src.end(), block.begin() + 300);
        char *const dst = reinterpret_cast<char *>(block.data()) + to;
        ASSERT_EQ(call(dcs, block.data() + 300, len, dst), apart.second) << dcs << ' ' << to;
        ASSERT_STREQ(dst, apart.first.c_str()) << dcs << ' ' << to;
      }
    }
  }
}

} // namespace
