// sms/cdma/address.h: the value of an address parameter (3GPP2 C.S0015, clause 3.4.3.3).
#pragma once
#include <cstddef>
#include <cstdint>

constexpr size_t CDMA_ADDRESS_DIGITS = 24;
constexpr size_t CDMA_ADDRESS_SIZE = 2 + CDMA_ADDRESS_DIGITS / 2; // octets

// kest_sms_encode_cdma_address writes the address of `number` in 4-bit codes, without a leading
// plus sign, and stores its octets, at most CDMA_ADDRESS_SIZE, in `*address_len`, which it returns.
// A character without a code repeats the one before it, which is 0 at the start. It returns 0 and
// stores that for an empty number and one of more than CDMA_ADDRESS_DIGITS characters; for a plus
// sign alone it returns 0 and stores nothing.
uint32_t kest_sms_encode_cdma_address(const char *number, uint8_t *address, uint8_t *address_len);
