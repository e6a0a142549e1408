#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "benchmarks.h"
#include "child_program.h"
#include "measure.h"
#include "scratch.h"

namespace celldesk::bench {
namespace {

constexpr double kTimeBudget = 1.3, kMemoryBudget = 1.25;
constexpr double kMilliseconds = 1e-6;     // of a nanosecond
constexpr double kMegabytes = 1.0 / 1024;  // of a kilobyte
constexpr int kMoreRuns = 3;

/// From the start of a process to its first painted window.
struct Start {
  double milliseconds = 0;
  double megabytes = 0;
};

struct Contestant {
  std::string program;
  std::vector<std::string> arguments;
};

const Contestant kProgram{"celldesk-bench-program", {}};
const Contestant kEmptyWindow{"celldesk-bench-window", {}};
const Contestant kWindowWithText{"celldesk-bench-window", {"--text"}};

long long Now() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

Start StartOnce(const Contestant& contestant) {
  const long long begin = Now();
  const ChildProgram child(contestant.program, contestant.arguments);
  long long painted = 0;
  long kilobytes = 0;
  if (std::sscanf(child.ReadLine().c_str(), "%lld %ld", &painted, &kilobytes) != 2) {
    std::fprintf(stderr, "%s did not paint a window; its figures are void.\n", contestant.program.c_str());
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

void Add(Figures& figures, const std::string& name, const Starts& program, const Starts& window) {
  const Sample time = Summarize(program.milliseconds), memory = Summarize(program.megabytes);
  const double least_time = Summarize(window.milliseconds).median;
  const double least_memory = Summarize(window.megabytes).median;
  figures.push_back({name, time.median, "ms", least_time, kTimeBudget * least_time, time.spread});
  figures.push_back({name + ": peak memory", memory.median, "MB", least_memory, kMemoryBudget * least_memory,
                     memory.spread});
}

// What the very first start writes it writes after its first painting.
Starts FirstStarts(int runs) {
  Starts first;
  for (int run = 0; run < runs; ++run) {
    Scratch::NewProfile();
    first.Add(StartOnce(kProgram));
  }
  return first;
}

}  // namespace

void MeasureStart(Figures& figures, const Options& options) {
  for (const Contestant& one : {kEmptyWindow, kWindowWithText}) static_cast<void>(StartOnce(one));
  const Sample first = Summarize(FirstStarts(options.runs).milliseconds);
  Scratch::UsedProfile();
  Starts empty, with_text, program;
  // In turn, so that all see the same machine.
  for (int run = 0; run < kMoreRuns * options.runs; ++run) {
    empty.Add(StartOnce(kEmptyWindow));
    with_text.Add(StartOnce(kWindowWithText));
    program.Add(StartOnce(kProgram));
  }
  Add(figures, "start to a painted window", program, empty);
  Add(figures, "start, floor a window with a word", program, with_text);
  figures.push_back({"the first start, in an empty profile", first.median, "ms", {}, {}, first.spread});
}

}  // namespace celldesk::bench
