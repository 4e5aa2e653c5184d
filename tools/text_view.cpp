#include "tools/text_view.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "kest/kest.h"
#include "tools/output.h"

namespace {

bool is_lead_of_four(char c) {
  return (static_cast<uint8_t>(c) & 0xF8) == 0xF0;
}

void append_three_bytes(std::string &out, unsigned unit) {
  out += static_cast<char>(0xE0 | unit >> 12);
  out += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
  out += static_cast<char>(0x80 | (unit & 0x3F));
}

// surrogate_at returns the unit of a surrogate's three bytes at the start of `text`, or 0.
unsigned surrogate_at(std::string_view text) {
  if (text.size() < 3 || static_cast<uint8_t>(text[0]) != 0xED ||
      static_cast<uint8_t>(text[1]) < 0xA0) {
    return 0;
  }
  return 0xD000u | (static_cast<uint8_t>(text[1]) & 0x3Fu) << 6 |
         (static_cast<uint8_t>(text[2]) & 0x3Fu);
}

paint paint_of(std::string_view label) {
  if (label == "missing") {
    return paint::CAUTION;
  }
  return label == "warning" ? paint::ALARM : paint::LABEL;
}

} // namespace

bool is_hex_text(std::string_view text) {
  return text.size() % 2 == 0 && std::all_of(text.begin(), text.end(), [](char c) {
           return std::isxdigit(static_cast<unsigned char>(c)) != 0;
         });
}

std::string hex_fault(const std::string &text) {
  return !text.empty() && is_hex_text(text)
             ? ""
             : "not hexadecimal text, two digits to an octet: '" + printable(text) + "'";
}

std::vector<uint8_t> octets_of(const std::string &hex) {
  std::vector<uint8_t> octets(hex.size() / 2);
  for (size_t i = 0; i < octets.size(); ++i) { // a joined text exceeds the library's 16-bit sizes
    octets[i] = static_cast<uint8_t>(kest_hexchar_to_binary(hex[2 * i]) << 4 |
                                     kest_hexchar_to_binary(hex[2 * i + 1]));
  }
  return octets;
}

std::string hex_of(std::span<const uint8_t> octets) {
  std::string hex(2 * octets.size() + 1, '\0');
  kest_binary_to_hexstring_uppercase(octets.data(), static_cast<uint16_t>(octets.size()),
                                     hex.data(), static_cast<uint16_t>(hex.size()));
  hex.pop_back();
  return hex;
}

std::string split_surrogates(std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size();) {
    uint16_t units[2] = {};
    if (is_lead_of_four(text[i]) && i + 4 <= text.size() &&
        kest_convert_utf8_to_ucs2(std::string(text.substr(i, 4)).c_str(), sizeof units, units) ==
            sizeof units) {
      append_three_bytes(out, units[0]);
      append_three_bytes(out, units[1]);
      i += 4;
    } else {
      out += text[i++];
    }
  }
  return out;
}

std::string join_surrogates(std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size();) {
    const unsigned high = surrogate_at(text.substr(i));
    if (high == 0) {
      out += text[i++];
      continue;
    }
    const unsigned low = surrogate_at(text.substr(i + 3));
    if (high < 0xDC00 && low >= 0xDC00) {
      const uint16_t units[2] = {static_cast<uint16_t>(high), static_cast<uint16_t>(low)};
      char character[sizeof units * 3 / 2 + 1];
      kest_convert_ucs2_to_utf8(units, sizeof units, character);
      out += character;
      i += 6;
    } else {
      out += "\uFFFD";
      i += 3;
    }
  }
  return out;
}

std::string gsm_text(std::span<const uint8_t> packed, size_t septets) {
  // The library maps septets as the user data of a message: a DELIVER with nothing else in it.
  std::vector<uint8_t> pdu = {0x00, 0x04, 0x00, 0x81, 0x00, 0x00};
  pdu.resize(pdu.size() + 7); // time stamp
  pdu.push_back(static_cast<uint8_t>(septets));
  pdu.insert(pdu.end(), packed.begin(), packed.end());
  char userdata[KEST_SMS_USERDATA_TEXT_SIZE] = "";
  kest_sms_decode_gw_deliver_pdu(hex_of(pdu).c_str(), nullptr, nullptr, nullptr, userdata, nullptr);
  const std::vector<uint8_t> text = octets_of(userdata);
  return {text.begin(), text.end()};
}

std::string printable(std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<uint8_t>(text[i]);
    bool control = c != '\n' && std::iscntrl(c) != 0;
    if (c == 0xC2 && i + 1 < text.size() && static_cast<uint8_t>(text[i + 1]) < 0xA0) {
      c = static_cast<uint8_t>(text[++i]); // U+0080 to U+009F
      control = true;
    }
    if (control) {
      char escaped[8];
      snprintf(escaped, sizeof escaped, "\\x%02x", c);
      out += escaped;
    } else {
      out += text[i];
    }
  }
  return out;
}

std::string decoded_text(const std::string &hex) {
  const std::vector<uint8_t> octets = octets_of(hex);
  return join_surrogates({reinterpret_cast<const char *>(octets.data()), octets.size()});
}

std::string readable_time(const std::string &timestamp) {
  int quarters = 0;
  std::from_chars(timestamp.data() + 20, timestamp.data() + timestamp.size(), quarters);
  char zone[24];
  snprintf(zone, sizeof zone, " %c%02d:%02d", timestamp[19], quarters / 4, quarters % 4 * 15);
  return timestamp.substr(0, 10) + " " + timestamp.substr(11, 8) + zone;
}

void print_json(const nlohmann::ordered_json &object) {
  using json = nlohmann::ordered_json;
  print_line(object.dump(-1, ' ', false, json::error_handler_t::replace));
}

view::view(const std::string &title, nlohmann::ordered_json head)
    : readable_(painted(paint::TITLE, title)), object_(std::move(head)) {}

void view::add(const char *key, const char *label, const nlohmann::ordered_json &value,
               std::string shown) {
  object_[key] = value;
  if (shown.empty()) {
    for (const auto &item : value.is_array() ? value : nlohmann::ordered_json::array({value})) {
      shown +=
          (shown.empty() ? "" : ", ") + (item.is_string() ? item.get<std::string>() : item.dump());
    }
  }
  shown = printable(shown);
  for (size_t i = 0; (i = shown.find('\n', i)) != std::string::npos; i += 18) {
    shown.insert(i + 1, 17, ' ');
  }
  readable_ +=
      "\n  " + painted(paint_of(label), label) + std::string(15 - strlen(label), ' ') + shown;
}

void view::add_missing(const std::vector<unsigned> &numbers) {
  if (!numbers.empty()) {
    add("missing", "missing", numbers);
  }
}

void view::print(bool json) const {
  if (json) {
    print_json(object_);
  } else {
    print_line(readable_);
  }
}
