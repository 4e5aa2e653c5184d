// sms/encode/timestamp.h: the service-centre time stamp (3GPP TS 23.040, clause 9.2.3.11).
#pragma once
#include <cstdint>

constexpr uint32_t TIMESTAMP_SIZE = 7; // octets

// kest_sms_encode_timestamp writes the seven octets for a time text such as
// "2011/12/31,23:59:58+08" and returns how many it wrote. In a text that ends ahead of its seconds
// the zone octet follows the last pair, and there are less than seven; of a null text, none.
// Characters are taken by position; those behind the end of the text and those that are no
// hexadecimal digit count as 0. No range is checked.
uint32_t kest_sms_encode_timestamp(const char *str, uint8_t *out);
