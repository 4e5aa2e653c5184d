// kest deliver: an SMS-DELIVER from a number and a text, as a network would hand it over.
#include <ctime>
#include <memory>
#include <regex>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/encoding.h"

namespace {

struct deliver_options : gw_options {
  bool reply_path = false;
  std::string timestamp;
};

std::string timestamp_fault(const std::string &text) {
  static const std::regex shape(R"(\d{4}/\d\d/\d\d,\d\d:\d\d:\d\d[-+]\d\d)");
  return std::regex_match(text, shape) ? ""
                                       : "a time is YYYY/MM/DD,hh:mm:ss+zz, not '" + text + "'";
}

// current_timestamp returns the local time, its zone in quarters of an hour.
std::string current_timestamp() {
  const time_t now = time(nullptr);
  struct tm local = {};
  localtime_r(&now, &local);
  char date[32];
  strftime(date, sizeof date, "%Y/%m/%d,%H:%M:%S", &local);
  constexpr long QUARTER = 900; // seconds
  const long quarters = local.tm_gmtoff / QUARTER;
  char zone[24];
  snprintf(zone, sizeof zone, "%+03ld", quarters);
  return std::string(date) + zone;
}

void run(const deliver_options &options) {
  const char *const number = options.number.c_str();
  const std::string timestamp = options.timestamp.empty() ? current_timestamp() : options.timestamp;
  encode_segments(options, "DELIVER", [&](const segment &part, std::span<uint8_t> pdu) {
    const auto size = static_cast<uint32_t>(pdu.size());
    if (options.msg_class) {
      const kest_sms_encode_options detail = detail_options(options, part);
      return kest_sms_encode_gw_deliver_pdu_detail(number, part.text.c_str(), timestamp.c_str(),
                                                   options.reply_path, options.is_hex, &detail,
                                                   pdu.data(), size);
    }
    return static_cast<uint32_t>(kest_sms_encode_long_gw_deliver_pdu(
        number, part.text.c_str(), timestamp.c_str(), options.reply_path, options.is_hex,
        part.total, part.sequence, pdu.data(), size));
  });
}

} // namespace

void add_deliver_command(CLI::App &app) {
  const auto options = std::make_shared<deliver_options>();
  CLI::App *command =
      app.add_subcommand("deliver", "Encode an SMS-DELIVER: a message as it is received");
  add_gw_options(*command, *options);
  command->add_flag("--reply-path", options->reply_path, "Set TP-RP");
  command
      ->add_option("--time", options->timestamp,
                   "YYYY/MM/DD,hh:mm:ss+zz, the zone in quarters of an hour; default: now")
      ->check(timestamp_fault);
  command->callback([options] { run(*options); });
}
