/// @file
/// kest/sms_decode.h: decoders for short messages and cell broadcast.

/// @defgroup kest_sms_decode Decoders for short messages and cell broadcast
///
/// Input: `pdu` is hexadecimal text, not null, that begins with the service-centre field (an octet
/// 0 if there is none). Octets after its end read as 0. So do characters that are no digit.
///
/// Result: 1 for a decoded PDU. 0, with a line in the debug log, for
/// - more than 510 characters;
/// - another TP-MTI (a DELIVER may have the reserved value 3);
/// - a TP-UDL above 160 septets or 140 octets;
/// - a header that is longer than the user data.
///
/// `userdata` is unchanged then. Fields before the fault are written.
///
/// Outputs
/// - The caller owns every buffer and must give the size named below; no capacity is passed.
/// - `smsc`, `sender`, `destination`, `recipient`, the time stamps and `udh` may be null: the field
///   is skipped. No other pointer may be null.
/// - Clear every buffer first. `smsc` is unchanged if the PDU has no service centre, and neither a
///   time stamp nor an alphanumeric address gets a terminator.
/// - An alphanumeric address is written as up to 20 GSM 7 bit codes, one to a byte.
/// - A number has at most 20 digits, after a '+' if it is international, and a terminator. Its
///   semi-octets above 9 are '*', '#', 'c', 'd' and 'e'.
/// - NOTE: a filler inside a number ends the address field early, so every later field is read from
///   the wrong octet. An address that is skipped has its whole length.
///
/// Text: `userdata` gets hexadecimal text of at most 254 octets of UTF-8.
/// - 7 bit: a code after an escape comes from the extension table (3GPP TS 23.038, clause 6.2.1.1),
///   or from the default alphabet if that has none. Two escapes are a blank. In a text without any
///   escape the codes 0x5B to 0x5E, 0x60 and 0x7B to 0x7E are the ASCII characters.
/// - 8 bit: each octet is the character of its value.
/// - UCS-2: each unit is a character of its own, so a surrogate pair becomes two forms of three
///   bytes. A missing last octet is 0.
/// - A header without a valid concatenation element says that the message is no text: `userdata`
///   gets the whole PDU, in lower case. A null `udh` leaves the header unread.
/// - Compressed text is not expanded. Schemes 01xx xxxx (automatic deletion) are read as 7 bit text
///   without a class.
///
/// Time: "YYYY/MM/DD,hh:mm:ss+zz" (3GPP TS 23.040, clause 9.2.3.11), where zz is the zone in
/// quarters of an hour. A year whose tens digit is 9 is 19xx, any other 20xx. The sign is '-' for
/// zones from -48 to -1, else '+'. A semi-octet above 9 shows as a letter from a to f.
///
/// Any thread may call these functions.
/// @{
#ifndef KEST_SMS_DECODE_H
#define KEST_SMS_DECODE_H

#include "kest/export.h"
#include "kest/types.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// What the outputs must hold, in bytes.
enum {
  KEST_SMS_ADDRESS_TEXT_SIZE = 22, ///< a plus sign, 20 digits and a terminator
  KEST_SMS_TIME_TEXT_SIZE =
      23, ///< a text "YYYY/MM/DD,hh:mm:ss+zz", and a terminator of the caller's
  KEST_SMS_USERDATA_TEXT_SIZE = 511, ///< 510 hexadecimal digits and a terminator
  KEST_SMS_STATUS_TEXT_SIZE = 3,     ///< two digits and a terminator
  KEST_SMS_CB_TEXT_SIZE = 2505       ///< hexadecimal text of 1252 octets, and a terminator
};

/// kest_sms_decode_gw_deliver_pdu reads an SMS-DELIVER (3GPP TS 23.040, clause 9.2.2.1).
KEST_API uint32_t kest_sms_decode_gw_deliver_pdu(const char *pdu, char *smsc, char *sender,
                                                 char *timestamp, char *userdata,
                                                 kest_sms_udh_info *udh);

/// kest_sms_decode_gw_deliver_pdu_v2 also reports the message class, and in `udh_no_concat` whether
/// `userdata` holds the whole PDU (1) or text (0). Set `udh_no_concat` to 0 before the call: it is
/// written only if a header is read, and any other value that stands there makes `userdata` the
/// whole PDU. Short messages of type 0 (TP-PID 0x40) are refused. `msg_class` is untouched after
/// that refusal and that of the PDU's length or type: set it to KEST_SMS_CLASS_NONE before the
/// call.
KEST_API uint32_t kest_sms_decode_gw_deliver_pdu_v2(const char *pdu, char *smsc, char *sender,
                                                    char *timestamp, char *userdata,
                                                    kest_sms_udh_info *udh,
                                                    kest_sms_msg_class *msg_class,
                                                    uint32_t *udh_no_concat);

