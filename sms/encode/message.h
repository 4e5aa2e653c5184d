// sms/encode/message.h: the layout of an SMS-SUBMIT and an SMS-DELIVER (3GPP TS 23.040, clauses
// 9.2.2.1 and 9.2.2.2). The exported encoders state what varies and call one of the two functions.
#pragma once
#include <cstdint>
#include <optional>

#include "kest/types.h"

// A concatenated short message, 16-bit reference (TS 23.040, clause 9.2.3.24.8).
struct concatenation_header {
  uint16_t reference;
  uint8_t total;
  uint8_t sequence;
};

// What both kinds of message carry.
struct message_content {
  const char *log_name; // the exported function's, for the log lines
  const char *number;
  const char *text;
  bool is_hex;
  uint8_t class_bits = 0; // ORed into TP-DCS
  bool cut = false;       // a text that a segment does not take as a whole fails
  std::optional<concatenation_header> header = std::nullopt;
};

struct submit_message {
  message_content content;
  bool status_report;
  uint8_t reference; // TP-MR
  uint8_t validity;  // TP-VP, relative format; 0 means KEST_SMS_VALIDITY_DEFAULT
};

struct deliver_message {
  message_content content;
  bool reply_path;
  const char *timestamp; // may be null
};

// Where the PDU goes. `packing_size` is the capacity that the caller states; it stops the packing
// of septets, and nothing else. `octets` has room for the largest PDU of its kind.
struct pdu_buffer {
  uint8_t *octets;
  uint32_t packing_size;
};

// kest_sms_encode_submit and kest_sms_encode_deliver return the octets of the PDU, and 0 with a
// line in the log if the number is empty or the text doesn't fit its segment. What stands ahead of
// the number, or of TP-UDL, is written then.
uint32_t kest_sms_encode_submit(const submit_message &message, pdu_buffer pdu);
uint32_t kest_sms_encode_deliver(const deliver_message &message, pdu_buffer pdu);
