// sms/decode/user_data_header.h: the user data header (3GPP TS 23.040, clause 9.2.3.24).
#pragma once
#include <cstdint>

#include "kest/types.h"
#include "octets/reader.h"

// kest_decode_user_data_header reads a header and returns its length without the length octet
// (TP-UDHL), whatever it meets. It keeps concatenation and port numbers in `udh`. `*udh_no_concat`
// becomes 0 if it accepts a concatenation element, and 1 if not. A fault ends the walk with a line
// in the log; what was stored before it stays. At most seven elements are read. A null `udh` leaves
// the elements unread and the flag unchanged.
uint32_t kest_decode_user_data_header(octet_reader &in, kest_sms_udh_info *udh,
                                      uint32_t *udh_no_concat);
