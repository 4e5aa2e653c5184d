/// @file
/// kest/sms_encode.h: SMS-SUBMIT and SMS-DELIVER PDUs from a number and a text.

/// @defgroup kest_sms_encode SMS-SUBMIT and SMS-DELIVER from a number and a text
///
/// The PDUs are TPDUs of 3GPP TS 23.040, clauses 9.2.2.1 and 9.2.2.2, from the first octet on. A
/// modem that wants a service-centre field gets the octets of kest_sms_encode_gw_smsc in front.
///
/// A number's digits, '*' and '#' become semi-octets; a leading '+' makes it international. Any
/// other character repeats the value before it, which is 0 at the start. A plus sign alone is a
/// number without digits. A PDU takes 20 digits. NOTE: more are left out, but the length octet of
/// the address counts them; refuse such a number.
///
/// Text: UTF-8, or hexadecimal text of it if `is_hex` is not 0. At most 255 octets count; longer
/// hexadecimal text counts as empty. The first byte of 0x80 or more, or backtick, decides:
/// - none: GSM 7 bit default alphabet, at most 160 septets, without characters that have no code;
/// - a stray byte 0x80 to 0xBF: 8 bit data, at most 140 octets, the low 8 bits of each character;
/// - else: UCS-2, at most 70 characters, each cut to its low 16 bits.
///
/// Text beyond the limit is dropped silently. To send a character above U+FFFF, hand over each of
/// its two surrogates as a form of three bytes.
///
/// A longer text goes out as a concatenated message (clause 9.2.3.24.8). Cut it with
/// kest_sms_get_long_message_segment and encode each segment, with the encoders at the end of this
/// header. For a class or a reference of your own take the _detail ones.
///
/// Number, text, options and `pdu` must not be null and must not overlap. The encoders return the
/// octets in `pdu`. For an empty number or a segment that is too long they return 0, with a line in
/// the debug log; `pdu` then holds the octets before the fault.
///
/// The two counters of the library, for TP-MR and for the reference of concatenated messages, are 0
/// at load and never saved; 0 follows their highest value. Any thread may call the functions that
/// use neither.
/// @{
#ifndef KEST_SMS_ENCODE_H
#define KEST_SMS_ENCODE_H

#include "kest/export.h"
#include "kest/types.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The size that `pdu` must have, in octets, whatever the text. `pdu_size` stops only the packing
/// of septets, and TP-UDL still counts them all. NOTE: the space left for the text is computed
/// modulo 65536, so a `pdu_size` smaller than the fields before it has no effect.
enum {
  KEST_SMS_DELIVER_PDU_SIZE = 170, ///< octets of an SMS-DELIVER
  KEST_SMS_SUBMIT_PDU_SIZE = 165   ///< octets of an SMS-SUBMIT
};

/// Other constants of the encoders.
enum {
  KEST_SMS_SMSC_SIZE = 12,         ///< octets of the service-centre field of a number of 20 digits
  KEST_SMS_VALIDITY_DEFAULT = 173, ///< TP-VP of an SMS-SUBMIT that names none: seven days (3GPP TS
                                   ///< 23.040, clause 9.2.3.12.1)
  KEST_SMS_SIZED_TEXT = 2048       ///< bytes of the longest text that is measured, without the
                                   ///< terminator: 1024 octets as hexadecimal text; of plain text
                                   ///< the first 1024 octets count
};

/// kest_sms_encode_gw_smsc writes the service-centre field for the number `str` and returns its
/// octets; 0, with nothing written, if `str` is empty: a host then puts one octet 0 in front.
/// Neither pointer may be null. `out` holds `out_size` octets, at least 2; digits without room are
/// left out.
KEST_API int32_t kest_sms_encode_gw_smsc(const char *str, uint8_t *out, int32_t out_size);

/// kest_sms_encode_gw_submit_pdu makes an SMS-SUBMIT that is valid for seven days. TP-MR comes from
/// a counter of the library, which each call steps, also one that fails: threads that share it take
/// turns. A `status_report` other than 0 asks for a report.
KEST_API uint32_t kest_sms_encode_gw_submit_pdu(const char *number, const char *text,
                                                uint32_t status_report, uint32_t is_hex,
                                                uint8_t *pdu, uint32_t pdu_size);

/// kest_sms_encode_gw_submit_pdu_with_validity is kest_sms_encode_gw_submit_pdu with a TP-VP of the
/// caller's, in the relative format; 0 stands for KEST_SMS_VALIDITY_DEFAULT.
KEST_API uint32_t kest_sms_encode_gw_submit_pdu_with_validity(const char *number, const char *text,
                                                              uint32_t status_report,
                                                              uint32_t is_hex, uint8_t *pdu,
                                                              uint32_t pdu_size, uint8_t validity);

/// kest_sms_encode_gw_submit_pdu_detail makes an SMS-SUBMIT that is valid for seven days, with the
/// class and, for a segment that the caller numbers, the concatenation header of `options`. TP-MR
/// is the low octet of `options->reference`, also without a header. NOTE: the text of a segment is
/// not held to the 152 septets or 133 octets that the header leaves room for; cut it before.
KEST_API uint32_t kest_sms_encode_gw_submit_pdu_detail(const char *number, const char *text,
                                                       uint32_t status_report, uint32_t is_hex,
                                                       const kest_sms_encode_options *options,
                                                       uint8_t *pdu, uint32_t pdu_size);

