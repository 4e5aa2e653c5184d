/// @file
/// kest/types.h: constants and records that several headers share.

/// @defgroup kest_types Shared constants and records
/// Constants and records of the message headers. They are plain data: a record belongs to the
/// caller, and to one thread at a time.
/// @{
#ifndef KEST_TYPES_H
#define KEST_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// kest_gw_alphabet is the alphabet of a message's user data (3GPP TS 23.038, clause 4).
typedef uint32_t kest_gw_alphabet;
/// Values of kest_gw_alphabet.
enum {
  KEST_GW_ALPHABET_7BIT = 0, ///< GSM 7 bit default alphabet; lengths count septets
  KEST_GW_ALPHABET_8BIT = 1, ///< 8 bit data; lengths count octets
  KEST_GW_ALPHABET_UCS2 = 2  ///< 16-bit units, high octet first; lengths count octets
};

/// kest_sms_msg_class is the message class of a data coding scheme (3GPP TS 23.038, clause 4).
typedef uint32_t kest_sms_msg_class;
/// Values of kest_sms_msg_class.
enum {
  KEST_SMS_CLASS_0 = 0,   ///< shown at once, not stored
  KEST_SMS_CLASS_1 = 1,   ///< for the mobile equipment
  KEST_SMS_CLASS_2 = 2,   ///< for the SIM
  KEST_SMS_CLASS_3 = 3,   ///< for the terminal equipment
  KEST_SMS_CLASS_NONE = 4 ///< the data coding scheme names no class
};

/// kest_sms_encode_options holds the additional options of the `_detail` encoders, which only read
/// it. The caller fills all of it.
typedef struct kest_sms_encode_options {
  uint16_t reference;           ///< of the concatenation header; its low octet is a SUBMIT's TP-MR
  kest_sms_msg_class msg_class; ///< 0 to 3, or KEST_SMS_CLASS_NONE
  uint8_t concatenated;         ///< not 0: the PDU is a segment and carries the header
  uint8_t total;                ///< segments of the message, from 1; not tested
  uint8_t sequence;             ///< number of this segment, from 1; not tested
} kest_sms_encode_options;

/// kest_sms_udh_info is what the decoders keep of a user data header (3GPP TS 23.040, clause
/// 9.2.3.24). The decoders never clear it: a field whose element is not in the header keeps what
/// the caller put there, so clear the record before each call. At most seven elements are read, and
/// the first one of a wrong length or value ends the reading. A concatenation element is valid if
/// its total is not 0 and its sequence is 1 to the total. A port of 0 can't be told from none.
typedef struct kest_sms_udh_info {
  uint16_t iei;       ///< identifier of the last element looked at, also of a refused one
  uint16_t reference; ///< of the concatenated message; an 8-bit one stands in the low octet
  uint8_t total;      ///< segments of the concatenated message; 0 in a cleared record: none
  uint8_t sequence;   ///< number of this segment, from 1
  uint16_t dest_port; ///< destination application port
  uint16_t orig_port; ///< originator application port
} kest_sms_udh_info;

/// Values of kest_sms_cb_info.
enum {
  KEST_CB_FORMAT_GSM = 1,  ///< a page of at most 88 octets (3GPP TS 23.041, clause 9.4.1.2)
  KEST_CB_FORMAT_UMTS = 2, ///< a message with all of its pages (3GPP TS 23.041, clause 9.4.2)
  KEST_CB_FORMAT_ETWS_PRIMARY = 3, ///< a notification without text (3GPP TS 23.041, clause
                                   ///< 9.4.1.3): at most 88 octets with an ETWS identifier

  KEST_CB_LANGUAGE_NONE = 15,   ///< no language is given
  KEST_CB_LANGUAGE_IN_TEXT = 16 ///< a code stood ahead of the text, see `language_chars`
};

/// kest_sms_cb_info is the header of a cell broadcast message. The decoders clear it first: a field
/// that the message does not have is 0. In an ETWS primary notification `language` is
/// KEST_CB_LANGUAGE_NONE, and `total_pages` and `page_number` are 1. A UMTS message of another type
/// than 1 has `format` and its type alone.
///
/// Look at the identifier first, for 0 is a value of each field. Fields of ETWS hold for
/// identifiers 0x1100 to 0x1107, those of CMAS for 4370 to 4399. The kind of an ETWS warning comes
/// from identifier and serial number; the warning type octets of a primary notification are not
/// read.
typedef struct kest_sms_cb_info {
  uint32_t format;             ///< KEST_CB_FORMAT_GSM, _UMTS or _ETWS_PRIMARY
  uint16_t message_identifier; ///< source and kind (3GPP TS 23.041, clause 9.4.1.2.2)
  uint16_t serial_number;      ///< whole (3GPP TS 23.041, clause 9.4.1.2.1); its parts follow
  uint8_t geographical_scope;  ///< 0 and 3 cell, 1 network, 2 location area; 0 is displayed at once
  uint16_t message_code;       ///< 0 to 1023
  uint8_t update_number;       ///< 0 to 15
  uint8_t umts_message_type;   ///< of a UMTS message: 1, or the type that was refused
  uint8_t alphabet;            ///< kest_gw_alphabet
  uint8_t language; ///< KEST_CB_LANGUAGE_NONE, KEST_CB_LANGUAGE_IN_TEXT, or the data coding octet
                    ///< itself, 0x00 to 0x3F, where that is a language (3GPP TS 23.038, clause 5)
  uint8_t language_chars[3]; ///< language 16: two characters and a carriage return; "EN" if the
                             ///< page is too short for a code
  uint8_t total_pages;       ///< pages of the message, 1 if not known; of a UMTS message its octet
  uint8_t page_number;       ///< number of this page, from 1

  // ETWS (3GPP TS 23.041, clauses 9.3.24 and 9.4.1.3), identifiers 0x1100 to 0x1107; otherwise 0.
  uint16_t warning_type;        ///< ETWS: 0 earthquake, 1 tsunami, 2 both, 3 test, 4 other, 5 to 7
                                ///< reserved
  uint8_t emergency_user_alert; ///< ETWS: 1 to alert the user
  uint8_t popup;                ///< ETWS: 1 to show on the display
  char timestamp[23]; ///< ETWS: "YYYY/MM/DD,hh:mm:ss+zz" of a primary notification, or empty

  // CMAS (3GPP TS 23.041, clause 9.4.1.2.2), identifiers 4370 to 4399; -1 is unknown or not
  // applicable. Otherwise 0: look at the identifier first, for 0 is a value of each.
  int32_t cmas_class;     ///< CMAS: 0 presidential, 1 extreme, 2 severe, 3 child abduction
                          ///< emergency, 4 required monthly test, 5 exercise, 6 operator defined,
                          ///< -1 unknown
  int32_t cmas_severity;  ///< CMAS: 0 extreme, 1 severe, -1 unknown or not applicable
  int32_t cmas_urgency;   ///< CMAS: 0 immediate, 1 expected, -1 unknown or not applicable
  int32_t cmas_certainty; ///< CMAS: 0 observed, 1 likely, -1 unknown or not applicable
} kest_sms_cb_info;

#ifdef __cplusplus
}
#endif

/// @}

#endif
