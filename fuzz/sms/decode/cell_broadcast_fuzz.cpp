// Any octets to both decoders of cell broadcast, which must agree. The first two octets of an input
// are the size that they are cut or filled to, up to 24 pages.
#include <algorithm>
#include <cstring>

#include "fuzz/require.h"
#include "tests/support/cell_broadcast.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 2) {
    return 0;
  }
  std::vector<uint8_t> octets(data + 2, data + size);
  octets.resize((data[0] * 256u + data[1]) % 2048, 0x41);
  const cb_outputs first = decode_cb(CB_DECODERS[0], octets);
  const cb_outputs second = decode_cb(CB_DECODERS[1], octets);
  const kest_sms_cb_info &info = first.info;
  require(first.result <= 1 && first.result == second.result && first.text == second.text);
  require(same_octets(info, second.info));
  require(second.msg_class <= KEST_SMS_CLASS_NONE);
  require(info.format >= KEST_CB_FORMAT_GSM && info.format <= KEST_CB_FORMAT_ETWS_PRIMARY);
  require(info.alphabet <= KEST_GW_ALPHABET_UCS2 && info.language < 0x40);
  if (first.text[0] == '~') {
    require(first.text == cb_outputs().text); // left alone as a whole
  } else {
    const std::string_view text(first.text.data());
    require(first.result == 1 && text.size() % 2 == 0);
    require(std::count(first.text.begin(), first.text.end(), '\0') ==
            static_cast<ptrdiff_t>(first.text.size() - text.size()));
  }
  return 0;
}
