#include "measure.h"

#include <time.h>

#include <algorithm>

namespace celldesk::bench {

Sample Summarize(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  const bool even = values.size() % 2 == 0;
  const double median = even ? (values[middle - 1] + values[middle]) / 2 : values[middle];
  return {median, median > 0 ? (values.back() - values.front()) / median : 0};
}

Sample Repeat(int runs, const std::function<double()>& one) {
  static_cast<void>(one());
  std::vector<double> values;
  for (int run = 0; run < runs; ++run) values.push_back(one());
  return Summarize(std::move(values));
}

double ProcessorTime() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double TimeOf(const std::function<void()>& work) {
  const double start = ProcessorTime();
  work();
  return ProcessorTime() - start;
}

}  // namespace celldesk::bench
