// kest submit: an SMS-SUBMIT from a number and a text.
#include <array>
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/encoding.h"

namespace {

struct submit_options : encoding_options {
  bool status_report = false;
  unsigned validity = KEST_SMS_VALIDITY_DEFAULT;
};

void run(const submit_options &options) {
  const std::string text = message_text(options);
  std::array<uint8_t, KEST_SMS_SUBMIT_PDU_SIZE> pdu;
  uint32_t size = 0;
  if (options.msg_class) {
    const kest_sms_encode_options detail = detail_options(options);
    size = kest_sms_encode_gw_submit_pdu_detail(options.number.c_str(), text.c_str(),
                                                options.status_report, options.is_hex, &detail,
                                                pdu.data(), pdu.size());
  } else {
    size = kest_sms_encode_gw_submit_pdu_with_validity(
        options.number.c_str(), text.c_str(), options.status_report, options.is_hex, pdu.data(),
        pdu.size(), static_cast<uint8_t>(options.validity));
  }
  print_pdu(options, "SUBMIT", {pdu.data(), size});
}

} // namespace

void add_submit_command(CLI::App &app) {
  const auto options = std::make_shared<submit_options>();
  CLI::App *command = app.add_subcommand("submit", "Encode an SMS-SUBMIT: a message to be sent");
  add_encoding_options(*command, *options);
  command->add_flag("--status-report", options->status_report, "Ask for a status report");
  command->add_option("--validity", options->validity, "TP-VP, relative format")
      ->check(CLI::Range(1, 255))
      ->excludes("--class")
      ->capture_default_str();
  command->callback([options] { run(*options); });
}
