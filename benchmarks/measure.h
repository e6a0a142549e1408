#pragma once

#include <chrono>
#include <functional>
#include <vector>

namespace celldesk::bench {

/// Median of the runs, and how far they lie apart: (largest - smallest) / median.
struct Sample {
  double median = 0;
  double spread = 0;
};

Sample Summarize(std::vector<double> values);

/// Seconds since it was made.
class Stopwatch {
 public:
  double Seconds() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point start_ = Clock::now();
};

/// One run that does not count, then `runs` that do; `one` returns what it measured.
Sample Repeat(int runs, const std::function<double()>& one);

/// The compiler must take it that somebody reads and changes `value`.
template <typename Value>
void Keep(Value& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

/// Seconds that this thread had of a processor so far: what else the machine does is not in it.
double ProcessorTime();

/// The processor time that `work` takes.
double TimeOf(const std::function<void()>& work);

/// Seconds of processor time of one `call`, from runs of many calls each.
template <typename Call>
Sample TimePerCall(int runs, const Call& call) {
  constexpr double kLongEnough = 0.05;
  std::size_t calls = 1;
  const auto time_all = [&] {
    const double start = ProcessorTime();
    for (std::size_t i = 0; i < calls; ++i) call();
    return ProcessorTime() - start;
  };
  while (time_all() < kLongEnough) calls *= 2;
  return Repeat(runs, [&] { return time_all() / static_cast<double>(calls); });
}

}  // namespace celldesk::bench
