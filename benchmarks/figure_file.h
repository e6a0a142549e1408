#pragma once

#include <optional>
#include <string>

#include "figure.h"

namespace celldesk::bench {

/// Figures as a JSON array of objects with name, figure, unit, floor, ratio, budget and spread; null where a
/// figure has none.
[[nodiscard]] bool WriteFigures(const std::string& path, const Figures& figures);
/// None when the file cannot be read or is of another kind.
std::optional<Figures> ReadFigures(const std::string& path);

}  // namespace celldesk::bench
