// kest/types.h: constants and records that several headers share.
#ifndef KEST_TYPES_H
#define KEST_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// kest_gw_alphabet is the alphabet of a message's user data (3GPP TS 23.038, clause 4).
typedef uint32_t kest_gw_alphabet;
enum {
  KEST_GW_ALPHABET_7BIT = 0, // GSM 7 bit default alphabet; lengths count septets
  KEST_GW_ALPHABET_8BIT = 1, // 8 bit data; lengths count octets
  KEST_GW_ALPHABET_UCS2 = 2  // 16-bit units, high octet first; lengths count octets
};

// kest_sms_msg_class is the message class of a data coding scheme (3GPP TS 23.038, clause 4).
typedef uint32_t kest_sms_msg_class;
enum {
  KEST_SMS_CLASS_0 = 0,   // shown at once, not stored
  KEST_SMS_CLASS_1 = 1,   // for the mobile equipment
  KEST_SMS_CLASS_2 = 2,   // for the SIM
  KEST_SMS_CLASS_3 = 3,   // for the terminal equipment
  KEST_SMS_CLASS_NONE = 4 // the data coding scheme names no class
};

// kest_sms_encode_options is what the `_detail` encoders are told beside number and text. The
// caller fills all of it; the encoders only read it.
typedef struct kest_sms_encode_options {
  uint16_t reference;           // of the concatenation header; its low octet is a SUBMIT's TP-MR
  kest_sms_msg_class msg_class; // 0 to 3, or KEST_SMS_CLASS_NONE
  uint8_t concatenated;         // not 0: the PDU is a segment and carries the header
  uint8_t total;                // segments of the message
  uint8_t sequence;             // number of this segment, from 1
} kest_sms_encode_options;

// kest_sms_udh_info is what the decoders keep of a user data header (3GPP TS 23.040, clause
// 9.2.3.24). The decoders never clear it: a field whose element is not in the header keeps what
// the caller put there, so clear the record before each call.
typedef struct kest_sms_udh_info {
  uint16_t iei;       // identifier of the last element looked at, also of a refused one
  uint16_t reference; // of the concatenated message; an 8-bit one stands in the low octet
  uint8_t total;      // segments of the concatenated message; 0 in a cleared record: none
  uint8_t sequence;   // number of this segment, from 1
  uint16_t dest_port; // destination application port
  uint16_t orig_port; // originator application port
} kest_sms_udh_info;

#ifdef __cplusplus
}
#endif

#endif
