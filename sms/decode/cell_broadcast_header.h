// sms/decode/cell_broadcast_header.h: the header of a cell broadcast message (3GPP TS 23.041,
// clauses 9.4.1 and 9.4.2).
#pragma once
#include <cstdint>

#include "kest/types.h"
#include "sms/decode/octet_reader.h"

constexpr uint8_t CB_TYPE_MESSAGE = 1; // message type of a UMTS message with text (clause 9.4.2.2)

// What the header function returns of a UMTS message of another type: no size of a header.
constexpr int32_t CB_WRONG_TYPE = 1;

// kest_sms_decode_gw_cb_header reads the header at the start of `message`, whose size decides its
// form, into `info`, which the caller has cleared, and the message class into `msg_class`. It
// returns the octets of the header, whether they are there or not: 6 with the page parameter of a
// GSM page, 6 ahead of a UMTS message's number of pages, 6 of an ETWS primary notification and 13
// with its time stamp. Of a UMTS message of another type it keeps the type alone and returns
// CB_WRONG_TYPE, with a line in the log.
int32_t kest_sms_decode_gw_cb_header(octet_reader message, kest_sms_cb_info &info,
                                     kest_sms_msg_class &msg_class);
