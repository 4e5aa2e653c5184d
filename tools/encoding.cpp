#include "tools/encoding.h"

#include <array>
#include <iostream>
#include <string_view>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/input.h"
#include "tools/output.h"
#include "tools/text_view.h"

namespace {

constexpr size_t GW_DIGITS = 20;       // of an address field (3GPP TS 23.040, clause 9.1.2.5)
constexpr size_t SEGMENT_OCTETS = 255; // of text, that an encoder reads

// number_fault tells what is wrong with a number; "" if nothing is.
std::string number_fault(const std::string &number, size_t max_digits) {
  std::string_view digits = number;
  if (digits.starts_with('+')) {
    digits.remove_prefix(1);
  }
  if (digits.empty()) {
    return "the number is empty";
  }
  if (digits.find_first_not_of("0123456789*#") != std::string_view::npos) {
    return "'" + number + "' is no number: digits, '*' and '#' are wanted, behind a '+' or not";
  }
  return digits.size() > max_digits
             ? "'" + number + "' has more than " + std::to_string(max_digits) + " digits"
             : "";
}

// service_centre_field returns the octets in front of the TPDU: those of the number, or one octet
// 0, with which the modem uses its own service centre.
std::vector<uint8_t> service_centre_field(const std::string &smsc) {
  std::vector<uint8_t> field(KEST_SMS_SMSC_SIZE);
  const int32_t written =
      kest_sms_encode_gw_smsc(smsc.c_str(), field.data(), static_cast<int32_t>(field.size()));
  field.resize(written > 0 ? static_cast<size_t>(written) : 1);
  return field;
}

// read_back returns what a receiver makes of a PDU, as UTF-8.
std::string read_back(const std::string &pdu) {
  std::array<char, KEST_SMS_USERDATA_TEXT_SIZE> userdata = {};
  if (kest_sms_decode_gw_submit_pdu(pdu.c_str(), nullptr, nullptr, userdata.data(), nullptr) == 0) {
    kest_sms_decode_gw_deliver_pdu(pdu.c_str(), nullptr, nullptr, nullptr, userdata.data(),
                                   nullptr);
  }
  const std::vector<uint8_t> text = octets_of(userdata.data());
  return {text.begin(), text.end()};
}

// first_segment returns how many characters of `text` one segment takes.
size_t first_segment(const std::string &text, bool is_hex) {
  uint16_t length = 0;
  kest_sms_get_long_message_segment(text.c_str(), is_hex, &length);
  return length;
}

// segments_of cuts a text into the pieces that go out one by one.
std::vector<segment> segments_of(const std::string &text, bool is_hex) {
  const int32_t is_long = kest_sms_is_long_message(text.c_str(), is_hex);
  if (is_long < 0) {
    throw command_failure("the text has more than " + std::to_string(KEST_SMS_SIZED_TEXT) +
                          " characters");
  }
  std::vector<segment> segments;
  if (is_long == 0) {
    segments.push_back({text, 1, 1});
  }
  for (size_t at = 0; is_long != 0 && at < text.size(); at += segments.back().text.size()) {
    const std::string rest = text.substr(at);
    segments.push_back({rest.substr(0, first_segment(rest, is_hex)), 0, 0});
    segments.back().sequence = static_cast<int32_t>(segments.size());
  }
  for (segment &part : segments) {
    part.total = static_cast<int32_t>(segments.size());
    const bool whole = part.total == 1 || first_segment(part.text, is_hex) == part.text.size();
    if (!whole || part.text.size() / (is_hex ? 2 : 1) > SEGMENT_OCTETS) {
      throw command_failure(
          "segment " + std::to_string(part.sequence) +
          " does not fit: alone it takes another alphabet, or has over 255 octets");
    }
  }
  return segments;
}

} // namespace

void add_text_options(CLI::App &command, text_options &options, size_t max_digits) {
  command.add_option("number", options.number, "Digits, '*' and '#', behind a '+' or not")
      ->required()
      ->check([max_digits](const std::string &number) { return number_fault(number, max_digits); });
  command
      .add_option("text", options.words,
                  "The text; words are joined by blanks. A - reads standard input")
      ->required();
  command.add_flag("--hex", options.is_hex, "The text is hexadecimal text of its UTF-8 form");
  command.add_flag("--json", options.json, "Write a JSON object for each PDU");
}

void add_gw_options(CLI::App &command, gw_options &options) {
  add_text_options(command, options, GW_DIGITS);
  command.add_option("--class", options.msg_class, "Message class")
      ->check(CLI::IsMember({0, 1, 2, 3}));
  command.add_option("--smsc", options.smsc, "Service-centre number to put in front")
      ->check([](const std::string &number) { return number_fault(number, GW_DIGITS); });
}

std::string message_text(const text_options &options) {
  std::string text;
  if (options.words == std::vector<std::string>{"-"}) {
    text = read_text();
  } else {
    for (const std::string &word : options.words) {
      text += (text.empty() ? "" : " ") + word;
    }
  }
  if (!options.is_hex) {
    return split_surrogates(text);
  }
  if (!is_hex_text(text)) {
    throw CLI::ValidationError("--hex", "the text is not hexadecimal: '" + printable(text) + "'");
  }
  return text;
}

void print_message(const text_options &options, nlohmann::ordered_json object, size_t length,
                   const std::string &pdu) {
  if (options.json) {
    object["length"] = length;
    object["pdu"] = pdu;
    print_json(object);
  } else {
    print_line("AT+CMGS=" + std::to_string(length) + '\n' + pdu);
  }
}

kest_sms_encode_options detail_options(const gw_options &options, const segment &part) {
  kest_sms_encode_options detail = {};
  detail.msg_class = options.msg_class.value_or(KEST_SMS_CLASS_NONE);
  detail.concatenated = part.total > 1;
  detail.total = static_cast<uint8_t>(part.total);
  detail.sequence = static_cast<uint8_t>(part.sequence);
  return detail;
}

void encode_segments(const gw_options &options, const char *type, const segment_encoder &encode) {
  const std::vector<segment> segments = segments_of(message_text(options), options.is_hex);
  const std::vector<uint8_t> smsc = service_centre_field(options.smsc);
  std::vector<std::string> pdus; // all of them first: half a message is not worth sending
  for (const segment &part : segments) {
    std::vector<uint8_t> octets = smsc;
    octets.resize(smsc.size() + KEST_SMS_DELIVER_PDU_SIZE); // the larger of the two kinds
    const uint32_t size = encode(part, std::span(octets).subspan(smsc.size()));
    if (size == 0) {
      throw command_failure("the message can't be encoded; --trace tells why");
    }
    octets.resize(smsc.size() + size);
    pdus.push_back(hex_of(octets));
  }
  for (size_t i = 0; i < segments.size(); ++i) {
    const segment &part = segments[i];
    nlohmann::ordered_json object = {{"type", type}};
    if (part.total > 1) {
      object["segment"] = {{"total", part.total}, {"sequence", part.sequence}};
    }
    print_message(options, object, pdus[i].size() / 2 - smsc.size(), pdus[i]);
    const std::string read = read_back(pdus[i]);
    if (!options.is_hex && read != part.text) {
      std::cerr << "kest: warning: this is not the whole text; a receiver reads: "
                << printable(join_surrogates(read)) << '\n';
    }
  }
}
