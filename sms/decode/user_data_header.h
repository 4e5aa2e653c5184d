// sms/decode/user_data_header.h: the user data header (3GPP TS 23.040, clause 9.2.3.24).
#pragma once
#include <cstdint>

#include "kest/types.h"
#include "sms/decode/octet_reader.h"

// kest_decode_user_data_header walks the elements of the header that `data` begins with, keeps
// concatenation and port numbers in `udh`, and returns its first octet, the header's length
// (TP-UDHL), whatever it meets. `*udh_no_concat` becomes 0 if it accepts a concatenation element,
// and 1 if not. A fault ends the walk with a line in the log; what was stored before it stays. It
// reads at most seven elements. A null `udh` leaves the header unread and the flag as it was; a
// reader without data gives 0.
uint32_t kest_decode_user_data_header(octet_reader data, kest_sms_udh_info *udh,
                                      uint32_t *udh_no_concat);
