#include <QCoreApplication>
#include <cstdio>
#include <string>
#include <vector>

#include "benchmarks.h"
#include "config/operator_directory.h"
#include "measure.h"
#include "ui/operator_page.h"
#include "ui/resources/providers.h"
#include "window_application.h"

namespace celldesk::bench {
namespace {

/// What a change of country asks of the directory: its operators, and the centres of the first one.
void LookUp(const OperatorDirectory& directory, const std::u16string& country) {
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

/// The page in a window of its own, until it is painted.
double OpenPage(OperatorPage& page) {
  return TimeOf([&] {
    if (!page.CreateModeless(nullptr))
      std::fputs("The page could not be made; its figures are void.\n", stderr);
    page.UpdateData(false);
    page.Show(true);
    QCoreApplication::processEvents();
  });
}

/// The user picks one country after the other.
double WalkCountries(OperatorPage& page) {
  const int count = page.ChoiceCount(OperatorPage::kCountry);
  const double seconds = TimeOf([&] {
    for (int country = 0; country < count; ++country) {
      page.SelectChoice(OperatorPage::kCountry, country);
      page.OnNotify(OperatorPage::kCountry, {NotifyCode::kChanged});
      QCoreApplication::processEvents();
    }
  });
  return seconds / count;
}

void AddPage(Figures& figures, const OperatorDirectory& directory, const Options& options) {
  constexpr double kMilliseconds = 1e3;
  WindowApplication();
  Settings settings;
  const Sample open = Repeat(options.runs, [&] {
    OperatorPage page(settings, directory);
    return OpenPage(page);
  });
  figures.push_back({"open the Operator page", open.median * kMilliseconds, "ms", {}, {}, open.spread});
  OperatorPage page(settings, directory);
  OpenPage(page);
  const Sample walk = Repeat(options.runs, [&] { return WalkCountries(page); });
  figures.push_back({"change the country there", walk.median * kMilliseconds, "ms", {}, {}, walk.spread});
}

}  // namespace

void MeasureOperators(Figures& figures, const Options& options) {
  constexpr double kMicroseconds = 1e6;
  const OperatorDirectory directory(ProvidersResource());
  const std::vector<std::u16string> countries = directory.Countries();
  const Sample scan = TimePerCall(options.runs, ScanOnce);
  const Sample walk = TimePerCall(options.runs, [&] {
    for (const std::u16string& country : countries) LookUp(directory, country);
  });
  const double each = walk.median / static_cast<double>(countries.size());
  figures.push_back({"look up a country's operators",
                     each * kMicroseconds,
                     "us",
                     scan.median * kMicroseconds,
                     {},
                     walk.spread});
  AddPage(figures, directory, options);
}

}  // namespace celldesk::bench