/// kest_sms_encode_gw_deliver_pdu makes an SMS-DELIVER. `timestamp` is the service-centre time as
/// the decoders give it, "YYYY/MM/DD,hh:mm:ss+zz" with the zone in quarters of an hour, read by
/// position. If the text is null or short, the missing octets of TP-SCTS keep their previous
/// content. The zone of a short text follows its last pair of digits. A `reply_path` other than 0
/// sets TP-RP.
KEST_API uint32_t kest_sms_encode_gw_deliver_pdu(const char *number, const char *text,
                                                 const char *timestamp, uint32_t reply_path,
                                                 uint32_t is_hex, uint8_t *pdu, uint32_t pdu_size);

/// kest_sms_encode_gw_deliver_pdu_detail makes an SMS-DELIVER with the class and the concatenation
/// header of `options`. NOTE: a segment's text is not held to the room that the header leaves.
KEST_API uint32_t kest_sms_encode_gw_deliver_pdu_detail(const char *number, const char *text,
                                                        const char *timestamp, uint32_t reply_path,
                                                        uint32_t is_hex,
                                                        const kest_sms_encode_options *options,
                                                        uint8_t *pdu, uint32_t pdu_size);

/// kest_sms_is_long_message returns 1 if `text` needs more than one message, and 0 if it fits one.
/// An encoder reads 255 octets of it at most, which characters of four octets can exceed. The
/// result is -1, and a line in the debug log says why, if `text` is null or has more than
/// KEST_SMS_SIZED_TEXT bytes. Any thread may call it.
KEST_API int32_t kest_sms_is_long_message(const char *text, uint32_t is_hex);

/// kest_sms_get_long_message_segment measures the first segment of `text`. `*segment_len` becomes
/// its length in bytes of `text`, which are hexadecimal digits if `is_hex` is not 0. The host goes
/// on after them until nothing is left; the number of calls is the `total` of the segments. It
/// returns the septets or octets that the segment takes, at most 152 or 133, and fails as
/// kest_sms_is_long_message does, also if `segment_len` is null; `*segment_len` stays untouched
/// then. Any thread may call it.
///
/// NOTE: three kinds of segment come out that the encoders of segments do not take as a whole.
/// - More than 255 octets, for characters of four octets, longer ones among 8 bit data, or hundreds
///   of control characters without a code. They are refused or cut off, and hexadecimal text counts
///   as empty: hand over a shorter piece, cut between characters, and count one segment more.
/// - The alphabet is that of all of `text`, while an encoder chooses that of the segment alone. It
///   refuses 8 bit data that by itself is 7 bit text with too many extension characters.
/// - A text that ends within a UTF-8 sequence: its last segment is refused.
KEST_API int32_t kest_sms_get_long_message_segment(const char *text, uint32_t is_hex,
                                                   uint16_t *segment_len);

/// kest_sms_encode_long_gw_submit_pdu makes segment `sequence`, from 1, of the `total` of a
/// message, as an SMS-SUBMIT that is valid for seven days. `text` is that of the segment alone. The
/// header holds the low 8 bits of `total` and `sequence`. A `total` below 2 makes a single message
/// without a header, whose text is cut at its limits. A segment is refused if it has more than 152
/// septets, 133 octets of 8 bit data or 66 characters of UCS-2, or ends within a UTF-8 sequence.
///
/// TP-MR counts as in kest_sms_encode_gw_submit_pdu. The reference of the message comes from
/// another counter, which SUBMIT and DELIVER share. It is incremented when a call succeeds whose
/// `sequence` equals `total`. So encode in order, one message after the other, and repeat a call
/// that failed. Threads take turns.
KEST_API int32_t kest_sms_encode_long_gw_submit_pdu(const char *number, const char *text,
                                                    uint32_t status_report, uint32_t is_hex,
                                                    int32_t total, int32_t sequence, uint8_t *pdu,
                                                    uint32_t pdu_size);

/// kest_sms_encode_long_gw_submit_pdu_with_validity is kest_sms_encode_long_gw_submit_pdu with a
/// TP-VP of the caller's, in the relative format; 0 stands for KEST_SMS_VALIDITY_DEFAULT.
KEST_API int32_t kest_sms_encode_long_gw_submit_pdu_with_validity(
    const char *number, const char *text, uint32_t status_report, uint32_t is_hex, int32_t total,
    int32_t sequence, uint8_t *pdu, uint32_t pdu_size, uint8_t validity);

/// kest_sms_encode_long_gw_deliver_pdu makes a segment as kest_sms_encode_long_gw_submit_pdu does,
/// with the same counter of references, as an SMS-DELIVER. Time and reply path are those of
/// kest_sms_encode_gw_deliver_pdu.
KEST_API int32_t kest_sms_encode_long_gw_deliver_pdu(const char *number, const char *text,
                                                     const char *timestamp, uint32_t reply_path,
                                                     uint32_t is_hex, int32_t total,
                                                     int32_t sequence, uint8_t *pdu,
                                                     uint32_t pdu_size);

#ifdef __cplusplus
}
#endif

/// @}

#endif
