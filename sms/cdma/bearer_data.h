// sms/cdma/bearer_data.h: the bearer data of a Submit message (3GPP2 C.S0015, clause 4.4).
#pragma once
#include <cstddef>
#include <cstdint>

#include "sms/encode/user_data.h"

constexpr size_t CDMA_BEARER_DATA_SIZE = 155; // octets, with a payload of 140

// kest_sms_encode_cdma_bearer_data writes the bearer data of `text`, of which the first 160 septets
// or 140 octets count. It stores its octets, at most CDMA_BEARER_DATA_SIZE, in `*bearer_len`, and
// returns them. For a text that is empty or begins with a NUL both are 0. Any other text takes the
// next kest_cdma_message_id. DAK_REQ is set if `status_report` is 1. The validity is seven days.
uint32_t kest_sms_encode_cdma_bearer_data(const message_text &text, uint32_t status_report,
                                          uint8_t *bearer, uint8_t *bearer_len);
