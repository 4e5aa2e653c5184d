#include "sms/encode/address.h"

#include <gtest/gtest.h>

#include "kest/sms_encode.h"
#include "sms/encode/timestamp.h"
#include "tests/support/vectors.h"

namespace {

// The field in a block of the capacity, which holds 0xEE before.
template <typename Encode>
std::string encoded(const json &row, size_t size, Encode encode) {
  std::vector<uint8_t> out(size, 0xEE);
  const auto written = static_cast<size_t>(encode(out.data()));
  EXPECT_EQ(hex(out).substr(2 * written), repeat("EE", size - written)) << row;
  out.resize(written);
  return hex(out);
}

// The two address fields differ in their length octet alone.
TEST(EncodeAddress, NumbersAndTimes) {
  for (const json &row : vectors("sms/encode/address")) {
    SCOPED_TRACE(row.dump());
    if (row.contains("time")) {
      const auto time = exact_text(row["time"]);
      const auto encode = [&](uint8_t *out) {
        return kest_sms_encode_timestamp(time.get(), out);
      };
      EXPECT_EQ(encoded(row, TIMESTAMP_SIZE, encode), row["octets"]);
      continue;
    }
    const auto number = exact_text(row["number"]);
    const int32_t size = row["size"];
    const auto address = [&](uint8_t *out) {
      return kest_sms_encode_gw_address(number.get(), out, size);
    };
    const auto smsc = [&](uint8_t *out) {
      return kest_sms_encode_gw_smsc(number.get(), out, size);
    };
    EXPECT_EQ(encoded(row, static_cast<size_t>(size), address), row["address"]);
    EXPECT_EQ(encoded(row, static_cast<size_t>(size), smsc), row["smsc"]);
  }
  uint8_t two[2];
  EXPECT_EQ(kest_sms_encode_gw_address("4917", two, -1), 2) << "the capacity is signed";
  EXPECT_EQ(kest_sms_encode_timestamp(nullptr, nullptr), 0u);
}

} // namespace
