// kest decode: PDUs as a modem reports them.
#include <algorithm>
#include <array>
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
    throw command_failure("the PDU ends ahead of its first octet");
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

decoded_message decode_deliver(const std::string &pdu, const std::vector<uint8_t> &octets) {
  std::array<char, KEST_SMS_ADDRESS_TEXT_SIZE> smsc = {}, sender = {};
  std::array<char, KEST_SMS_TIME_TEXT_SIZE> timestamp = {};
  std::array<char, KEST_SMS_USERDATA_TEXT_SIZE> userdata = {};
  decoded_message message;
  message.type = "DELIVER";
  uint32_t udh_no_concat = 0;
  if (kest_sms_decode_gw_deliver_pdu_v2(pdu.c_str(), smsc.data(), sender.data(), timestamp.data(),
                                        userdata.data(), &message.udh, &message.msg_class,
                                        &udh_no_concat) == 0) {
    throw command_failure("the library refuses this DELIVER; --trace tells why");
  }
  message.smsc = smsc.data();
  message.address = address_text(octets, tpdu_offset(octets) + 1, sender.data());
  message.timestamp = timestamp.data();
  message.text = userdata.data();
  message.is_text = udh_no_concat == 0;
  return message;
}

// is_text tells what those decoders keep to themselves that have no flag for it: a header without a
// concatenation element makes no text.
bool is_text(const decoded_message &message, const std::vector<uint8_t> &octets) {
  constexpr unsigned TP_UDHI = 0x40;
  const bool has_header = (octets[tpdu_offset(octets)] & TP_UDHI) != 0;
  return !has_header || message.udh.total != 0;
}

decoded_message decode_submit(const std::string &pdu, const std::vector<uint8_t> &octets) {
  std::array<char, KEST_SMS_ADDRESS_TEXT_SIZE> smsc = {}, destination = {};
  std::array<char, KEST_SMS_USERDATA_TEXT_SIZE> userdata = {};
  decoded_message message;
  message.type = "SUBMIT";
  if (kest_sms_decode_gw_submit_pdu_v2(pdu.c_str(), smsc.data(), destination.data(),
                                       userdata.data(), &message.udh, &message.msg_class) == 0) {
    throw command_failure("the library refuses this SUBMIT; --trace tells why");
  }
  message.smsc = smsc.data();
  message.address = address_text(octets, tpdu_offset(octets) + 2, destination.data());
  message.text = userdata.data();
  message.is_text = is_text(message, octets);
  return message;
}

decoded_message decode_report(const std::string &pdu, const std::vector<uint8_t> &octets) {
  constexpr size_t STAMPS_SIZE = 14;
  const size_t address = tpdu_offset(octets) + 2;
  // The library reads what is not there as 0, which as a status means that the message came
  // through.
  if (address >= octets.size() ||
      address + 2 + (octets[address] + 1u) / 2 + STAMPS_SIZE >= octets.size()) {
    throw command_failure("the PDU ends ahead of its status");
  }
  std::array<char, KEST_SMS_ADDRESS_TEXT_SIZE> smsc = {}, recipient = {};
  std::array<char, KEST_SMS_TIME_TEXT_SIZE> scts = {}, discharge_time = {};
  std::array<char, KEST_SMS_STATUS_TEXT_SIZE> status = {};
  std::array<char, KEST_SMS_USERDATA_TEXT_SIZE> userdata = {};
  decoded_message message;
  message.type = "STATUS-REPORT";
  if (kest_sms_decode_gw_status_report_pdu_v2(
          pdu.c_str(), smsc.data(), recipient.data(), scts.data(), discharge_time.data(),
          status.data(), userdata.data(), &message.udh, &message.msg_class) == 0) {
    throw command_failure("the library refuses this STATUS-REPORT; --trace tells why");
  }
  message.smsc = smsc.data();
  message.address = address_text(octets, address, recipient.data());
  message.timestamp = scts.data();
  message.discharge_time = discharge_time.data();
  message.status = octets_of(status.data()).at(0);
  message.text = userdata.data();
  message.is_text = is_text(message, octets);
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
  decoded_message message = type == MTI_SUBMIT          ? decode_submit(pdu, octets)
                            : type == MTI_STATUS_REPORT ? decode_report(pdu, octets)
                                                        : decode_deliver(pdu, octets);
  message.part = message.udh.sequence;
  message.parts = message.udh.total;
  return message;
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
  read_argument<decoded_message>(
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
