// sms/decode/message.h: what the decoders of short messages share: the start of a PDU, and its user
// data. Each kind of message has its own fields between them.
#pragma once
#include <array>
#include <cstdint>

#include "kest/types.h"
#include "octets/reader.h"
#include "sms/tpdu.h"

constexpr size_t PDU_SIZE = 255; // octets, service-centre field included

// A PDU under decoding. `in` reads `pdu`, so that a message stays where it was made.
struct received_message {
  explicit received_message(const char *name) : log_name(name) {}
  received_message(const received_message &) = delete;
  received_message &operator=(const received_message &) = delete;

  const char *log_name; // the exported function's, for the log lines
  std::array<uint8_t, PDU_SIZE> pdu;
  uint16_t pdu_len = 0;
  octet_reader in;
  uint8_t first_octet = 0;
};

// Where the user data goes.
struct user_data_targets {
  char *userdata;          // KEST_SMS_USERDATA_TEXT_SIZE bytes
  kest_sms_udh_info *udh;  // may be null
  uint32_t *udh_no_concat; // as kest_decode_user_data_header treats it
};

// kest_sms_open_message reads `pdu` up to the first octet of the TPDU and writes the service-centre
// number, if there is one, to `smsc`. `mtis` has a bit for each TP-MTI that the caller decodes. It
// returns false, with a line in the log, for a `pdu` that is too long or of another type.
[[nodiscard]] bool kest_sms_open_message(received_message &message, const char *pdu, char *smsc,
                                         unsigned mtis);

// kest_sms_read_user_data reads TP-UDL and TP-UD and writes the text, or the whole PDU if the flag
// says that it is none. It returns false, with a line in the log and `userdata` unchanged, for user
// data of more than 160 septets or 140 octets, or shorter than its header.
[[nodiscard]] bool kest_sms_read_user_data(received_message &message, kest_gw_alphabet alphabet,
                                           const user_data_targets &out);