/// kest_sms_decode_gw_submit_pdu reads an SMS-SUBMIT (3GPP TS 23.040, clause 9.2.2.2). The validity
/// period is skipped: one octet in the relative format, seven in the absolute one. NOTE: none in
/// the enhanced one.
KEST_API uint32_t kest_sms_decode_gw_submit_pdu(const char *pdu, char *smsc, char *destination,
                                                char *userdata, kest_sms_udh_info *udh);

/// kest_sms_decode_gw_submit_pdu_v2 also reports the message class, which is KEST_SMS_CLASS_NONE
/// after a refusal of the PDU's length or type.
KEST_API uint32_t kest_sms_decode_gw_submit_pdu_v2(const char *pdu, char *smsc, char *destination,
                                                   char *userdata, kest_sms_udh_info *udh,
                                                   kest_sms_msg_class *msg_class);

/// kest_sms_decode_gw_status_report_pdu reads an SMS-STATUS-REPORT (3GPP TS 23.040, clause
/// 9.2.2.3): the number that the message went to, when the service centre received it, and when it
/// was delivered or last tried. `status`, not null, gets TP-ST as two hexadecimal digits in lower
/// case (clause 9.2.3.15; "00" is delivered). NOTE: a PDU that ends before TP-ST reads "00" as
/// well. One that ends before the second time stamp has the date 2000/00/00 there. The message
/// reference is not reported. `userdata` is written only if the parameter indicator announces user
/// data, so clear it before the call.
KEST_API uint32_t kest_sms_decode_gw_status_report_pdu(const char *pdu, char *smsc, char *recipient,
                                                       char *scts, char *discharge_time,
                                                       char *status, char *userdata,
                                                       kest_sms_udh_info *udh);

/// kest_sms_decode_gw_status_report_pdu_v2 also reports the message class, which is
/// KEST_SMS_CLASS_NONE after any refusal before the data coding scheme and for a report without
/// one.
KEST_API uint32_t kest_sms_decode_gw_status_report_pdu_v2(const char *pdu, char *smsc,
                                                          char *recipient, char *scts,
                                                          char *discharge_time, char *status,
                                                          char *userdata, kest_sms_udh_info *udh,
                                                          kest_sms_msg_class *msg_class);

/// kest_sms_decode_gw_cb_pdu reads a cell broadcast message (3GPP TS 23.041): `length` octets, not
/// hexadecimal text. Up to 88 are a page of a GSM message or, with an ETWS identifier, a primary
/// notification, whatever they hold; more are a UMTS message with all of its pages. Below 6 octets
/// nothing in `info` counts: octets after a short header read as 0, and so does a number of two
/// octets of which one is missing. It clears `info` and fills it, and writes the text to `text`, of
/// KEST_SMS_CB_TEXT_SIZE bytes, as hexadecimal text of its UTF-8 form. No pointer may be null.
///
/// Returns 1, or 0
/// - with a line in the log for a UMTS message of another type than 1, or with more pages than it
/// has
///   room for;
/// - without 4 KB of memory.
///
/// Clear `text` before the call. It is unchanged after a 0, and if there is no text: for an ETWS
/// primary notification and for less than 6 octets. NOTE: more than 1252 octets of UTF-8 leave it
/// unchanged too, with the result 1. Only the first 1252 septets or octets on the air count.
///
/// Each page of a UMTS message in the 7 bit alphabet is unpacked by itself, as far as its length
/// octet says. NOTE: in the other alphabets pages stand 82 octets apart, and the sum of their
/// lengths is taken of that run. A length above 82 counts as 82. Filling, such as carriage returns,
/// is part of the text; a language code before the text is not. Characters come out as in
/// `userdata` above.
KEST_API uint32_t kest_sms_decode_gw_cb_pdu(const uint8_t *cb_data, uint16_t length, char *text,
                                            kest_sms_cb_info *info);

/// kest_sms_decode_gw_cb_pdu_v2 also reports the message class, whatever the result:
/// KEST_SMS_CLASS_NONE where no data coding scheme is read.
KEST_API uint32_t kest_sms_decode_gw_cb_pdu_v2(const uint8_t *cb_data, uint16_t length, char *text,
                                               kest_sms_cb_info *info,
                                               kest_sms_msg_class *msg_class);

#ifdef __cplusplus
}
#endif

/// @}

#endif
