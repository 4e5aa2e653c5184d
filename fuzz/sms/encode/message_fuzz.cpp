// Any number and text to the encoders: single messages, the segments of a long text, CDMA. The
// first byte of an input chooses whether the text is hexadecimal; the number ends at a 0. Buffers
// have their documented sizes to the octet.
#include "fuzz/require.h"
#include "kest/kest.h"
#include "tests/support/segments.h"
#include "tests/support/sms_decoders.h"
#include "text/unicode.h"

namespace {

void single_messages(const char *number, const char *text, uint32_t is_hex) {
  constexpr uint32_t SUBMIT_SIZE = KEST_SMS_SUBMIT_PDU_SIZE;
  constexpr uint32_t DELIVER_SIZE = KEST_SMS_DELIVER_PDU_SIZE;
  const kest_sms_encode_options options = {1, 1, 1, 2, 1};
  const std::unique_ptr<uint8_t[]> submit(new uint8_t[SUBMIT_SIZE]),
      deliver(new uint8_t[DELIVER_SIZE]), cdma(new uint8_t[KEST_SMS_CDMA_SUBMIT_PDU_SIZE]);
  require(kest_sms_encode_gw_submit_pdu(number, text, 1, is_hex, submit.get(), SUBMIT_SIZE) <=
          SUBMIT_SIZE);
  require(kest_sms_encode_gw_submit_pdu_detail(number, text, 1, is_hex, &options, submit.get(),
                                               SUBMIT_SIZE) <= SUBMIT_SIZE);
  require(kest_sms_encode_gw_deliver_pdu_detail(number, text, text, 1, is_hex, &options,
                                                deliver.get(), DELIVER_SIZE) <= DELIVER_SIZE);
  const uint32_t size = kest_sms_encode_cdma_submit_pdu(number, text, 1, is_hex, cdma.get());
  require(size == 0 || size == cdma[6] + cdma[cdma[6] + 11u] + 12u);
}

// refusable tells whether an encoder may refuse a segment: if its own alphabet makes it longer, if
// it is cut at 255 octets, or if it ends within a UTF-8 sequence.
bool refusable(const std::string &segment, uint32_t is_hex) {
  std::vector<uint8_t> octets(segment.begin(), segment.end());
  if (is_hex != 0) {
    octets.resize(kest_hexstring_to_binary(segment.c_str(), octets.data(),
                                           static_cast<uint16_t>(octets.size())));
  }
  size_t read = 0;
  for (uint16_t value = 0; read < octets.size();) {
    read += kest_utf8_char_to_ucs2(std::span(octets).subspan(read), &value);
  }
  return read != octets.size() || octets.size() > 255 || segments_of(segment, is_hex).size() > 1;
}

void long_message(const char *number, const std::string &text, uint32_t is_hex) {
  const std::vector<std::string> segments = segments_of(text, is_hex);
  const auto total = static_cast<int32_t>(segments.size());
  for (int32_t sequence = 1; sequence <= total; ++sequence) {
    const std::string &part = segments[static_cast<size_t>(sequence - 1)];
    require(!part.empty());
    for (const bool submit : {false, true}) {
      const auto pdu = segment_pdu(submit, number, part, is_hex, total, sequence);
      require(!pdu.empty() || number[0] == '\0' || (total > 1 && refusable(part, is_hex)));
      if (!pdu.empty() && strlen(number) <= 20) { // the number fits its field
        sms_outputs out;
        require(
            (submit ? SUBMIT_V2 : DELIVER_V2).decode(("00" + hex(pdu)).c_str(), out, &out.udh) ==
            1);
        require(out.udh.sequence == (total > 1 ? sequence : 0));
      }
    }
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::string rest = text_of({data + 1, size - 1});
  const std::string number = rest.c_str();
  const std::string text = rest.substr(std::min(number.size() + 1, rest.size())).c_str();
  const auto exact_number = exact_text(number), exact = exact_text(text);
  const uint32_t is_hex = data[0] & 1;
  single_messages(exact_number.get(), exact.get(), is_hex);
  const int32_t is_long = kest_sms_is_long_message(exact.get(), is_hex);
  require(is_long >= -1 && is_long <= 1 && (is_long < 0) == (text.size() > KEST_SMS_SIZED_TEXT));
  if (is_long >= 0) {
    long_message(exact_number.get(), text, is_hex);
  }
  return 0;
}
