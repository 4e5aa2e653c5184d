// kest submit: an SMS-SUBMIT from a number and a text.
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/encoding.h"

namespace {

struct submit_options : gw_options {
  bool status_report = false;
  unsigned validity = KEST_SMS_VALIDITY_DEFAULT;
};

void run(const submit_options &options) {
  const char *const number = options.number.c_str();
  encode_segments(options, "SUBMIT", [&](const segment &part, std::span<uint8_t> pdu) {
    const auto size = static_cast<uint32_t>(pdu.size());
    if (options.msg_class) {
      const kest_sms_encode_options detail = detail_options(options, part);
      return kest_sms_encode_gw_submit_pdu_detail(number, part.text.c_str(), options.status_report,
                                                  options.is_hex, &detail, pdu.data(), size);
    }
    return static_cast<uint32_t>(kest_sms_encode_long_gw_submit_pdu_with_validity(
        number, part.text.c_str(), options.status_report, options.is_hex, part.total, part.sequence,
        pdu.data(), size, static_cast<uint8_t>(options.validity)));
  });
}

} // namespace

void add_submit_command(CLI::App &app) {
  const auto options = std::make_shared<submit_options>();
  CLI::App *command = app.add_subcommand(
      "submit", "Encode an SMS-SUBMIT: a message to be sent, in segments if it is long");
  add_gw_options(*command, *options);
  command->add_flag("--status-report", options->status_report, "Ask for a status report");
  command->add_option("--validity", options->validity, "TP-VP, relative format")
      ->check(CLI::Range(1, 255))
      ->excludes("--class")
      ->capture_default_str();
  command->callback([options] { run(*options); });
}
