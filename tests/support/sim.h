// tests/support/sim.h: what a SIM answers, decoded from heap blocks of its exact size.
#pragma once
#include "kest/sim.h"
#include "tests/support/octets.h"

// A record in which every field shows whether it was written.
inline kest_sim_file_info untouched_file() {
  kest_sim_file_info info;
  memset(&info, 0x77, sizeof info);
  return info;
}

inline int32_t decode_answer(std::span<const uint8_t> octets, kest_sim_file_info &info) {
  return kest_decode_sim_get_response_data(exact_octets(octets).get(),
                                           static_cast<uint16_t>(octets.size()), &info);
}

inline kest_sim_file_info decode_rules(std::span<const uint8_t> octets) {
  kest_sim_file_info info = untouched_file();
  kest_decode_exp_sec_attr(exact_octets(octets).get(), static_cast<uint16_t>(octets.size()), &info);
  return info;
}
