#include "sms/encode/counters.h"

uint8_t kest_sms_msg_reference = 0;

uint8_t kest_sms_take_msg_reference() {
  return kest_sms_msg_reference++;
}
