// Times the jobs beside their yardsticks and prints the medians as a table. It takes the flags of
// Google Benchmark.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>

#include <benchmark/benchmark.h>

#include "bench/job.h"
#include "bench/yardsticks.h"

namespace {

// The part of a yardstick's time that a job is to take at most.
struct aim {
  const char *job;
  double at_most;
  const char *yardstick;
};

constexpr aim AIMS[] = {
    {"octets to hexadecimal text, 255", 0.5, UNIT},
    {"hexadecimal text to octets, 255", 0.8, UNIT},
    {"pack 160 septets", 0.2, UNIT},
    {"pack 160 septets", 0.2, "plain: pack 160 septets"},
    {"unpack 160 septets", 0.25, UNIT},
    {"unpack 160 septets", 0.2, "plain: unpack 160 septets"},
    {"UTF-8 to UTF-16, 1 KB", 0.8, "ICU: UTF-8 to UTF-16, 1 KB"},
    {"UTF-16 to UTF-8, 1 KB", 0.8, "ICU: UTF-16 to UTF-8, 1 KB"},
    {"encode SUBMIT, 160 septets", 1.5, UNIT},
    {"encode SUBMIT, 70 UCS-2 characters", 1, UNIT},
    {"decode DELIVER, 160 septets", 2.5, UNIT},
    {"decode DELIVER, 67 UCS-2 characters after a header", 2.5, UNIT},
    {"decode STATUS-REPORT", 0.8, UNIT},
    {"3G GET RESPONSE answer, rules by reference", 0.3, UNIT},
    {"queue, push and pop on one thread", 1.5, "system: two locks, one malloc"},
};

using times = std::map<std::string, double>; // nanoseconds of one operation, by job

class median_reporter : public benchmark::BenchmarkReporter {
public:
  bool ReportContext(const Context &) override {
    return true;
  }
  void ReportRuns(const std::vector<Run> &runs) override {
    for (const Run &run : runs) {
      if (run.aggregate_name == "median") {
        medians[run.run_name.function_name] = run.GetAdjustedRealTime();
      }
    }
  }

  times medians; // of a run
};

void print_aims(const std::string &job, const times &medians) {
  for (const aim &row : AIMS) {
    const auto yardstick = medians.find(row.yardstick);
    if (job == row.job && yardstick != medians.end()) {
      const double part = medians.at(job) / yardstick->second;
      const bool of_unit = strcmp(row.yardstick, UNIT) == 0;
      printf("  %s %.2f of %.2f %s", part > row.at_most ? "MISSED" : "ok", part, row.at_most,
             of_unit ? "units" : row.yardstick);
    }
  }
}

void print_table(const std::vector<job> &jobs, const times &medians) {
  const auto unit = medians.find(UNIT);
  printf("\n%-52s %10s %8s  aims: reached of at most\n", "medians", "ns", "units");
  for (const job &done : jobs) {
    const auto time = medians.find(done.name);
    if (time == medians.end()) {
      continue;
    }
    printf("%-52s %10.1f", done.name.c_str(), time->second);
    if (unit != medians.end()) {
      printf(" %8.2f", time->second / unit->second);
    }
    print_aims(done.name, medians);
    printf("\n");
  }
}

// initialize returns false for a flag that Google Benchmark does not know.
bool initialize(int argc, char **argv) {
  // Short runs of all jobs in turn, many times: what slows the machine down for a while meets all.
  static std::vector<std::string> arguments = {
      // the library keeps pointers into it

      argv[0], "--benchmark_repetitions=11", "--benchmark_min_time=0.03",
      "--benchmark_enable_random_interleaving=true", "--benchmark_report_aggregates_only=true"};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  std::vector<char *> pointers;
  pointers.reserve(arguments.size());
  for (std::string &argument : arguments) {
    pointers.push_back(argument.data());
  }
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  return !benchmark::ReportUnrecognizedArguments(count, pointers.data());
}

} // namespace

int main(int argc, char **argv) {
  if (!initialize(argc, argv)) {
    return 2;
  }
  std::vector<job> jobs = yardsticks();
  for (job &of_library : all_measured().jobs) {
    jobs.push_back(std::move(of_library));
  }
  for (const job &registered : jobs) {
    benchmark::RegisterBenchmark(registered.name.c_str(), [run = registered.run](auto &state) {
      for ([[maybe_unused]] auto _ : state) {
        run();
      }
    });
  }
  median_reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  times medians;
  for (const job &done : jobs) {
    const auto run = reporter.medians.find(done.name);
    if (run != reporter.medians.end()) {
      medians[done.name] = run->second / static_cast<double>(done.operations);
    }
  }
  print_table(jobs, medians);
}
