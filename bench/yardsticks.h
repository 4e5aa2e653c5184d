// bench/yardsticks.h: what the jobs are compared with, on the same inputs.
#pragma once
#include "bench/job.h"

// The time of this one is a unit.
constexpr const char *UNIT = "OpenSSL: octets to hexadecimal text, 255";

std::vector<job> yardsticks();
