// kest cdma: a CDMA Submit message from a number and a text.
#include <array>
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/encoding.h"

namespace {

constexpr size_t MAX_DIGITS = 24;

struct cdma_options : text_options {
  bool status_report = false;
};

void run(const cdma_options &options) {
  const std::string text = message_text(options);
  if (kest_sms_is_long_message(text.c_str(), options.is_hex) != 0) {
    throw command_failure("the text is too long for one message, and CDMA messages stand alone");
  }
  std::array<uint8_t, KEST_SMS_CDMA_SUBMIT_PDU_SIZE> pdu;
  const uint32_t size = kest_sms_encode_cdma_submit_pdu(
      options.number.c_str(), text.c_str(), options.status_report, options.is_hex, pdu.data());
  if (size == 0) {
    throw command_failure("the message can't be encoded; --trace tells why");
  }
  print_message(options, {{"type", "CDMA-SUBMIT"}}, size, hex_of({pdu.data(), size}));
}

} // namespace

void add_cdma_command(CLI::App &app) {
  const auto options = std::make_shared<cdma_options>();
  CLI::App *command = app.add_subcommand("cdma", "Encode a CDMA Submit message");
  add_text_options(*command, *options, MAX_DIGITS);
  command->add_flag("--status-report", options->status_report, "Ask for an acknowledgment");
  command->callback([options] { run(*options); });
}
