// sms/decode/data_coding.h: the data coding scheme of short messages (3GPP TS 23.038, clause 4).
// Cell broadcast has another one.
#pragma once
#include <cstdint>

#include "kest/types.h"

// kest_sms_decode_data_coding returns the alphabet of the scheme `octet` and, if it names a message
// class and `msg_class` is not null, stores that there. It writes two trace lines under `log_name`.
kest_gw_alphabet kest_sms_decode_data_coding(const char *log_name, uint8_t octet,
                                             kest_sms_msg_class *msg_class);
