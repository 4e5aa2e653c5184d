// Any octets as a USSD string. The first byte of an input is the data coding scheme. Source and
// destination are blocks of the documented sizes to the octet.
#include "fuzz/require.h"
#include "kest/text.h"
#include "tests/support/octets.h"

namespace {

constexpr char UNTOUCHED = '~';

template <typename Convert>
std::string run(size_t capacity, Convert convert) {
  const std::unique_ptr<char[]> dst(new char[capacity]);
  memset(dst.get(), UNTOUCHED, capacity);
  const uint32_t length = convert(dst.get());
  require(length < capacity);
  require(dst[length] == '\0' || (length == 0 && dst[0] == UNTOUCHED));
  return {dst.get(), capacity};
}

template <typename Convert>
void check(size_t capacity, Convert convert) {
  require(run(capacity, convert) == run(capacity, convert));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size == 0) {
    return 0;
  }
  const size_t len = size - 1;
  const std::unique_ptr<uint8_t[]> src(new uint8_t[len]);
  std::copy(data + 1, data + size, src.get());
  const auto short_len = static_cast<uint8_t>(len);
  check(len * 8 / 7 * 2 + 1, [&](char *dst) {
    return kest_decode_packed_7bit_gsm_string(dst, src.get(), static_cast<uint16_t>(len));
  });
  check(short_len * 8u / 7 * 2 + 1, [&](char *dst) {
    return kest_convert_ussd_string_to_utf8(data[0], short_len, src.get(), dst);
  });
  return 0;
}
