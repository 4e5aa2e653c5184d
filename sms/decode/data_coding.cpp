#include "sms/decode/data_coding.h"

#include "log/debug_log.h"

namespace {

constexpr uint32_t RESERVED_ALPHABET = 3; // of the general group; read as the 7 bit one

struct data_coding {
  uint32_t alphabet; // a kest_gw_alphabet or RESERVED_ALPHABET
  bool has_class;
};

// Coding groups by the high nibble of the octet.
data_coding coding_of(uint8_t octet) {
  switch (octet >> 4) {
  case 0x0: // general data coding, without and with a class; compression is not looked at
  case 0x2:
    return {(octet >> 2) & 3u, false};
  case 0x1:
  case 0x3:
    return {(octet >> 2) & 3u, true};
  case 0xE: // message waiting indication, store message, UCS-2
    return {KEST_GW_ALPHABET_UCS2, false};
  case 0xF: // data coding and message class
    return {(octet >> 2) & 1u, true};
  default: // reserved groups, and message waiting indication in 7 bit. NOTE: automatic deletion
           // too, whatever its low bits say of alphabet and class
    return {KEST_GW_ALPHABET_7BIT, false};
  }
}

} // namespace

kest_gw_alphabet kest_sms_decode_data_coding(const char *log_name, uint8_t octet,
                                             kest_sms_msg_class *msg_class) {
  const data_coding coding = coding_of(octet);
  kest_gw_alphabet alphabet = coding.alphabet;
  kest_log_debug("%s alphabet: %d\n", log_name, static_cast<int>(alphabet));
  if (alphabet == RESERVED_ALPHABET) {
    alphabet = KEST_GW_ALPHABET_7BIT;
  }
  kest_log_debug("%s alphabet: %d\n", log_name, static_cast<int>(alphabet));
  if (coding.has_class && msg_class != nullptr) {
    *msg_class = octet & 3u;
  }
  return alphabet;
}
