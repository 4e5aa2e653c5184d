// sms/decode/cell_broadcast_header.h: the header of a cell broadcast message (3GPP TS 23.041,
// clauses 9.4.1 and 9.4.2).
#pragma once
#include "kest/types.h"
#include "octets/reader.h"

// kest_sms_decode_gw_cb_header reads a header, whose form depends on the size of the message. It
// fills `info`, which the caller has cleared, and stores the message class in `msg_class`. What is
// left in the reader then is the page of a GSM message, or a UMTS message from its number of pages
// on. Of a UMTS message without text it keeps the type alone and returns false, with a line in the
// log.
[[nodiscard]] bool kest_sms_decode_gw_cb_header(octet_reader &in, kest_sms_cb_info &info,
                                                kest_sms_msg_class &msg_class);
