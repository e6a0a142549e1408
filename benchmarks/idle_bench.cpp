#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "benchmarks.h"
#include "child_program.h"
#include "measure.h"
#include "scratch.h"

namespace celldesk::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kWindows = 5;
constexpr std::chrono::seconds kWindow{2};
constexpr std::chrono::seconds kSettle{1};

/// What all threads of a process did since it started.
struct Activity {
  double switches = 0;  // voluntary and involuntary
  double cpu_seconds = 0;
};

Activity ActivityOf(pid_t process) {
  Activity activity;
  for (const auto& task : fs::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
    std::ifstream status(task.path() / "status");
    for (std::string line; std::getline(status, line);) {
      const std::size_t at = line.find("voluntary_ctxt_switches:");
      if (at != std::string::npos) activity.switches += std::stod(line.substr(line.find(':') + 1));
    }
    double nanoseconds = 0;
    std::ifstream(task.path() / "schedstat") >> nanoseconds;
    activity.cpu_seconds += nanoseconds / 1e9;
  }
  return activity;
}

}  // namespace

void MeasureIdle(Figures& figures, const Options& /*options*/) {
  Scratch::UsedProfile();
  ChildProgram phone("celldesk-phone", {"--filled"});
  static_cast<void>(phone.ReadLine());
  ChildProgram program("celldesk-bench-program", {"--connect"});
  if (program.ReadLine() != "connected") {
    std::fprintf(stderr, "The program did not connect; the figures of idleness are left out.\n");
    return;
  }
  std::this_thread::sleep_for(kSettle);
  std::vector<double> switches, cpu;
  Activity before = ActivityOf(program.id());
  for (int window = 0; window < kWindows; ++window) {
    const Stopwatch watch;
    std::this_thread::sleep_for(kWindow);
    const Activity after = ActivityOf(program.id());
    switches.push_back((after.switches - before.switches) / watch.Seconds());
    cpu.push_back((after.cpu_seconds - before.cpu_seconds) / watch.Seconds() * 100);
    before = after;
  }
  const Sample wakes = Summarize(switches);
  const Sample load = Summarize(cpu);
  figures.push_back({"connected and idle: wake-ups", wakes.median, "per s", {}, 0.0, wakes.spread});
  figures.push_back({"connected and idle: processor", load.median, "%", {}, 0.0, load.spread});
}

}  // namespace celldesk::bench
