// Any text to the decoders of DELIVER, SUBMIT and STATUS-REPORT. Bits of an input's first byte
// choose
// - whether the rest is the text itself (0), or octets to be written as hexadecimal text;
// - whether the header is left alone, and whether outputs that may be null are;
// - whether trace lines are made.
#include "fuzz/require.h"
#include "kest/log.h"
#include "tests/support/octets.h"
#include "tests/support/sms_decoders.h"

namespace {

enum : uint8_t { OCTETS = 1, WITHOUT_HEADER = 2, NULL_OUTPUTS = 4, TRACE = 8 };

constexpr size_t LONGEST_PDU = 510;

bool same_fields(const sms_outputs &a, const sms_outputs &b) {
  return a.smsc == b.smsc && a.address == b.address && a.timestamp == b.timestamp &&
         a.discharge_time == b.discharge_time && a.status == b.status && a.userdata == b.userdata &&
         memcmp(&a.udh, &b.udh, sizeof a.udh) == 0;
}

struct decoded {
  sms_outputs out;
  uint32_t result;
};

decoded decode(const sms_decoder &d, const char *pdu, uint8_t flags) {
  decoded message = {};
  sms_outputs &out = message.out;
  if ((flags & NULL_OUTPUTS) != 0) {
    for (std::vector<char> *text : {&out.smsc, &out.address, &out.timestamp, &out.discharge_time}) {
      *text = std::vector<char>();
    }
  }
  const sms_outputs before = out;
  message.result = d.decode(pdu, out, (flags & WITHOUT_HEADER) != 0 ? nullptr : &out.udh);
  require(message.result <= 1);
  require(strlen(pdu) <= LONGEST_PDU || (message.result == 0 && same_fields(out, before)));
  require(d.v2 ? out.msg_class <= KEST_SMS_CLASS_NONE || message.result == 0 : out.msg_class == 99);
  require(out.udh.sequence <= out.udh.total);
  // A refusal leaves the text alone, and a status report may have none.
  const bool is_report = d.kind == std::string_view("status_report");
  require(out.userdata[0] == '~' ? message.result == 0 || is_report : message.result == 1);
  require(out.userdata[0] == '~' || strlen(out.userdata.data()) % 2 == 0);
  return message;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size == 0) {
    return 0;
  }
  const uint8_t flags = data[0];
  const std::span<const uint8_t> rest(data + 1, size - 1);
  const auto pdu = exact_text((flags & OCTETS) != 0 ? hex(rest) : text_of(rest));
  log_level = (flags & TRACE) != 0 ? KEST_LOG_DEBUG : 0; // there is no log file
  for (size_t i = 0; i < std::size(SMS_DECODERS); i += 2) {
    const decoded first = decode(SMS_DECODERS[i], pdu.get(), flags);
    const decoded second = decode(SMS_DECODERS[i + 1], pdu.get(), flags);
    const decoded again = decode(SMS_DECODERS[i + 1], pdu.get(), flags);
    require(second.result == again.result && same_fields(second.out, again.out));
    // The second form refuses more, but does not read differently.
    require(second.result == 0 || (first.result == 1 && same_fields(first.out, second.out)));
  }
  return 0;
}
