#include "kest/text.h"

#include <gtest/gtest.h>

#include "tests/support/debug_log.h"
#include "tests/support/vectors.h"

namespace {

TEST(Hex, EveryCharacterHasItsValue) {
  const std::string digits = "0123456789abcdef0123456789ABCDEF";
  for (int c = 0; c < 256; ++c) {
    const size_t place = digits.find(static_cast<char>(c));
    EXPECT_EQ(kest_hexchar_to_binary(static_cast<char>(c)), place < 32 ? place % 16 : 0) << c;
  }
}

// All of the destination is written, or with a null "dst" nothing, and a line is logged. Digits
// that may log take another way than those that don't.
TEST(Hex, StringsConvertOrAreRefused) {
  for (const json &row : vectors("text/hex")) {
    const std::string name = "kest_" + row["function"].get<std::string>();
    const std::vector<uint8_t> src = octets_value(row, "src");
    const uint16_t size = row["size"];
    const bool refused = row["dst"].is_null();
    for (const uint32_t level : {uint32_t{KEST_LOG_DEBUG}, uint32_t{KEST_LOG_ERROR}}) {
      SCOPED_TRACE(row.dump().substr(0, 200));
      const debug_log log(level);
      std::vector<uint8_t> dst(size, 0xEE);
      orba_kest_log(refused); // the lines of digits are another test's
      if (name == "kest_hexstring_to_binary") {
        const auto text = exact_text(text_of(src));
        EXPECT_EQ(kest_hexstring_to_binary(text.get(), dst.data(), size), row["result"]);
      } else {
        const auto convert = name == "kest_binary_to_hexstring"
                                 ? kest_binary_to_hexstring
                                 : kest_binary_to_hexstring_uppercase;
        convert(src.data(), static_cast<uint16_t>(src.size()), reinterpret_cast<char *>(dst.data()),
                size);
      }
      orba_kest_log(1);
      EXPECT_EQ(hex(dst), refused ? repeat("EE", size) : hex_value(row, "dst"));
      EXPECT_EQ(log.lines(), refused && level == KEST_LOG_ERROR
                                 ? log_lines{name + " Buffer is too small!!!"}
                                 : log_lines{});
    }
  }
}

TEST(Hex, EachDigitLogs) {
  const debug_log log(KEST_LOG_ERROR);
  char text[3];
  const uint8_t octet = 0x1A;
  kest_binary_to_hexstring(&octet, 1, text, sizeof text);
  EXPECT_EQ(kest_binary_to_hexchar_uppercase(16), 'G');
  EXPECT_EQ(kest_binary_to_hexchar(255), static_cast<int8_t>(255 + 0x57)) << "there is no range";
  log_level = KEST_LOG_DEBUG;
  EXPECT_EQ(kest_binary_to_hexchar(16), 'g');
  EXPECT_EQ(log.lines(),
            (log_lines{"kest_binary_to_hexchar value=1!!!", "kest_binary_to_hexchar value=10!!!",
                       "kest_binary_to_hexchar_uppercase value=16!!!",
                       "kest_binary_to_hexchar value=255!!!"}));
}

} // namespace
