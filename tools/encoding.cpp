#include "tools/encoding.h"

#include <array>
#include <iostream>
#include <string_view>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/text_view.h"

namespace {

constexpr size_t MAX_DIGITS = 20; // of an address field (3GPP TS 23.040, clause 9.1.2.5)

// number_fault tells what is wrong with a number; "" if nothing is.
std::string number_fault(const std::string &number) {
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
  return digits.size() > MAX_DIGITS ? "'" + number + "' has more than 20 digits" : "";
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

} // namespace

void add_encoding_options(CLI::App &command, encoding_options &options) {
  command.add_option("number", options.number, "Digits, '*' and '#', behind a '+' or not")
      ->required()
      ->check(number_fault);
  command.add_option("text", options.words, "The text; words are joined by blanks")
      ->required()
      ->type_name("TEXT ...");
  command.add_flag("--hex", options.is_hex, "The text is hexadecimal text of its UTF-8 form");
  command.add_option("--class", options.msg_class, "Message class, 0 to 3")
      ->check(CLI::Range(0, 3));
  command.add_option("--smsc", options.smsc, "Service-centre number to put in front")
      ->check(number_fault);
  command.add_flag("--json", options.json, "Write a JSON object");
}

std::string message_text(const encoding_options &options) {
  std::string text;
  for (const std::string &word : options.words) {
    text += (text.empty() ? "" : " ") + word;
  }
  if (!options.is_hex) {
    return split_surrogates(text);
  }
  if (!is_hex_text(text)) {
    throw CLI::ValidationError("--hex", "the text is not hexadecimal: '" + text + "'");
  }
  return text;
}

kest_sms_encode_options detail_options(const encoding_options &options) {
  kest_sms_encode_options detail = {};
  detail.msg_class = options.msg_class.value_or(KEST_SMS_CLASS_NONE);
  return detail;
}

void print_pdu(const encoding_options &options, const char *type, std::span<const uint8_t> tpdu) {
  if (tpdu.empty()) {
    throw command_failure("the message can't be encoded");
  }
  std::vector<uint8_t> octets = service_centre_field(options.smsc);
  octets.insert(octets.end(), tpdu.begin(), tpdu.end());
  const std::string pdu = hex_of(octets);
  if (options.json) {
    print_json({{"type", type}, {"length", tpdu.size()}, {"pdu", pdu}});
  } else {
    std::cout << "AT+CMGS=" << tpdu.size() << '\n' << pdu << '\n';
  }
  const std::string read = read_back(pdu);
  if (!options.is_hex && read != message_text(options)) {
    std::cerr << "kest: warning: this is not the whole text; a receiver reads: "
              << printable(join_surrogates(read)) << '\n';
  }
}
