// Any number and text to the encoders: single messages, the segments of a long text, CDMA. The
// first byte of an input chooses whether the text is hexadecimal; the number ends at a 0. Buffers
// have their documented sizes to the octet.
#include "fuzz/require.h"
#include "kest/kest.h"
#include "sms/encode/counters.h"
#include "tests/support/octets.h"
#include "tests/support/sms_decoders.h"
#include "text/unicode.h"

namespace {

constexpr const char *TIME = "2026/11/22,21:30:05-14";

struct input {
  std::unique_ptr<char[]> number;
  bool decodable; // the number fits its field
  uint32_t is_hex;
};

void decodes(const sms_decoder &d, std::span<const uint8_t> tpdu) {
  sms_outputs out;
  require(d.decode(("00" + hex(tpdu)).c_str(), out, &out.udh) == 1);
}

void check_submit(const input &in, const std::vector<uint8_t> &pdu, int64_t size) {
  require(size >= 0 && size <= static_cast<int64_t>(pdu.size()));
  require((size == 0) == (in.number[0] == '\0'));
  if (in.decodable && size != 0) {
    decodes(SUBMIT_V2, {pdu.data(), static_cast<size_t>(size)});
  }
}

void single_messages(const input &in, const char *text) {
  std::vector<uint8_t> submit(KEST_SMS_SUBMIT_PDU_SIZE), deliver(KEST_SMS_DELIVER_PDU_SIZE);
  const kest_sms_encode_options options = {1, 1, 1, 2, 1};
  check_submit(in, submit,
               kest_sms_encode_gw_submit_pdu(in.number.get(), text, 1, in.is_hex, submit.data(),
                                             KEST_SMS_SUBMIT_PDU_SIZE));
  require(kest_sms_encode_gw_submit_pdu_detail(in.number.get(), text, 1, in.is_hex, &options,
                                               submit.data(),
                                               KEST_SMS_SUBMIT_PDU_SIZE) <= submit.size());
  require(kest_sms_encode_gw_deliver_pdu_detail(in.number.get(), text, text, 1, in.is_hex, &options,
                                                deliver.data(),
                                                KEST_SMS_DELIVER_PDU_SIZE) <= deliver.size());
  std::vector<uint8_t> cdma(KEST_SMS_CDMA_SUBMIT_PDU_SIZE);
  const uint16_t id = kest_cdma_message_id;
  const uint32_t size =
      kest_sms_encode_cdma_submit_pdu(in.number.get(), text, 1, in.is_hex, cdma.data());
  require(size <= cdma.size());
  require(static_cast<uint16_t>(id + (size != 0)) == kest_cdma_message_id);
  require(size == 0 || size == cdma[6] + cdma[cdma[6] + 11u] + 12u);
}

bool ends_within_a_sequence(const input &in, const std::string &segment) {
  std::vector<uint8_t> octets(segment.begin(), segment.end());
  if (in.is_hex != 0) {
    octets.resize(kest_hexstring_to_binary(segment.c_str(), octets.data(),
                                           static_cast<uint16_t>(octets.size())));
  }
  const std::span<const uint8_t> text = octets;
  size_t at = 0;
  for (uint16_t value = 0; at < text.size();) {
    at += kest_utf8_char_to_ucs2(text.subspan(at), &value);
  }
  return at > text.size();
}

// A segment is refused if its own alphabet makes it longer, if it is cut at 255 octets, or if a
// sequence is cut off at its end.
void check_refusal(const input &in, const std::string &segment) {
  uint16_t alone = 0;
  kest_sms_get_long_message_segment(segment.c_str(), in.is_hex, &alone);
  require(in.number[0] == '\0' || alone < segment.size() || segment.size() > 255 ||
          ends_within_a_sequence(in, segment));
}

void long_message(const input &in, const std::string &text) {
  std::vector<std::string> segments;
  for (size_t at = 0; at < text.size(); at += segments.back().size()) {
    const auto rest = exact_text(text.substr(at));
    uint16_t len = 0;
    const int32_t units = kest_sms_get_long_message_segment(rest.get(), in.is_hex, &len);
    require(units <= 152 && (units >= 0) == (text.size() - at <= KEST_SMS_SIZED_TEXT));
    if (units < 0) {
      return;
    }
    require(len > 0 && len <= text.size() - at);
    segments.push_back(text.substr(at, len));
  }
  const auto total = static_cast<int32_t>(segments.size());
  for (int32_t sequence = 1; sequence <= total; ++sequence) {
    const std::string &segment = segments[static_cast<size_t>(sequence - 1)];
    const auto exact = exact_text(segment);
    std::vector<uint8_t> submit(158), deliver(163);
    const uint16_t reference = kest_sms_concat_reference;
    const int32_t size = kest_sms_encode_long_gw_submit_pdu(
        in.number.get(), exact.get(), 1, in.is_hex, total, sequence, submit.data(), 158);
    require(static_cast<uint16_t>(reference + (size != 0 && sequence == total)) ==
            kest_sms_concat_reference);
    const int32_t same = kest_sms_encode_long_gw_deliver_pdu(
        in.number.get(), exact.get(), TIME, 1, in.is_hex, total, sequence, deliver.data(), 163);
    require((size == 0) == (same == 0));
    if (size == 0) {
      check_refusal(in, segment);
    } else if (in.decodable) {
      decodes(SUBMIT_V2, {submit.data(), static_cast<size_t>(size)});
      decodes(DELIVER_V2, {deliver.data(), static_cast<size_t>(same)});
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
  const input in = {exact_text(number), number.size() <= 20, data[0] & 1u};
  const auto exact = exact_text(text);
  require((kest_sms_is_long_message(exact.get(), in.is_hex) < 0) ==
          (text.size() > KEST_SMS_SIZED_TEXT));
  single_messages(in, exact.get());
  long_message(in, text);
  return 0;
}
