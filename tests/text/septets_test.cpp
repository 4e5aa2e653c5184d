#include "text/septets.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/octets.h"

namespace {

using octet_string = std::vector<uint8_t>;

// A plain second opinion: septets as a row of bits, after `fill` bits of 0.
octet_string packed_by_bits(const octet_string &septets, size_t fill = 0) {
  octet_string out((septets.size() * 7 + fill + 7) / 8);
  for (size_t bit = 0; bit < septets.size() * 7; ++bit) {
    const size_t at = bit + fill;
    out[at / 8] |= static_cast<uint8_t>((septets[bit / 7] >> bit % 7 & 1) << at % 8);
  }
  return out;
}

octet_string some_septets(size_t count) {
  octet_string septets(count);
  for (size_t i = 0; i < count; ++i) {
    septets[i] = static_cast<uint8_t>((i * 37 + 91) & 0x7F);
  }
  return septets;
}

octet_string first(octet_string octets, size_t count) {
  octets.resize(std::min(count, octets.size()));
  return octets;
}

// Destinations are exact: the address sanitizer sees one octet more.
TEST(Septets, EveryCountFillAndLimit) {
  for (uint16_t count = 1; count <= 24; ++count) {
    for (uint16_t fill = 0; fill <= 6; ++fill) {
      octet_string septets = some_septets(count);
      octet_string packed = packed_by_bits(septets, fill);
      for (uint16_t limit = 1; fill == 0 && limit <= uint16_t(packed.size() + 1); ++limit) {
        SCOPED_TRACE(testing::Message() << count << ' ' << fill << ' ' << limit);
        octet_string out(std::min<size_t>(limit, packed.size()));
        EXPECT_EQ(kest_pack_septets(septets.data(), count, limit, out.data()), out.size());
        EXPECT_EQ(out, first(packed, limit));
      }
      if ((count * 7u + fill) % 8 == 1) { // the seven bits left over come out as well
        packed.back() |= 0x5A;
        septets.push_back(packed.back() >> 1);
      }
      for (uint16_t limit = 1; limit <= count + 9; ++limit) {
        SCOPED_TRACE(testing::Message() << count << ' ' << fill << ' ' << limit);
        octet_string out(limit, 0xEE);
        const auto shift = static_cast<uint16_t>(fill == 0 ? 0 : 8 - fill);
        kest_unpack_septets(packed.data(), count, limit, shift, out.data());
        octet_string expected = first(septets, limit);
        expected.resize(limit, 0xEE); // nothing after the last septet is written
        EXPECT_EQ(out, expected);
      }
    }
  }
}

TEST(Septets, KnownOctetsAndResults) {
  octet_string out(8);
  EXPECT_EQ(kest_pack_septets(octets("68656C6C6F").data(), 5, 8, out.data()), 5);
  EXPECT_EQ(hex(out), "E8329BFD06000000");
  EXPECT_EQ(kest_unpack_septets(octets("E8329BFD06").data(), 5, 8, 0, out.data()), 5);
  EXPECT_EQ(kest_unpack_septets(out.data(), 0, 8, 0, out.data()), 0);
}

TEST(Septets, UssdUnpacksAllButAClosingCarriageReturn) {
  for (size_t count : {1u, 7u, 8u, 9u, 15u, 16u, 254u, 256u, 40000u, 74896u}) {
    for (const bool closing : {false, true}) {
      octet_string septets = some_septets(count);
      septets.back() = closing ? 0x0D : septets.back();
      const octet_string packed = packed_by_bits(septets);
      if (count % 8 == 0 && closing) {
        septets.pop_back(); // it fills the octet: padding
      } else if (count % 8 == 7) {
        septets.push_back(0); // seven bits are left over
      }
      octet_string out(packed.size() * 8 / 7);
      const auto len = static_cast<uint16_t>(packed.size());
      EXPECT_EQ(kest_unpack_ussd_septets(out.data(), packed.data(), len), septets.size());
      EXPECT_EQ(first(out, septets.size()), septets);
    }
  }
}

} // namespace
