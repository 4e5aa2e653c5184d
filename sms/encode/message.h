// sms/encode/message.h: what the encoders of SMS-SUBMIT and SMS-DELIVER share (3GPP TS 23.040,
// clauses 9.2.2.1 and 9.2.2.2): the first octet, the address and the user data.
#pragma once
#include <cstdint>
#include <optional>

#include "kest/types.h"
#include "octets/writer.h"
#include "sms/encode/user_data.h"

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

// kest_sms_detail_content returns the content of a message with `options`.
message_content kest_sms_detail_content(message_content plain,
                                        const kest_sms_encode_options &options);

// kest_sms_segment_content returns the content of segment `sequence` of `total`. A message of less
// than two segments is a single one: it has no header, and a long text is cut off.
message_content kest_sms_segment_content(message_content plain, int32_t total, int32_t sequence);

// kest_sms_put_address writes the address field. An empty number gives false and a line in the log.
[[nodiscard]] bool kest_sms_put_address(octet_writer &out, const message_content &content);

// kest_sms_put_coding writes TP-PID and TP-DCS.
void kest_sms_put_coding(octet_writer &out, const message_content &content,
                         const message_text &text);

// kest_sms_put_user_data writes TP-UDL and TP-UD and returns the octets of the whole PDU. It
// returns 0, with a line in the log, if the text doesn't fit its segment. `packing_size` is the
// capacity that the caller states: it stops the packing of septets, and nothing else.
uint32_t kest_sms_put_user_data(octet_writer &out, const message_content &content,
                                const message_text &text, uint32_t packing_size);

// kest_sms_close_segment ends the concatenated message if its last segment, by the numbers of the
// caller, has been encoded. It returns `size`.
int32_t kest_sms_close_segment(uint32_t size, int32_t total, int32_t sequence);
