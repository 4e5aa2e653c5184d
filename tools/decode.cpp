// kest decode: PDUs as a modem reports them.
#include <algorithm>
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/names.h"
#include "tools/parts.h"
#include "tools/text_view.h"

namespace {

struct decode_options {
  std::string pdu;
  std::string direction = "auto";
  bool json = false;
};

// TP-MTI (3GPP TS 23.040, clause 9.2.3.1). The numbers stand for other types in the other
// direction; 0 and the reserved 3 are a DELIVER if received.
constexpr unsigned MTI_SUBMIT = 1;
constexpr unsigned MTI_STATUS_REPORT = 2;

struct decoded_message : message_part {
  const char *type = "";
  std::string smsc = {}, address = {}, timestamp = {}, discharge_time = {};
  std::optional<unsigned> status = {}; // TP-ST of a status report
  kest_sms_udh_info udh = {};
  kest_sms_msg_class msg_class = KEST_SMS_CLASS_NONE;
  bool is_text = true; // if not, `text` is the whole PDU
};

size_t tpdu_offset(const std::vector<uint8_t> &octets) {
  return octets.empty() ? 0 : octets[0] + 1u;
}

unsigned message_type(const std::vector<uint8_t> &octets) {
  const size_t offset = tpdu_offset(octets);
  if (offset >= octets.size()) {
    throw command_failure("the PDU ends before its first octet");
  }
  return octets[offset] & 3u;
}

// address_text returns `text`, or for an alphanumeric address at `offset`, which the library leaves
// as septets, its characters.
std::string address_text(const std::vector<uint8_t> &octets, size_t offset, const char *text) {
  constexpr unsigned TYPE_ALPHANUMERIC = 5;
  if (offset + 2 > octets.size() || (octets[offset + 1] >> 4 & 7) != TYPE_ALPHANUMERIC) {
    return text;
  }
  const std::span<const uint8_t> packed = std::span(octets).subspan(offset + 2);
  const size_t semi_octets = std::min<size_t>(octets[offset], 2 * packed.size());
  return gsm_text(packed.first((semi_octets + 1) / 2), semi_octets * 4 / 7);
}

// is_text tells what only one of the decoders reports: a header without a concatenation element
// makes no text.
bool is_text(const decoded_message &message, uint8_t first_octet) {
  constexpr unsigned TP_UDHI = 0x40;
  return (first_octet & TP_UDHI) == 0 || message.udh.total != 0;
}

// require_status refuses a report that ends before TP-ST: the library reads what is not there as
// 0, which as a status means that the message came through.
void require_status(const std::vector<uint8_t> &octets, size_t address) {
  constexpr size_t STAMPS_SIZE = 14;
  if (address >= octets.size() ||
      address + 2 + (octets[address] + 1u) / 2 + STAMPS_SIZE >= octets.size()) {
    throw command_failure("the PDU ends before its status");
  }
}

// What the decoders write to.
struct decoder_outputs {
  char smsc[KEST_SMS_ADDRESS_TEXT_SIZE], address[KEST_SMS_ADDRESS_TEXT_SIZE];
  char timestamp[KEST_SMS_TIME_TEXT_SIZE], discharge_time[KEST_SMS_TIME_TEXT_SIZE];
  char status[KEST_SMS_STATUS_TEXT_SIZE], userdata[KEST_SMS_USERDATA_TEXT_SIZE];
};

decoded_message decode_pdu(const char *pdu, const std::vector<uint8_t> &octets, unsigned type) {
  decoder_outputs out = {};
  decoded_message message;
  uint32_t udh_no_concat = 0;
  uint32_t result = 0;
  size_t address = tpdu_offset(octets) + 2;
  if (type == MTI_SUBMIT) {
    message.type = "SUBMIT";
    result = kest_sms_decode_gw_submit_pdu_v2(pdu, out.smsc, out.address, out.userdata,
                                              &message.udh, &message.msg_class);
  } else if (type == MTI_STATUS_REPORT) {
    message.type = "STATUS-REPORT";
    require_status(octets, address);
    result = kest_sms_decode_gw_status_report_pdu_v2(pdu, out.smsc, out.address, out.timestamp,
                                                     out.discharge_time, out.status, out.userdata,
                                                     &message.udh, &message.msg_class);
    message.status = std::stoul(std::string("0") + out.status, nullptr, 16);
  } else {
    message.type = "DELIVER";
    --address; // no message reference ahead of it
    result =
        kest_sms_decode_gw_deliver_pdu_v2(pdu, out.smsc, out.address, out.timestamp, out.userdata,
                                          &message.udh, &message.msg_class, &udh_no_concat);
  }
  if (result == 0) {
    throw command_failure(std::string("the library refuses this ") + message.type +
                          "; --trace tells why");
  }
  message.smsc = out.smsc;
  message.address = address_text(octets, address, out.address);
  message.timestamp = out.timestamp;
  message.discharge_time = out.discharge_time;
  message.is_text = is_text(message, octets[tpdu_offset(octets)]);
  message.text = out.userdata;
  message.part = message.udh.sequence;
  message.parts = message.udh.total;
  return message;
}

decoded_message decode(const std::string &pdu, const std::string &direction) {
  const std::vector<uint8_t> octets = octets_of(pdu);
  const unsigned type = message_type(octets);
  if (direction == "sent" && type != MTI_SUBMIT) {
    throw command_failure("no SUBMIT; of what is sent, nothing else is decoded");
  }
  if (direction == "received" && type == MTI_SUBMIT) {
    throw command_failure("a received SUBMIT-REPORT is not decoded");
  }
  return decode_pdu(pdu.c_str(), octets, type);
}

void add_addresses(view &shown, const decoded_message &message) {
  if (!message.smsc.empty()) {
    shown.add("smsc", "service centre", message.smsc);
  }
  if (message.status) {
    shown.add("recipient", "to", message.address);
    shown.add("scts", "sent", message.timestamp, readable_time(message.timestamp));
    shown.add("discharge_time", "discharged", message.discharge_time,
              readable_time(message.discharge_time));
  } else if (!message.timestamp.empty()) {
    shown.add("sender", "from", message.address);
    shown.add("timestamp", "time", message.timestamp, readable_time(message.timestamp));
  } else {
    shown.add("destination", "to", message.address);
  }
}

void add_status(view &shown, unsigned status) {
  const std::string name = status_name(status), group = status_group(status);
  char value[8];
  snprintf(value, sizeof value, "0x%02X: ", status);
  shown.add("status", "status", {{"value", status}, {"name", name}, {"group", group}},
            value + name + " (" + group + ")");
}

void add_header(view &shown, const decoded_message &message) {
  const kest_sms_udh_info &udh = message.udh;
  const std::string total = std::to_string(udh.total);
  const std::string reference = ", reference " + std::to_string(udh.reference);
  if (message.missing) {
    shown.add("segments", "segments", {{"reference", udh.reference}, {"total", udh.total}},
              total + reference);
    shown.add_missing(*message.missing);
  } else if (udh.total != 0) {
    shown.add("segment", "segment",
              {{"reference", udh.reference}, {"total", udh.total}, {"sequence", udh.sequence}},
              std::to_string(udh.sequence) + " of " + total + reference);
  }
  if (udh.dest_port != 0 || udh.orig_port != 0) {
    shown.add("ports", "ports", {{"destination", udh.dest_port}, {"originator", udh.orig_port}},
              "to " + std::to_string(udh.dest_port) + ", from " + std::to_string(udh.orig_port));
  }
}

view view_of(const decoded_message &message) {
  view shown(std::string("SMS-") + message.type, {{"type", message.type}});
  add_addresses(shown, message);
  if (message.status) {
    add_status(shown, *message.status);
  }
  if (message.msg_class != KEST_SMS_CLASS_NONE) {
    shown.add("class", "class", message.msg_class);
  }
  add_header(shown, message);
  const bool has_user_data = !message.status || !message.text.empty();
  if (has_user_data && message.is_text) {
    shown.add("text", "text", decoded_text(message.text));
  } else if (has_user_data) {
    shown.add("pdu", "no text", message.text);
  }
  return shown;
}

bool same_message(const decoded_message &a, const decoded_message &b) {
  return std::string_view(a.type) == b.type && a.address == b.address &&
         a.udh.reference == b.udh.reference && a.udh.total == b.udh.total;
}

void run(const decode_options &options) {
  read_messages<decoded_message>(
      "pdu", options.pdu,
      {[&](const std::string &pdu) { return decode(pdu, options.direction); }, same_message,
       [&](const decoded_message &whole) {
         view_of(whole).print(options.json);
       }});
}

} // namespace

void add_decode_command(CLI::App &app) {
  const auto options = std::make_shared<decode_options>();
  CLI::App *command =
      app.add_subcommand("decode", "Decode an SMS-DELIVER, SMS-SUBMIT or SMS-STATUS-REPORT PDU");
  command
      ->add_option("pdu", options->pdu,
                   "Hexadecimal text with the service-centre field in front, or - to read one PDU "
                   "a line from standard input and join segments")
      ->required();
  command
      ->add_option("--direction", options->direction,
                   "Which way the PDU went: types share their numbers. auto takes any")
      ->check(CLI::IsMember({"auto", "received", "sent"}))
      ->capture_default_str();
  command->add_flag("--json", options->json, "Write a JSON object for each PDU");
  command->callback([options] { run(*options); });
}
