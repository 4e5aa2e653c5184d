#include "sms/decode/cell_broadcast_header.h"

#include <cstddef>
#include <iterator>

#include "log/debug_log.h"
#include "sms/decode/timestamp.h"
#include "sms/tpdu.h"
#include "text/gsm_alphabet.h"

namespace {

constexpr size_t GSM_MAX_SIZE = 88; // octets of a page; a UMTS message has more (clause 9.4.1.1)
constexpr uint8_t TYPE_CBS_MESSAGE = 1;  // of a UMTS message with text (clause 9.4.2.2)
constexpr size_t LANGUAGE_CODE_SIZE = 2; // octets

// Message identifiers (clause 9.4.1.2.2).
constexpr unsigned ETWS_FIRST = 0x1100; // to 0x1107
constexpr unsigned ETWS_MASK = 0xFFF8;
constexpr unsigned CMAS_FIRST = 4370;
constexpr unsigned CMAS_LAST = 4399;

struct cmas_row {
  int8_t message_class, severity, urgency, certainty; // as in the record
};

// From CMAS_FIRST on. The identifiers after them, up to CMAS_LAST, have UNKNOWN_CMAS.
constexpr cmas_row UNKNOWN_CMAS = {-1, -1, -1, -1};
constexpr cmas_row CMAS_ROWS[] = {
    {0, -1, -1, -1},                                           // presidential level
    {1, 0, 0, 0},    {1, 0, 0, 1}, {1, 0, 1, 0}, {1, 0, 1, 1}, // extreme
    {2, 1, 0, 0},    {2, 1, 0, 1}, {2, 1, 1, 0}, {2, 1, 1, 1}, // severe
    {3, -1, -1, -1},                                           // child abduction emergency
    {4, -1, -1, -1},                                           // required monthly test
    {5, -1, -1, -1},                                           // exercise
    {6, -1, -1, -1},                                           // operator defined
};

// read_number returns 0 if one of the two octets is missing: half an identifier names another
// message.
uint16_t read_number(octet_reader &in) {
  const bool whole = in.left() >= 2;
  const uint16_t number = in.u16();
  return whole ? number : uint16_t{0};
}

void read_serial_number(octet_reader &in, kest_sms_cb_info &info) {
  const unsigned serial = read_number(in);
  info.serial_number = static_cast<uint16_t>(serial);
  info.geographical_scope = static_cast<uint8_t>(serial >> 14);
  info.message_code = (serial >> 4) & 0x3FF;
  info.update_number = serial & 0xF;
}

bool is_etws(const kest_sms_cb_info &info) {
  return (info.message_identifier & ETWS_MASK) == ETWS_FIRST;
}

// set_language_chars unpacks the two septets that `content` begins with.
void set_language_chars(octet_reader content, kest_sms_cb_info &info) {
  info.language_chars[0] = 'E'; // if there is no room for a code
  info.language_chars[1] = 'N';
  info.language_chars[2] = GSM_CARRIAGE_RETURN;
  if (content.left() >= LANGUAGE_CODE_SIZE) {
    const unsigned low = content.u8();
    info.language_chars[0] = low & 0x7F;
    const unsigned high = content.u8();
    info.language_chars[1] = (high << 1 | low >> 7) & 0x7F;
  }
}

// decode_data_coding reads the data coding scheme of cell broadcast (3GPP TS 23.038, clause 5),
// which is not that of short messages.
void decode_data_coding(uint8_t octet, kest_sms_cb_info &info, kest_sms_msg_class &msg_class) {
  constexpr uint8_t RESERVED_ALPHABET = 3;
  info.alphabet = KEST_GW_ALPHABET_7BIT;
  info.language = KEST_CB_LANGUAGE_NONE;
  switch (octet >> 4) {
  case 0x0: // languages in the 7 bit alphabet
  case 0x2:
  case 0x3:
    info.language = octet;
    break;
  case 0x1: // a language code before the text
    if (octet <= 0x11) {
      info.language = KEST_CB_LANGUAGE_IN_TEXT;
      info.alphabet = octet == 0x11 ? KEST_GW_ALPHABET_UCS2 : KEST_GW_ALPHABET_7BIT;
    }
    break;
  case 0x4: // general data coding; compression is not looked at
  case 0x5:
  case 0x6:
  case 0x7:
    info.alphabet = (octet >> 2) & 3;
    if (info.alphabet == RESERVED_ALPHABET) {
      info.alphabet = KEST_GW_ALPHABET_7BIT;
    }
    if ((octet & 0x10) != 0) {
      msg_class = octet & 3u;
    }
    break;
  case 0xF: // data coding and message class
    info.alphabet = (octet >> 2) & 1;
    msg_class = octet & 3u;
    break;
  default: // reserved
    break;
  }
}

// read_data_coding reads the octet, and the language code after it and the octet of the pages.
void read_data_coding(octet_reader &in, kest_sms_cb_info &info, kest_sms_msg_class &msg_class) {
  decode_data_coding(in.u8(), info, msg_class);
  if (info.language == KEST_CB_LANGUAGE_IN_TEXT) {
    octet_reader content = in;
    content.skip(1);
    set_language_chars(content, info);
  }
}

void read_gsm_page(octet_reader &in, kest_sms_cb_info &info, kest_sms_msg_class &msg_class) {
  info.format = KEST_CB_FORMAT_GSM;
  read_data_coding(in, info, msg_class);
  const uint8_t pages = in.u8();
  info.page_number = pages >> 4;
  info.total_pages = pages & 0xF;
}

// read_etws_primary skips the warning type: the identifier says it as well.
void read_etws_primary(octet_reader &in, kest_sms_cb_info &info) {
  info.format = KEST_CB_FORMAT_ETWS_PRIMARY;
  info.alphabet = KEST_GW_ALPHABET_7BIT;
  info.language = KEST_CB_LANGUAGE_NONE;
  in.skip(2);
  if (in.left() >= TIMESTAMP_SIZE) {
    kest_sms_decode_timestamp(in, info.timestamp);
  }
}

void classify_warning(kest_sms_cb_info &info) {
  const unsigned identifier = info.message_identifier;
  if (is_etws(info)) {
    info.warning_type = static_cast<uint16_t>(identifier - ETWS_FIRST);
    info.emergency_user_alert = (info.serial_number >> 13) & 1;
    info.popup = (info.serial_number >> 12) & 1;
  } else if (identifier >= CMAS_FIRST && identifier <= CMAS_LAST) {
    const size_t index = identifier - CMAS_FIRST;
    const cmas_row &row = index < std::size(CMAS_ROWS) ? CMAS_ROWS[index] : UNKNOWN_CMAS;
    info.cmas_class = row.message_class;
    info.cmas_severity = row.severity;
    info.cmas_urgency = row.urgency;
    info.cmas_certainty = row.certainty;
  }
}

} // namespace

bool kest_sms_decode_gw_cb_header(octet_reader &in, kest_sms_cb_info &info,
                                  kest_sms_msg_class &msg_class) {
  msg_class = KEST_SMS_CLASS_NONE;
  if (in.left() > GSM_MAX_SIZE) {
    info.format = KEST_CB_FORMAT_UMTS;
    info.umts_message_type = in.u8();
    if (info.umts_message_type != TYPE_CBS_MESSAGE) {
      kest_log_error("%s Error msg type: umts_message_type=%d !!!\n",
                     "kest_sms_decode_gw_cb_header", info.umts_message_type);
      return false;
    }
    info.message_identifier = read_number(in);
    read_serial_number(in, info);
    read_data_coding(in, info, msg_class);
  } else {
    read_serial_number(in, info);
    info.message_identifier = read_number(in);
    if (is_etws(info)) {
      read_etws_primary(in, info);
    } else {
      read_gsm_page(in, info, msg_class);
    }
  }
  classify_warning(info);
  if (info.page_number == 0 || info.total_pages == 0) {
    info.page_number = 1;
    info.total_pages = 1;
  }
  return true;
}
