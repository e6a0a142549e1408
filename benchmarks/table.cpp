#include "table.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace celldesk::bench {
namespace {

std::string Number(const std::optional<double>& value) {
  if (!value) return "-";
  const int digits = *value == 0 || *value >= 1000 ? 0 : *value >= 100 ? 1 : *value >= 1 ? 2 : 3;
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.*f", digits, *value);
  return text.data();
}

std::string Percent(double value) { return Number(value * 100) + " %"; }

int NameWidth(const Figures& figures) {
  std::size_t width = 0;
  for (const Figure& figure : figures) width = std::max(width, figure.name.size());
  return static_cast<int>(width);
}

}  // namespace

void PrintFigures(const Figures& figures) {
  const int width = NameWidth(figures);
  std::printf("%-*s %10s  %-9s %10s %7s %10s %8s\n", width, "what", "figure", "unit", "floor", "ratio",
              "budget", "spread");
  for (const Figure& figure : figures) {
    std::printf("%-*s %10s  %-9s %10s %7s %10s %8s%s\n", width, figure.name.c_str(),
                Number(figure.figure).c_str(), figure.unit.c_str(), Number(figure.floor).c_str(),
                Number(figure.ratio()).c_str(), Number(figure.budget).c_str(), Percent(figure.spread).c_str(),
                figure.misses_budget() ? "  over" : "");
  }
}

void PrintComparison(const Figures& older, const Figures& newer) {
  const int width = NameWidth(newer);
  std::printf("%-*s %10s %10s  %-9s %9s %8s %8s\n", width, "what", "old", "new", "unit", "new/old", "spread",
              "spread");
  for (const Figure& now : newer) {
    const auto before = std::find_if(older.begin(), older.end(),
                                     [&](const Figure& figure) { return figure.name == now.name; });
    if (before == older.end()) continue;
    const std::optional<double> change =
        before->figure > 0 ? std::optional(now.figure / before->figure) : std::nullopt;
    std::printf("%-*s %10s %10s  %-9s %9s %8s %8s\n", width, now.name.c_str(), Number(before->figure).c_str(),
                Number(now.figure).c_str(), now.unit.c_str(), Number(change).c_str(),
                Percent(before->spread).c_str(), Percent(now.spread).c_str());
  }
}

}  // namespace celldesk::bench
