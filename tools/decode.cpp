// kest decode: PDUs as a modem reports them.
#include <algorithm>
#include <array>
#include <iostream>
#include <map>
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
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

struct decoded_message {
  const char *type = "";
  std::string smsc = {}, address = {}, timestamp = {}, userdata = {};
  kest_sms_udh_info udh = {};
  kest_sms_msg_class msg_class = KEST_SMS_CLASS_NONE;
  bool is_text = true;                               // if not, `userdata` is the whole PDU
  std::optional<std::vector<unsigned>> missing = {}; // of a message of joined segments
};

// A concatenated message whose segments come in: what the first to come says beside its text, and
// the texts of all so far, by their number.
struct open_message {
  decoded_message first;
  std::map<unsigned, std::string> userdata;
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
  decoded_message message = {.type = "DELIVER"};
  uint32_t udh_no_concat = 0;
  if (kest_sms_decode_gw_deliver_pdu_v2(pdu.c_str(), smsc.data(), sender.data(), timestamp.data(),
                                        userdata.data(), &message.udh, &message.msg_class,
                                        &udh_no_concat) == 0) {
    throw command_failure("the library refuses this DELIVER; --trace tells why");
  }
  message.smsc = smsc.data();
  message.address = address_text(octets, tpdu_offset(octets) + 1, sender.data());
  message.timestamp = timestamp.data();
  message.userdata = userdata.data();
  message.is_text = udh_no_concat == 0;
  return message;
}

decoded_message decode_submit(const std::string &pdu, const std::vector<uint8_t> &octets) {
  constexpr unsigned TP_UDHI = 0x40;
  std::array<char, KEST_SMS_ADDRESS_TEXT_SIZE> smsc = {}, destination = {};
  std::array<char, KEST_SMS_USERDATA_TEXT_SIZE> userdata = {};
  decoded_message message = {.type = "SUBMIT"};
  if (kest_sms_decode_gw_submit_pdu_v2(pdu.c_str(), smsc.data(), destination.data(),
                                       userdata.data(), &message.udh, &message.msg_class) == 0) {
    throw command_failure("the library refuses this SUBMIT; --trace tells why");
  }
  message.smsc = smsc.data();
  message.address = address_text(octets, tpdu_offset(octets) + 2, destination.data());
  message.userdata = userdata.data();
  // This decoder keeps its flag to itself: a header without a concatenation element makes no text.
  const bool has_header = (octets[tpdu_offset(octets)] & TP_UDHI) != 0;
  message.is_text = !has_header || message.udh.total != 0;
  return message;
}

decoded_message decode(const std::string &pdu, const std::string &direction) {
  if (const std::string fault = hex_fault(pdu); !fault.empty()) {
    throw command_failure(fault);
  }
  const std::vector<uint8_t> octets = octets_of(pdu);
  const unsigned type = message_type(octets);
  if (type == MTI_STATUS_REPORT) {
    throw command_failure("a STATUS-REPORT or COMMAND is not decoded");
  }
  if (direction == "sent" && type != MTI_SUBMIT) {
    throw command_failure("no SUBMIT; of what is sent, nothing else is decoded");
  }
  if (direction == "received" && type == MTI_SUBMIT) {
    throw command_failure("a received SUBMIT-REPORT is not decoded");
  }
  return type == MTI_SUBMIT ? decode_submit(pdu, octets) : decode_deliver(pdu, octets);
}

std::string text_of(const decoded_message &message) {
  const std::vector<uint8_t> octets = octets_of(message.userdata);
  return join_surrogates({reinterpret_cast<const char *>(octets.data()), octets.size()});
}

// readable_time shows the zone in hours and minutes, which the PDU gives in quarters of an hour.
std::string readable_time(const std::string &timestamp) {
  const int quarters = atoi(timestamp.c_str() + 20);
  char zone[24];
  snprintf(zone, sizeof zone, " %c%02d:%02d", timestamp[19], quarters / 4, quarters % 4 * 15);
  return timestamp.substr(0, 10) + " " + timestamp.substr(11, 8) + zone;
}

