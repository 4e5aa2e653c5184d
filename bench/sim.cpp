#include "kest/sim.h"

#include "bench/job.h"
#include "tests/support/octets.h"

namespace {

// FCP templates of elementary files (ETSI TS 102 221, clause 11.1.1.3): the access rules by
// reference to EF ARR, and in the file itself, expanded.
constexpr const char *REFERENCED = "6225 8202412183026F07A506C00100CA01808A0105 8B036F0604 80020009"
                                   " 8801384F07A000000087100200";
constexpr const char *EXPANDED =
    "6258 8205462100031983026F39A50AC00100CD02FF01CA01858A0105 AB36800101A406830101950108840132A406"
    "830101950108800102A4068301819501088401D49700800158A40683010A95010880012097008002004B8800";

std::function<void()> decode(const char *answer) {
  return [octets = octets(answer)] {
    kest_sim_file_info info = {};
    kest_decode_sim_get_response_data(octets.data(), static_cast<uint16_t>(octets.size()), &info);
  };
}

} // namespace

void measure_sim(measured &out) {
  out.jobs.push_back({"3G GET RESPONSE answer, rules by reference", decode(REFERENCED)});
  out.jobs.push_back({"3G GET RESPONSE answer, expanded rules", decode(EXPANDED)});
}
