// sms/decode/timestamp.h: the service-centre time stamp (3GPP TS 23.040, clause 9.2.3.11) as text.
#pragma once
#include "octets/reader.h"

// kest_sms_decode_timestamp reads a time stamp and writes the 22 characters of
// "YYYY/MM/DD,hh:mm:ss+zz" without a terminator, unless `text` is null. A year whose tens digit is
// 9 is one of the 1900s. A nibble above 9 becomes a letter. The sign is "-" only down to -12 hours,
// and "+" for a larger time difference. Digits are logged as those of an address.
void kest_sms_decode_timestamp(octet_reader &in, char *text);
