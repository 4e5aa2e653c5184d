// sms/decode/timestamp.h: the service-centre time stamp (3GPP TS 23.040, clause 9.2.3.11) as text.
#pragma once
#include <cstdint>

#include "sms/decode/octet_reader.h"

// kest_sms_decode_timestamp writes the seven octets at the start of `octets` as the 22 characters
// of "YYYY/MM/DD,hh:mm:ss+zz", with no terminator, unless `text` is null, and returns 7. A year
// whose tens digit is 9 is one of the 1900s. A nibble above 9 becomes a letter. The sign is "-"
// only down to -12 hours: a time difference beyond that shows "+". Digits are logged as those of
// an address.
uint32_t kest_sms_decode_timestamp(octet_reader octets, char *text);
