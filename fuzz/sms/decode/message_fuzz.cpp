// Any text to the decoders of DELIVER, SUBMIT and STATUS-REPORT. The first byte of an input chooses
// whether the rest is the text itself or octets to be written as hexadecimal text, and whether the
// header is read; the sanitizers watch the rest.
#include <cstring>

#include "fuzz/require.h"
#include "tests/support/octets.h"
#include "tests/support/sms_decoders.h"

namespace {

sms_outputs check(const sms_decoder &d, const char *pdu, bool with_udh) {
  sms_outputs out;
  const uint32_t result = d.decode(pdu, out, with_udh ? &out.udh : nullptr);
  require(result <= 1);
  require(out.msg_class <= KEST_SMS_CLASS_NONE || out.msg_class == 99);
  require(out.udh.sequence <= out.udh.total);
  // A refusal leaves the text alone, and a status report may have none.
  const bool is_report = d.kind == std::string_view("status_report");
  require(out.userdata[0] == '~' ? result == 0 || is_report : result == 1);
  require(out.userdata[0] == '~' || strlen(out.userdata.data()) % 2 == 0);
  return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::span<const uint8_t> rest(data + 1, size - 1);
  const auto pdu = exact_text((data[0] & 1) != 0 ? hex(rest) : text_of(rest));
  for (const sms_decoder &d : SMS_DECODERS) {
    const sms_outputs first = check(d, pdu.get(), (data[0] & 2) == 0);
    require(first.userdata == check(d, pdu.get(), (data[0] & 2) == 0).userdata);
  }
  return 0;
}
