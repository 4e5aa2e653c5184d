// sms/encode/address.h: the address field of a TPDU (3GPP TS 23.040, clause 9.1.2.5). The
// service-centre field, its twin, is in kest/sms_encode.h.
#pragma once
#include <cstdint>

// The largest address field: length, type of address and ten octets of semi-octets.
constexpr int32_t ADDRESS_FIELD_SIZE = 12;

// kest_sms_encode_gw_address writes the field for the number `str` and returns its octets; 0, with
// nothing written, if `str` is empty. `out` holds `out_size` octets, at least 2. NOTE: digits
// without room are left out, but the length octet counts them.
int32_t kest_sms_encode_gw_address(const char *str, uint8_t *out, int32_t out_size);
