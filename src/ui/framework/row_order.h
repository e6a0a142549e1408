#pragma once

#include <cstdint>
#include <vector>

namespace celldesk {

class Window;

/// `rows`, record numbers in display order, sorted by the owner's Compare, negated when `descending`. Among
/// equal rows those that sort last go behind, and the others keep their order.
std::vector<std::uint32_t> RowsByCompare(Window& owner, std::vector<std::uint32_t> rows, bool descending);

/// The same order, by the owner's keys where it has them: each record is looked at once.
std::vector<std::uint32_t> RowsInOrder(Window& owner, std::vector<std::uint32_t> rows, bool descending);

}  // namespace celldesk
