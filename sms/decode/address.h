// sms/decode/address.h: address fields (3GPP TS 23.040, clause 9.1.2.5; the service-centre field of
// TS 24.011, clause 8.2.5.1) as text.
#pragma once
#include <cstdint>

#include "sms/decode/octet_reader.h"

// Both write the address at the start of `field` as text and return the octets that the field
// occupies; with a null `text` they only do the latter. `text` holds KEST_SMS_ADDRESS_TEXT_SIZE
// bytes. A number ends at its first filler, and the octets behind that are not counted; what
// exceeds 20 digits is counted, but not written. NOTE: without a `text` the whole field is counted.
// An alphanumeric address is written as bare septets without a terminator, at most 20. Digits go
// through kest_binary_to_hexchar, which logs them.
//
// kest_sms_decode_smsc_address reads a field whose length octet counts octets and is not 0,
// kest_sms_decode_gw_address one whose length octet counts semi-octets.
int32_t kest_sms_decode_smsc_address(octet_reader field, char *text);
int32_t kest_sms_decode_gw_address(octet_reader field, char *text);
