#include "benchmarks.h"
#include "config/operator_directory.h"
#include "measure.h"
#include "ui/resources/providers.h"

namespace celldesk::bench {
namespace {

/// What a change of country shows: its operators, and the centres of the first one.
void ShowCountry(const OperatorDirectory& directory, const std::u16string& country) {
  std::vector<std::u16string> operators = directory.Operators(country);
  if (!operators.empty()) {
    std::vector<std::u16string> centres = directory.Centres(country, operators.front());
    Keep(centres);
  }
  Keep(operators);
}

/// One look at every byte of the directory.
void ScanOnce() {
  unsigned sum = 0;
  for (const std::uint8_t byte : ProvidersResource()) sum += byte;
  Keep(sum);
}

}  // namespace

void MeasureOperators(Figures& figures, const Options& options) {
  constexpr double kMicroseconds = 1e6;
  const OperatorDirectory directory(ProvidersResource());
  const std::vector<std::u16string> countries = directory.Countries();
  const Sample scan = TimePerCall(options.runs, ScanOnce);
  const Sample list = TimePerCall(options.runs, [&] {
    std::vector<std::u16string> names = directory.Countries();
    Keep(names);
  });
  figures.push_back({"list the countries",
                     list.median * kMicroseconds,
                     "us",
                     scan.median * kMicroseconds,
                     {},
                     list.spread});
  const Sample walk = TimePerCall(options.runs, [&] {
    for (const std::u16string& country : countries) ShowCountry(directory, country);
  });
  const double each = walk.median / static_cast<double>(countries.size());
  figures.push_back(
      {"change the country", each * kMicroseconds, "us", scan.median * kMicroseconds, {}, walk.spread});
}

}  // namespace celldesk::bench
