// bench/job.h: what is measured. The inputs never change, so that neither do the counts of
// instructions.
#pragma once
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// Work that is measured as a whole.
struct job {
  std::string name;
  std::function<void()> run;
  size_t operations = 1; // in one run
};

// Work whose cost should be a straight line over the size of its input.
struct curve {
  std::string name;
  std::string size_of; // what `sizes` counts
  std::vector<size_t> sizes;
  std::function<std::function<void()>(size_t size)> work; // makes what one run does
};

// What bench/ measures, a function for each folder of the library.
struct measured {
  std::vector<job> jobs;
  std::vector<curve> curves;
};

void measure_text(measured &out);
void measure_sms_encode(measured &out);
void measure_sms_cdma(measured &out);
void measure_sms_decode(measured &out);
void measure_sim(measured &out);
void measure_log(measured &out);
void measure_ipc(measured &out);
void measure_util(measured &out);

inline measured all_measured() {
  measured out;
  for (const auto measure : {measure_text, measure_sms_encode, measure_sms_cdma, measure_sms_decode,
                             measure_sim, measure_log, measure_ipc, measure_util}) {
    measure(out);
  }
  return out;
}

// doubled returns 1, 2, 4 and so on to `last`, which is the last one also if it is no power of 2.
inline std::vector<size_t> doubled(size_t last) {
  std::vector<size_t> sizes;
  for (size_t size = 1; size < last; size *= 2) {
    sizes.push_back(size);
  }
  sizes.push_back(last);
  return sizes;
}

// steps returns the multiples of `step` between 1 and `last`, and these.
inline std::vector<size_t> steps(size_t last, size_t step) {
  std::vector<size_t> sizes = {1};
  for (size_t size = step; size < last; size += step) {
    if (size > 1) {
      sizes.push_back(size);
    }
  }
  sizes.push_back(last);
  return sizes;
}
