// sms/cdma/bearer_data.h: the bearer data of a Submit message (3GPP2 C.S0015, clause 4.4).
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "kest/types.h"

constexpr size_t CDMA_BEARER_DATA_SIZE = 155; // octets, with a payload of 140

// kest_sms_encode_cdma_bearer_data_with_validity writes the bearer data of `text`, at most 255
// octets, of which the first 160 septets or 140 octets count. It stores its octets, at most
// CDMA_BEARER_DATA_SIZE, in `*bearer_len`, which it returns. It returns 0 and stores that for a
// null argument and for a text that is empty or begins with a NUL; any other text takes the next
// kest_cdma_message_id. HEADER_IND is set if `header_ind` is 1, DAK_REQ if `status_report` is. A
// `validity` of 0 stands for seven days.
uint32_t kest_sms_encode_cdma_bearer_data_with_validity(std::span<const uint8_t> text,
                                                        uint32_t status_report,
                                                        kest_gw_alphabet alphabet,
                                                        uint8_t header_ind, uint8_t *bearer,
                                                        uint8_t *bearer_len, uint8_t validity);

// kest_sms_encode_cdma_bearer_data is the same with a validity of seven days.
uint32_t kest_sms_encode_cdma_bearer_data(std::span<const uint8_t> text, uint32_t status_report,
                                          kest_gw_alphabet alphabet, uint8_t header_ind,
                                          uint8_t *bearer, uint8_t *bearer_len);
