// Any octets as an answer to GET RESPONSE, and as an expanded security attribute.
#include "fuzz/require.h"
#include "tests/support/sim.h"

namespace {

constexpr uint64_t KEYS = 0x7FF7; // all but the bit that no key has

void check_rules(const kest_sim_file_info &info, const kest_sim_file_info &before) {
  for (const auto rule :
       {&kest_sim_file_info::read, &kest_sim_file_info::update, &kest_sim_file_info::increase,
        &kest_sim_file_info::deactivate, &kest_sim_file_info::activate}) {
    const kest_sim_access_condition &condition = info.*rule;
    if (condition.method == (before.*rule).method) {
      require(condition.mask == (before.*rule).mask);
      continue;
    }
    require(condition.method <= KEST_SIM_ACCESS_SINGLE && (condition.mask & ~KEYS) == 0);
    const bool one_key = condition.mask != 0 && (condition.mask & (condition.mask - 1)) == 0;
    require(condition.method != KEST_SIM_ACCESS_SINGLE || one_key);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::span<const uint8_t> octets(data, size);
  const kest_sim_file_info before = untouched_file();
  kest_sim_file_info info = before;
  kest_sim_file_info again = before;
  const int32_t result = decode_answer(octets, info);
  require(result == 0 || result == 1);
  require(result == 1 || same_octets(info, before));
  require(decode_answer(octets, again) == result && same_octets(info, again));
  check_rules(info, before);
  info = decode_rules(octets);
  check_rules(info, before);
  require(info.file_id == before.file_id && info.ref_file_id == before.ref_file_id);
  return 0;
}
