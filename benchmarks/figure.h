#pragma once

#include <optional>
#include <string>
#include <vector>

namespace celldesk::bench {

/// One measured value; smaller is always better.
struct Figure {
  std::string name;
  double figure = 0;
  std::string unit;
  /// What the machine or the line takes at least for the same work, in the same unit.
  std::optional<double> floor;
  /// The most that the figure may be, in the same unit.
  std::optional<double> budget;
  /// (largest - smallest) / median of the runs.
  double spread = 0;

  std::optional<double> ratio() const {
    return floor && *floor > 0 ? std::optional(figure / *floor) : std::nullopt;
  }
  bool misses_budget() const { return budget && figure > *budget; }
};

using Figures = std::vector<Figure>;

}  // namespace celldesk::bench
