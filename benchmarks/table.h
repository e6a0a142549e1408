#pragma once

#include "figure.h"

namespace celldesk::bench {

/// Prints the figures as one table, those beyond their budget marked.
void PrintFigures(const Figures& figures);
/// Prints the figures that both have, and by what factor the newer ones differ.
void PrintComparison(const Figures& older, const Figures& newer);

}  // namespace celldesk::bench
