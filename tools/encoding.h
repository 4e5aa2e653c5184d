// tools/encoding.h: what `kest submit` and `kest deliver` share.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "kest/types.h"

struct encoding_options {
  std::string number;
  std::vector<std::string> words; // of the text
  bool is_hex = false;
  std::optional<unsigned> msg_class;
  std::string smsc;
  bool json = false;
};

// add_encoding_options adds the number, the text and the common options to `command`.
void add_encoding_options(CLI::App &command, encoding_options &options);

// message_text returns the words, with blanks between them, in the form that the encoders take.
std::string message_text(const encoding_options &options);

// detail_options returns the record for a message of one segment and the class of `options`.
kest_sms_encode_options detail_options(const encoding_options &options);

// print_pdu writes a TPDU of the kind `type` with its service-centre field, in the form that
// AT+CMGS takes (3GPP TS 27.005, clause 4.3), and warns if a receiver reads another text than the
// one that was asked for.
void print_pdu(const encoding_options &options, const char *type, std::span<const uint8_t> tpdu);
