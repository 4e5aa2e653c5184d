// Any number and text to the encoders: single messages, the segments of a long text, CDMA. Bit 0 of
// an input's first byte chooses whether the text is hexadecimal, the others are an option; the
// number ends at a 0. Buffers have their documented sizes to the octet. What comes out decodes
// back.
#include <algorithm>

#include "fuzz/require.h"
#include "kest/kest.h"
#include "tests/support/segments.h"
#include "tests/support/sms_decoders.h"

namespace {

using pdu = std::vector<uint8_t>;

// encoded runs an encoder on a block of `size` octets; empty for a refusal.
template <class call>
pdu encoded(size_t size, const call &run) {
  pdu out(size);
  const auto written = static_cast<size_t>(run(out.data(), static_cast<uint32_t>(size)));
  require(written <= size);
  out.resize(written);
  return out;
}

bool only_characters(std::string_view text, unsigned last) {
  return std::all_of(text.begin(), text.end(), [last](char c) {
    const auto byte = static_cast<uint8_t>(c);
    return byte >= ' ' && byte <= last && byte != 0x7F && byte != '`';
  });
}

sms_outputs decoded(const sms_decoder &d, const pdu &message) {
  sms_outputs out;
  require(d.decode(("00" + hex(message)).c_str(), out, &out.udh) == 1);
  return out;
}

// check_back decodes a PDU: the number, and all of a plain text or, without `all`, its front. What
// it reads can be sent again, and then reads alike as far as it fits.
sms_outputs check_back(const sms_decoder &d, const pdu &message, const std::string &number,
                       const std::string &text, bool is_plain, bool all) {
  sms_outputs out = decoded(d, message);
  const bool dialled =
      number.find_first_not_of("0123456789*#", number[0] == '+') == std::string::npos;
  require(!dialled || out.address.data() == number);
  const std::string back = text_of(octets(out.userdata.data()));
  require(!is_plain || (all ? text == back : text.starts_with(back)));
  if (only_characters(back, 0xFF)) { // others have no code in 7 bit text
    const pdu again = encoded(KEST_SMS_SUBMIT_PDU_SIZE, [&](uint8_t *to, uint32_t size) {
      return kest_sms_encode_gw_submit_pdu("1", out.userdata.data(), 0, 1, to, size);
    });
    require(back.starts_with(text_of(octets(decoded(SUBMIT_V2, again).userdata.data()))));
  }
  return out;
}

void single_messages(const std::string &number, const std::string &content, uint8_t flags) {
  const auto exact_number = exact_text(number), exact = exact_text(content);
  const char *const to = exact_number.get(), *const text = exact.get();
  const uint32_t is_hex = flags & 1;
  const kest_sms_encode_options options = {flags, flags % 5u, 0, 2, 1};
  const auto submit = [&](uint8_t *out, uint32_t size) {
    return kest_sms_encode_gw_submit_pdu_detail(to, text, 1, is_hex, &options, out, size);
  };
  const auto deliver = [&](uint8_t *out, uint32_t size) {
    return kest_sms_encode_gw_deliver_pdu_detail(to, text, text, 1, is_hex, &options, out, size);
  };
  const pdu sent = encoded(KEST_SMS_SUBMIT_PDU_SIZE, submit);
  const pdu received = encoded(KEST_SMS_DELIVER_PDU_SIZE, deliver);
  require(sent == encoded(KEST_SMS_SUBMIT_PDU_SIZE, submit));
  require(received == encoded(KEST_SMS_DELIVER_PDU_SIZE, deliver));
  require(sent.empty() == number.empty() && received.empty() == number.empty());
  require(sent.size() == encoded(KEST_SMS_SUBMIT_PDU_SIZE, [&](uint8_t *out, uint32_t size) {
                           return kest_sms_encode_gw_submit_pdu_with_validity(to, text, 1, is_hex,
                                                                              out, size, flags);
                         }).size());
  require(received.size() == encoded(KEST_SMS_DELIVER_PDU_SIZE, [&](uint8_t *out, uint32_t size) {
                               return kest_sms_encode_gw_deliver_pdu(to, text, text, 1, is_hex, out,
                                                                     size);
                             }).size());
  if (!number.empty() && number.size() <= 20) { // it fits its field
    const bool is_plain = is_hex == 0 && only_characters(content, 0x7E);
    check_back(SUBMIT_V2, sent, number, content, is_plain, false);
    check_back(DELIVER_V2, received, number, content, is_plain, false);
  }
  const pdu cdma = encoded(KEST_SMS_CDMA_SUBMIT_PDU_SIZE, [&](uint8_t *out, uint32_t) {
    return kest_sms_encode_cdma_submit_pdu(to, text, 1, is_hex, out);
  });
  require(cdma.empty() || cdma.size() == cdma[6] + cdma[cdma[6] + 11u] + 12u);
}

void service_centre(const std::string &number, size_t size) {
  pdu field(size, 0xEE);
  const int32_t written =
      kest_sms_encode_gw_smsc(exact_text(number).get(), field.data(), static_cast<int32_t>(size));
  require(written >= 0 && static_cast<size_t>(written) <= size && (written == 0) == number.empty());
  require(std::count(field.begin() + written, field.end(), 0xEE) ==
          static_cast<ptrdiff_t>(size) - written);
}

void long_message(const std::string &number, const std::string &text, uint32_t is_hex) {
  const std::vector<std::string> segments = segments_of(text, is_hex);
  const auto total = static_cast<int32_t>(segments.size());
  require(kest_sms_is_long_message(text.c_str(), is_hex) == 0 || total > 1);
  const auto exact_number = exact_text(number);
  const bool is_plain = is_hex == 0 && only_characters(text, 0x7E);
  for (int32_t sequence = 1; sequence <= total; ++sequence) {
    const std::string &part = segments[static_cast<size_t>(sequence - 1)];
    require(!part.empty());
    // A segment may be refused if its own alphabet makes it longer, if it is cut at 255 octets, or
    // if it ends within a sequence.
    const bool refusable = (!is_plain && sequence == total) ||
                           part.size() > size_t{255} * (is_hex + 1) ||
                           segments_of(part, is_hex).size() > 1;
    for (const bool submit : {false, true}) {
      const pdu message = segment_pdu(submit, exact_number.get(), part, is_hex, total, sequence);
      require(!message.empty() || number.empty() || (total > 1 && refusable));
      if (!message.empty() && number.size() <= 20) {
        const sms_outputs out =
            check_back(submit ? SUBMIT_V2 : DELIVER_V2, message, number, part, is_plain, total > 1);
        require(out.udh.sequence == (total > 1 ? sequence : 0));
        require(submit || out.timestamp.data() == std::string_view(SEGMENT_TIME));
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
  const std::string number = c_text(rest);
  const std::string text = c_text(rest.substr(std::min(number.size() + 1, rest.size())));
  const uint32_t is_hex = data[0] & 1;
  single_messages(number, text, data[0]);
  service_centre(number, 2 + data[0] % 16u);
  const int32_t is_long = kest_sms_is_long_message(exact_text(text).get(), is_hex);
  require(is_long >= -1 && is_long <= 1 && (is_long < 0) == (text.size() > KEST_SMS_SIZED_TEXT));
  uint16_t segment_len = 0xEEEE;
  if (is_long >= 0) {
    long_message(number, text, is_hex);
  } else {
    require(kest_sms_get_long_message_segment(text.c_str(), is_hex, &segment_len) == -1);
    require(segment_len == 0xEEEE);
  }
  return 0;
}
