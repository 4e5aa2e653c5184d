#include "kest/util.h"

#include "tests/support/rows.h"

namespace {

// remove_quotation_mark gives the result and the octets of the block, as many as the text has.
json remove_quotation_mark(const json &call) {
  const std::string text = call[1].is_null() ? "" : call[1];
  const auto exact = exact_text(text);
  char *out = exact.get();
  const int32_t result =
      kest_remove_quotation_mark(call[1].is_null() ? nullptr : exact.get(), &out);
  const json block = out == nullptr ? json() : json(hex({out, text.size()}));
  free(out);
  return {result, block};
}

TEST(Strings, QuotationsAndSixBitNumbers) {
  EXPECT_EQ(kest_remove_quotation_mark("\"a\"", nullptr), 0);
  run_rows("util/strings", {{"kest_remove_quotation_mark", remove_quotation_mark},
                            KEST_CALL(convert_2s_complement_to_int)});
}

} // namespace
