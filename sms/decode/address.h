// sms/decode/address.h: address fields (3GPP TS 23.040, clause 9.1.2.5; the service-centre field of
// TS 24.011, clause 8.2.5.1) as text.
#pragma once
#include "octets/reader.h"

// Both read a field and write its address to `text`, which holds KEST_SMS_ADDRESS_TEXT_SIZE bytes.
// A null `text` skips the field. A number ends at its first filler: the octets after that are not
// read. Digits past the 20th are read and dropped. An alphanumeric address is written as up to 20
// bare septets without a terminator. Digits go through kest_binary_to_hexchar, which logs them.
//
// The length octet counts octets in kest_sms_decode_smsc_address: 0 says that there is no address,
// and leaves `text` unchanged. In kest_sms_decode_gw_address it counts semi-octets.
void kest_sms_decode_smsc_address(octet_reader &in, char *text);
void kest_sms_decode_gw_address(octet_reader &in, char *text);
