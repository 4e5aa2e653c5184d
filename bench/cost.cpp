// Runs each job for callgrind, which counts its instructions and dumps them under its name, with
// the number of operations ahead. With "curves" in place of the jobs it runs the curves, at each of
// their sizes.
#include <algorithm>
#include <cstring>

#include <valgrind/callgrind.h>

#include "bench/job.h"

namespace {

void count(const std::string &name, const std::function<void()> &run, size_t runs,
           size_t operations) {
  static std::string label; // is read when the dump is made, a little later
  label = std::to_string(runs * operations) + ' ' + name;
  run(); // what happens only once: symbols are bound, memory is taken
  CALLGRIND_ZERO_STATS;
  for (size_t i = 0; i < runs; ++i) {
    run();
  }
  CALLGRIND_DUMP_STATS_AT(label.c_str());
}

// counted_runs returns few runs for a large size, and for a small one so many that what the memory
// allocator does now and then is shared.
size_t counted_runs(size_t size) {
  return std::max<size_t>(3, 10000 / size);
}

} // namespace

int main(int argc, char **argv) {
  const bool curves = argc > 1 && strcmp(argv[1], "curves") == 0;
  const measured all = all_measured();
  if (!curves) {
    for (const job &counted : all.jobs) {
      count(counted.name, counted.run, 20, counted.operations);
    }
    return 0;
  }
  for (const curve &counted : all.curves) {
    for (const size_t size : counted.sizes) {
      count(counted.name + '|' + counted.size_of + '|' + std::to_string(size), counted.work(size),
            counted_runs(size), 1);
    }
  }
}
