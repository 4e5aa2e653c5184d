/// @file
/// kest/sms_cdma.h: the CDMA Submit message.

/// @defgroup kest_sms_cdma The CDMA Submit message
/// An SMS of 3GPP2 C.S0015 from a number and a text.
/// @{
#ifndef KEST_SMS_CDMA_H
#define KEST_SMS_CDMA_H

#include "kest/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// What the encoder needs.
enum {
  KEST_SMS_CDMA_SUBMIT_PDU_SIZE = 181 ///< octets of `pdu`, for the longest number and text
};

/// kest_sms_encode_cdma_submit_pdu makes an SMS Point-to-Point transport message of the CMT-95
/// teleservice and returns its octets. Its bearer data is a Submit that is valid for seven days
/// (3GPP2 C.S0015, clauses 3.4.2.1 and 4.4.2). A `status_report` of exactly 1 asks for a
/// delivery acknowledgment. Arguments must not overlap.
///
/// A number's digits, '*' and '#' become DTMF codes; a leading '+' is dropped. Any other character
/// repeats the code before it. Before the first digit it has the code 0, which stands for no
/// digit; a number that begins with two of them goes out without any digit, but with its count.
///
/// A text is read, put into an alphabet and cut off as that of an SMS-SUBMIT (kest/sms_encode.h).
/// With `is_hex`, a text whose first octet is 00 counts as empty. Each message with a number and a
/// text takes the next 16-bit identifier of the library: 1 is the first, 65535 is followed by 0.
/// Threads take turns.
///
/// It returns 0, with a line in the debug log, if
/// - a pointer is null;
/// - the number is empty, a plus sign alone, or has more than 24 characters after that;
/// - the text is empty, as is hexadecimal text of more than 255 octets.
///
/// `pdu` then holds the octets before the fault.
///
/// NOTE: text in the GSM 7 bit alphabet goes out as its packed septets under the encoding value of
/// 7 bit ASCII. The count before them, NUM_FIELDS, is that of the text's octets before the first
/// 00, not of the septets. It differs if there are extension characters, characters without a code,
/// or more than 160 septets.
KEST_API uint32_t kest_sms_encode_cdma_submit_pdu(const char *number, const char *text,
                                                  uint32_t status_report, uint32_t is_hex,
                                                  uint8_t *pdu);

#ifdef __cplusplus
}
#endif

/// @}

#endif
