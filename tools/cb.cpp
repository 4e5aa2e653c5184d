// kest cb: cell broadcast pages and messages as a modem reports them.
#include <memory>

#include "kest/kest.h"
#include "tools/commands.h"
#include "tools/names.h"
#include "tools/parts.h"
#include "tools/text_view.h"

namespace {

struct cb_options {
  std::string page;
  bool json = false;
};

struct cb_message : message_part {
  kest_sms_cb_info info = {};
  kest_sms_msg_class msg_class = KEST_SMS_CLASS_NONE;
  bool has_text = true;
};

// without_filling drops the carriage returns that fill up a page.
std::string without_filling(std::string hex) {
  while (hex.ends_with("0d")) {
    hex.resize(hex.size() - 2);
  }
  return hex;
}

// require_page refuses a page above the total of its message: it would stand for one that is
// missing. A UMTS message has no such number, and may have 0 pages.
void require_page(const kest_sms_cb_info &info) {
  if (info.format == KEST_CB_FORMAT_GSM && info.page_number > info.total_pages) {
    throw command_failure("page " + std::to_string(info.page_number) + " is above the total of " +
                          std::to_string(info.total_pages));
  }
}

cb_message decode(const std::string &page) {
  constexpr char UNTOUCHED = '~';
  constexpr size_t HEADER_SIZE = 6;
  constexpr size_t MAX_OCTETS = 7 + 255 * 83;
  if (page.size() < 2 * HEADER_SIZE || page.size() > 2 * MAX_OCTETS) {
    throw command_failure("no message has " + std::to_string(page.size() / 2) + " octets");
  }
  const std::vector<uint8_t> octets = octets_of(page);
  char text[KEST_SMS_CB_TEXT_SIZE] = {UNTOUCHED};
  cb_message message;
  if (kest_sms_decode_gw_cb_pdu_v2(octets.data(), static_cast<uint16_t>(octets.size()), text,
                                   &message.info, &message.msg_class) == 0) {
    throw command_failure("the library refuses this message; --trace tells why");
  }
  require_page(message.info);
  message.has_text = text[0] != UNTOUCHED;
  if (message.has_text) {
    message.text = without_filling(text);
  }
  if (message.info.format == KEST_CB_FORMAT_GSM && message.info.total_pages > 1) {
    message.part = message.info.page_number;
    message.parts = message.info.total_pages;
  }
  return message;
}

std::string identifier_kind(const kest_sms_cb_info &info) {
  if (info.message_identifier >= 0x1100 && info.message_identifier <= 0x1107) {
    return "ETWS";
  }
  return info.message_identifier >= 4370 && info.message_identifier <= 4399 ? "CMAS" : "";
}

void add_numbers(view &shown, const kest_sms_cb_info &info) {
  const std::string kind = identifier_kind(info);
  shown.add("identifier", "identifier", info.message_identifier,
            std::to_string(info.message_identifier) + (kind.empty() ? "" : ", " + kind));
  char serial[16];
  snprintf(serial, sizeof serial, "0x%04X: ", info.serial_number);
  shown.add("serial_number", "serial number",
            {{"value", info.serial_number},
             {"scope", scope_name(info.geographical_scope)},
             {"code", info.message_code},
             {"update", info.update_number}},
            serial + ("message " + std::to_string(info.message_code)) + ", update " +
                std::to_string(info.update_number) + ", scope " +
                scope_name(info.geographical_scope));
}

void add_etws_warning(view &shown, const kest_sms_cb_info &info) {
  const bool alert = info.emergency_user_alert != 0, popup = info.popup != 0;
  const std::string name = etws_name(info.warning_type);
  shown.add("etws", "warning", {{"type", name}, {"alert", alert}, {"popup", popup}},
            name + (alert ? ", alert the user" : "") + (popup ? ", show at once" : ""));
}

void add_cmas_warning(view &shown, const kest_sms_cb_info &info) {
  const std::string name = cmas_name(info.cmas_class);
  nlohmann::ordered_json fields = {{"class", name}};
  std::string readable = name;
  const auto add = [&](const char *key, int value, const char *zero, const char *one) {
    if (value >= 0) {
      fields[key] = value == 0 ? zero : one;
      readable += std::string(", ") + key + ' ' + (value == 0 ? zero : one);
    }
  };
  add("severity", info.cmas_severity, "extreme", "severe");
  add("urgency", info.cmas_urgency, "immediate", "expected");
  add("certainty", info.cmas_certainty, "observed", "likely");
  shown.add("cmas", "warning", fields, readable);
}

void add_pages(view &shown, const cb_message &message) {
  const kest_sms_cb_info &info = message.info;
  if (message.missing || info.format == KEST_CB_FORMAT_UMTS) {
    shown.add("pages", "pages", info.total_pages);
    shown.add_missing(message.missing.value_or(std::vector<unsigned>()));
  } else {
    shown.add("page", "page", {{"number", info.page_number}, {"total", info.total_pages}},
              std::to_string(info.page_number) + " of " + std::to_string(info.total_pages));
  }
}

void add_text(view &shown, const cb_message &message) {
  const kest_sms_cb_info &info = message.info;
  if (info.language == KEST_CB_LANGUAGE_IN_TEXT) {
    shown.add("language", "language", std::string(info.language_chars, info.language_chars + 2));
  } else if (info.language != KEST_CB_LANGUAGE_NONE) {
    shown.add("language", "language", language_name(info.language));
  }
  if (message.msg_class != KEST_SMS_CLASS_NONE) {
    shown.add("class", "class", message.msg_class);
  }
  if (message.has_text) {
    shown.add("text", "text", decoded_text(message.text));
  } else {
    shown.add("text", "text", nullptr, "lost: more than 1252 octets of UTF-8");
  }
}

view view_of(const cb_message &message) {
  constexpr const char *FORMS[] = {"", "GSM", "UMTS", "ETWS"};
  constexpr const char *TITLES[] = {"", "GSM cell broadcast", "UMTS cell broadcast",
                                    "ETWS primary notification"};
  const kest_sms_cb_info &info = message.info;
  view shown(TITLES[info.format], {{"form", FORMS[info.format]}});
  add_numbers(shown, info);
  const std::string kind = identifier_kind(info);
  if (kind == "ETWS") {
    add_etws_warning(shown, info);
  } else if (kind == "CMAS") {
    add_cmas_warning(shown, info);
  }
  if (info.format != KEST_CB_FORMAT_ETWS_PRIMARY) {
    add_pages(shown, message);
    add_text(shown, message);
  } else if (info.timestamp[0] != '\0') {
    shown.add("timestamp", "time", info.timestamp, readable_time(info.timestamp));
  }
  return shown;
}

bool same_broadcast(const cb_message &a, const cb_message &b) {
  return a.info.message_identifier == b.info.message_identifier &&
         a.info.serial_number == b.info.serial_number && a.info.total_pages == b.info.total_pages;
}

void run(const cb_options &options) {
  read_messages<cb_message>("page", options.page,
                            {decode, same_broadcast, [&](const cb_message &whole) {
                               view_of(whole).print(options.json);
                             }});
}

} // namespace

void add_cb_command(CLI::App &app) {
  const auto options = std::make_shared<cb_options>();
  CLI::App *command = app.add_subcommand("cb", "Decode a cell broadcast page or message");
  command
      ->add_option("page", options->page,
                   "Its octets as hexadecimal text, or - to read one page a line from standard "
                   "input and join the pages of a message")
      ->required();
  command->add_flag("--json", options->json, "Write a JSON object for each message");
  command->callback([options] { run(*options); });
}