view view_of(const decoded_message &message) {
  const bool received = !message.timestamp.empty();
  const kest_sms_udh_info &udh = message.udh;
  const std::string total = std::to_string(udh.total);
  const std::string reference = ", reference " + std::to_string(udh.reference);
  view shown(std::string("SMS-") + message.type, {{"type", message.type}});
  if (!message.smsc.empty()) {
    shown.add("smsc", "service centre", message.smsc);
  }
  if (received) {
    shown.add("sender", "from", message.address);
    shown.add("timestamp", "time", message.timestamp, readable_time(message.timestamp));
  } else {
    shown.add("destination", "to", message.address);
  }
  if (message.msg_class != KEST_SMS_CLASS_NONE) {
    shown.add("class", "class", message.msg_class);
  }
  if (message.missing) {
    shown.add("segments", "segments", {{"reference", udh.reference}, {"total", udh.total}},
              total + reference);
    if (!message.missing->empty()) {
      shown.add("missing", "missing", *message.missing);
    }
  } else if (udh.total != 0) {
    shown.add("segment", "segment",
              {{"reference", udh.reference}, {"total", udh.total}, {"sequence", udh.sequence}},
              std::to_string(udh.sequence) + " of " + total + reference);
  }
  if (udh.dest_port != 0 || udh.orig_port != 0) {
    shown.add("ports", "ports", {{"destination", udh.dest_port}, {"originator", udh.orig_port}},
              "to " + std::to_string(udh.dest_port) + ", from " + std::to_string(udh.orig_port));
  }
  if (message.is_text) {
    shown.add("text", "text", text_of(message));
  } else {
    shown.add("pdu", "no text", message.userdata);
  }
  return shown;
}

// joined returns a message with the texts of the segments that came in, and a mark for the others.
decoded_message joined(const open_message &open) {
  constexpr const char *MARK = "5B2E2E2E5D"; // "[...]", as the decoders write text
  decoded_message message = open.first;
  message.userdata.clear();
  message.missing.emplace();
  for (unsigned sequence = 1; sequence <= message.udh.total; ++sequence) {
    const auto segment = open.userdata.find(sequence);
    if (segment != open.userdata.end()) {
      message.userdata += segment->second;
    } else {
      message.userdata += MARK;
      message.missing->push_back(sequence);
    }
  }
  return message;
}

bool same_message(const decoded_message &a, const decoded_message &b) {
  return std::string_view(a.type) == b.type && a.address == b.address &&
         a.udh.reference == b.udh.reference && a.udh.total == b.udh.total;
}

// take_segment adds a segment to its message, and prints the message when that is whole.
void take_segment(std::vector<open_message> &messages, const decoded_message &segment, bool json) {
  auto message = std::find_if(messages.begin(), messages.end(), [&](const open_message &open) {
    return same_message(open.first, segment);
  });
  if (message == messages.end()) {
    message = messages.insert(message, {segment, {}});
  }
  message->userdata[segment.udh.sequence] = segment.userdata;
  if (message->userdata.size() == segment.udh.total) {
    view_of(joined(*message)).print(json);
    messages.erase(message);
  }
}

// decode_lines reads one PDU a line and joins segments; messages that are not whole come at the
// end. A modem's commands and answers between the PDUs, and blank lines, are passed over; a line
// that fails is named, and does not stop the others.
void decode_lines(const decode_options &options) {
  std::vector<open_message> messages;
  size_t number = 0;
  size_t failed = 0;
  for (std::string line; std::getline(std::cin, line);) {
    ++number;
    line.erase(line.find_last_not_of(" \t\r") + 1);
    if (line.empty() || line.starts_with("AT") || line.starts_with('+')) {
      continue;
    }
    try {
      const decoded_message message = decode(line, options.direction);
      if (message.udh.sequence != 0) {
        take_segment(messages, message, options.json);
      } else {
        view_of(message).print(options.json);
      }
    } catch (const command_failure &failure) {
      std::cerr << "kest: line " << number << ": " << failure.what() << '\n';
      ++failed;
    }
  }
  for (const open_message &open : messages) {
    view_of(joined(open)).print(options.json);
  }
  if (failed > 0) {
    throw command_failure(std::to_string(failed) + " of the PDUs failed");
  }
}

void run(const decode_options &options) {
  if (options.pdu == "-") {
    decode_lines(options);
    return;
  }
  if (const std::string fault = hex_fault(options.pdu); !fault.empty()) {
    throw CLI::ValidationError("pdu", fault);
  }
  view_of(decode(options.pdu, options.direction)).print(options.json);
}

} // namespace

void add_decode_command(CLI::App &app) {
  const auto options = std::make_shared<decode_options>();
  CLI::App *command = app.add_subcommand("decode", "Decode an SMS-DELIVER or SMS-SUBMIT PDU");
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
