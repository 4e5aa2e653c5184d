// sms/encode/address.h: the address field of a TPDU (3GPP TS 23.040, clause 9.1.2.5). The
// service-centre field, its twin, is in kest/sms_encode.h.
#pragma once
#include "octets/writer.h"

// kest_sms_encode_gw_address writes the field for the number `str`, at most 12 octets. It returns
// false, with nothing written, if `str` is empty. NOTE: digits past the 20th are left out, but the
// length octet counts them.
[[nodiscard]] bool kest_sms_encode_gw_address(const char *str, octet_writer &out);
