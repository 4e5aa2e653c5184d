// Any bytes as UTF-8, as 16-bit units and as ASCII. The first two bytes of an input are the room
// that there is. What was converted converts back to the same.
#include "fuzz/require.h"
#include "kest/text.h"
#include "tests/support/octets.h"
#include "text/unicode.h"

namespace {

using utf16 = std::vector<uint16_t>;

utf16 to_units(const std::string &text, uint16_t limit) {
  const auto exact = exact_text(text);
  utf16 units(limit / 2), again = units;
  const size_t octets = kest_convert_utf8_to_ucs2(exact.get(), limit, units.data());
  require(octets <= limit && octets % 2 == 0);
  require(kest_convert_utf8_to_ucs2(exact.get(), limit, again.data()) == octets && units == again);
  units.resize(octets / 2);
  return units;
}

// to_utf8 also takes the octets of the units and half a unit after them.
std::string to_utf8(const utf16 &units, size_t odd) {
  const size_t octets = 2 * units.size() + odd;
  std::vector<char> text(octets * 3 / 2 + 1, '~');
  const std::unique_ptr<uint16_t[]> exact(new uint16_t[units.size()]);
  std::copy(units.begin(), units.end(), exact.get());
  const size_t length =
      kest_convert_ucs2_to_utf8(exact.get(), static_cast<uint16_t>(octets), text.data());
  require(length < text.size() && text[length] == '\0');
  return {text.data(), length};
}

// A conversion of `text` stopped before `rest`: at its end, at what is no character, or where the
// next one has no room.
void check_stop(std::string_view rest, size_t units_left) {
  const bool legal = !to_units(std::string(rest.substr(0, 4)), 8).empty();
  const bool pair = !rest.empty() && kest_utf8_length(bytes(rest)[0]) == 4;
  require(!legal || units_left < (pair ? 2 : 1));
}

void from_utf8(const std::string &text, uint16_t limit) {
  const utf16 units = to_units(text, limit);
  const std::string back = to_utf8(units, 0);
  require(text.starts_with(back));
  check_stop(std::string_view(text).substr(back.size()), limit / 2 - units.size());
  require(strlen_utf8(exact_text(text).get()) <= static_cast<int32_t>(text.size()));
}

// Lone surrogates become what is no UTF-8.
void from_units(const utf16 &units, size_t odd) {
  const std::string text = to_utf8(units, odd);
  const utf16 whole(units.begin(), std::find(units.begin(), units.end(), 0));
  const utf16 back = to_units(c_text(text), static_cast<uint16_t>(2 * units.size()));
  require(back.size() <= whole.size() && std::equal(back.begin(), back.end(), whole.begin()));
  require(back.size() == whole.size() || (whole[back.size()] & 0xF800) == 0xD800);
}

void from_ascii(std::span<const uint8_t> octets, uint16_t dst_size) {
  const auto len = static_cast<uint8_t>(octets.size());
  octets = octets.first(len);
  std::vector<char> dst(dst_size, '~');
  const std::vector<char> before = dst;
  const size_t length =
      kest_convert_ascii_to_utf8(exact_octets(octets).get(), len, dst.data(), dst_size);
  std::string shown;
  for (const uint8_t octet : octets) {
    uint8_t form[2];
    shown += octet == '\r' ? "" : text_of({form, put_utf8(octet, form, sizeof form)});
  }
  const bool fits = dst_size >= 2 * len && dst_size > shown.size();
  require(fits ? std::string(dst.data(), length) == shown && dst[length] == '\0'
               : length == 0 && dst == before);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 2) {
    return 0;
  }
  const auto room = static_cast<uint16_t>((data[0] << 8 | data[1]) % 1024);
  const std::span<const uint8_t> octets(data + 2, size - 2);
  from_utf8(c_text(text_of(octets)), room);
  utf16 units(octets.size() / 2);
  std::copy_n(octets.data(), 2 * units.size(), reinterpret_cast<uint8_t *>(units.data()));
  from_units(units, octets.size() % 2);
  from_ascii(octets, room);
  return 0;
}
