// sms/encode/timestamp.h: the service-centre time stamp (3GPP TS 23.040, clause 9.2.3.11).
#pragma once
#include <cstdint>
#include <span>

// kest_sms_encode_timestamp writes the time stamp of a text such as "2011/12/31,23:59:58+08" to the
// seven octets of `out`. In a text that ends before its seconds the zone octet follows the last
// pair, and the octets after it are unchanged; of a null text, all are. Characters are taken by
// position. Those after the end of the text, and those that are no hexadecimal digit, count as 0.
// No range is checked.
void kest_sms_encode_timestamp(const char *str, std::span<uint8_t> out);
