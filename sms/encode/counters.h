// sms/encode/counters.h: the message counters of the library. They are 0 at load and never saved.
// They are plain words: threads that share one take turns.
//
//   kest_sms_msg_reference     TP-MR of an SMS-SUBMIT. Each SUBMIT without options of the caller
//                              increments it after use, even if encoding fails.
//   kest_sms_concat_reference  Reference of the concatenation header. A long SUBMIT or DELIVER
//                              increments it if it succeeds and is the last segment.
//   kest_cdma_message_id       MESSAGE_ID of a CDMA message. Each bearer data with a text
//   increments
//                              it before use.
#pragma once
#include <cstdint>

[[gnu::visibility("hidden")]] extern uint8_t kest_sms_msg_reference;
[[gnu::visibility("hidden")]] extern uint16_t kest_sms_concat_reference;
[[gnu::visibility("hidden")]] extern uint16_t kest_cdma_message_id;

// kest_sms_take_msg_reference returns the TP-MR for a message and increments the counter; 0 follows
// 255. A message takes its value before anything of it can fail.
uint8_t kest_sms_take_msg_reference();

// kest_sms_end_concatenation increments the reference after the last segment of a message; 0
// follows 65535.
void kest_sms_end_concatenation();

// kest_cdma_next_message_id increments the identifier and returns it. The first is 1; 0 follows
// 65535.
uint16_t kest_cdma_next_message_id();
