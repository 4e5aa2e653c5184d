#include "sms/encode/counters.h"

uint8_t kest_sms_msg_reference = 0;
uint16_t kest_sms_concat_reference = 0;
uint16_t kest_cdma_message_id = 0;

uint8_t kest_sms_take_msg_reference() {
  return kest_sms_msg_reference++;
}

void kest_sms_end_concatenation() {
  ++kest_sms_concat_reference;
}

uint16_t kest_cdma_next_message_id() {
  return ++kest_cdma_message_id;
}
