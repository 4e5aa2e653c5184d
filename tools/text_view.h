// tools/text_view.h: texts as a person expects them.
#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

// is_hex_text tells whether `text` is hexadecimal digits, two to an octet.
bool is_hex_text(std::string_view text);

// hex_fault tells what is wrong with hexadecimal text; "" if nothing is. An empty text is wrong.
std::string hex_fault(const std::string &text);

// octets_of returns the octets of hexadecimal text of any length.
std::vector<uint8_t> octets_of(const std::string &hex);

// hex_of returns at most 32767 octets as hexadecimal text in capital letters, as modems write them.
std::string hex_of(std::span<const uint8_t> octets);

// split_surrogates gives each character above U+FFFF of a UTF-8 text the two forms of three bytes
// of its surrogates. The encoders cut a code point to 16 bits, but send these as a proper pair.
std::string split_surrogates(std::string_view text);

// join_surrogates undoes that: the decoders hand back each 16-bit unit by itself. A surrogate
// without its partner becomes U+FFFD.
std::string join_surrogates(std::string_view text);

// gsm_text returns the text of packed septets of the GSM 7 bit default alphabet, at most 160.
std::string gsm_text(std::span<const uint8_t> packed, size_t septets);

// printable shows control characters other than line feeds as \xNN: what came from the air must
// not steer a terminal.
std::string printable(std::string_view text);

// decoded_text returns the text that a decoder gave as hexadecimal text of its UTF-8 form.
std::string decoded_text(const std::string &hex);

// readable_time shows the time zone of a decoded time in hours and minutes, which the message gives
// in quarters of an hour.
std::string readable_time(const std::string &timestamp);

// print_json writes one object as one line. Bytes that are no UTF-8 become U+FFFD.
void print_json(const nlohmann::ordered_json &object);

// What a command shows: one list of fields, which is a JSON object and a readable form in one.
class view {
public:
  // The title stands above the readable form; `head` are the first fields of the object.
  explicit view(const std::string &title, nlohmann::ordered_json head = {});

  // add appends a field. The readable form shows it after `label`, of at most 14 characters, as
  // `shown`, or as it is if that is empty, made printable.
  void add(const char *key, const char *label, const nlohmann::ordered_json &value,
           std::string shown = "");

  // add_missing appends the numbers of the parts that did not come in, if there are any.
  void add_missing(const std::vector<unsigned> &numbers);

  void print(bool json) const;

private:
  std::string readable_;
  nlohmann::ordered_json object_;
};
