#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

#include "benchmarks.h"
#include "child_program.h"
#include "measure.h"
#include "scratch.h"

namespace celldesk::bench {
namespace {

constexpr double kTimeBudget = 1.3, kMemoryBudget = 1.25;
constexpr double kMilliseconds = 1e-6;     // of a nanosecond
constexpr double kMegabytes = 1.0 / 1024;  // of a kilobyte
constexpr int kMoreRuns = 2;

/// From the start of a process to its first painted window.
struct Start {
  double milliseconds = 0;
  double megabytes = 0;
};

long long Now() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

Start StartOnce(const char* program) {
  Scratch::NewProfile();
  const long long begin = Now();
  ChildProgram child(program);
  long long painted = 0;
  long kilobytes = 0;
  if (std::sscanf(child.ReadLine().c_str(), "%lld %ld", &painted, &kilobytes) != 2) {
    std::fprintf(stderr, "%s did not paint a window; its figures are void.\n", program);
    return {};
  }
  return {static_cast<double>(painted - begin) * kMilliseconds, static_cast<double>(kilobytes) * kMegabytes};
}

struct Starts {
  std::vector<double> milliseconds;
  std::vector<double> megabytes;

  void Add(const Start& start) {
    milliseconds.push_back(start.milliseconds);
    megabytes.push_back(start.megabytes);
  }
};

void Add(Figures& figures, const std::string& name, const std::string& unit, double budget,
         const std::vector<double>& values, const std::vector<double>& empty_window) {
  const Sample sample = Summarize(values);
  const double floor = Summarize(empty_window).median;
  figures.push_back({name, sample.median, unit, floor, budget * floor, sample.spread});
}

}  // namespace

void MeasureStart(Figures& figures, const Options& options) {
  static_cast<void>(StartOnce("celldesk-bench-window"));
  static_cast<void>(StartOnce("celldesk-bench-program"));
  Starts window, program;
  // In turn, so that both see the same machine.
  for (int run = 0; run < kMoreRuns * options.runs; ++run) {
    window.Add(StartOnce("celldesk-bench-window"));
    program.Add(StartOnce("celldesk-bench-program"));
  }
  Add(figures, "start to a painted window", "ms", kTimeBudget, program.milliseconds, window.milliseconds);
  Add(figures, "start to a painted window: peak memory", "MB", kMemoryBudget, program.megabytes,
      window.megabytes);
}

}  // namespace celldesk::bench
