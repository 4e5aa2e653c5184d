// tools/encoding.h: what the commands that encode a message share.
#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "kest/types.h"
#include "tools/text_view.h"

struct text_options {
  std::string number;
  std::vector<std::string> words; // of the text
  bool is_hex = false;
  bool json = false;
};

// What SUBMIT and DELIVER have beside.
struct gw_options : text_options {
  std::optional<unsigned> msg_class;
  std::string smsc;
};

// add_text_options adds the number of at most `max_digits` digits, the text and its options.
void add_text_options(CLI::App &command, text_options &options, size_t max_digits);
void add_gw_options(CLI::App &command, gw_options &options);

// message_text returns the words, with blanks between them, or for the word "-" alone what
// standard input holds, in the form that the encoders take.
std::string message_text(const text_options &options);

// print_message writes a PDU of `length` octets, without those of a service-centre field, in the
// form that AT+CMGS takes (3GPP TS 27.005, clause 4.3), or adds both to `object`.
void print_message(const text_options &options, nlohmann::ordered_json object, size_t length,
                   const std::string &pdu);

// One of the segments of a message, numbered from 1. A message that needs no segments is one of
// one.
struct segment {
  std::string text;
  int32_t total;
  int32_t sequence;
};

// detail_options returns the record for a segment and the class of `options`.
kest_sms_encode_options detail_options(const gw_options &options, const segment &part);

// What encodes a segment into `pdu` and returns its octets, or 0.
using segment_encoder = std::function<uint32_t(const segment &part, std::span<uint8_t> pdu)>;

// encode_segments writes a message of the kind `type` segment by segment, each with its
// service-centre field. It warns if a receiver will read another text.
void encode_segments(const gw_options &options, const char *type, const segment_encoder &encode);
