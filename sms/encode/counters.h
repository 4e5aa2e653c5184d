// sms/encode/counters.h: the message counters of the library. They are 0 at load and never saved.
// They are plain words: threads that share one take turns.
#pragma once
#include <cstdint>

extern uint8_t kest_sms_msg_reference; // TP-MR of the next SMS-SUBMIT

// kest_sms_take_msg_reference returns the TP-MR for a message and steps the counter; 255 is
// followed by 0. A message takes its value before anything of it can fail.
uint8_t kest_sms_take_msg_reference();
