#include "ui/framework/row_order.h"

#include <algorithm>
#include <compare>

#include "ui/framework/window.h"

namespace celldesk {
namespace {

/// A row on its way to its place; equal keys stay in the order they had.
struct MovingRow {
  std::uint64_t key;
  std::uint32_t place;
  std::uint32_t record;

  friend auto operator<=>(const MovingRow&, const MovingRow&) = default;
};

std::vector<std::uint32_t> RowsByKey(const std::vector<std::uint32_t>& rows,
                                     const std::vector<std::uint64_t>& keys) {
  std::vector<MovingRow> moving(rows.size());
  for (std::uint32_t i = 0; i < rows.size(); ++i) moving[i] = {keys[i], i, rows[i]};
  std::sort(moving.begin(), moving.end());
  std::vector<std::uint32_t> sorted(rows.size());
  std::transform(moving.begin(), moving.end(), sorted.begin(),
                 [](const MovingRow& row) { return row.record; });
  return sorted;
}

}  // namespace

std::vector<std::uint32_t> RowsByCompare(Window& owner, std::vector<std::uint32_t> rows, bool descending) {
  const int direction = descending ? -1 : 1;
  std::stable_sort(rows.begin(), rows.end(), [&](std::uint32_t left, std::uint32_t right) {
    const int order = direction * owner.Compare(left, right);
    return order != 0 ? order < 0 : !owner.SortsLast(left) && owner.SortsLast(right);
  });
  return rows;
}

std::vector<std::uint32_t> RowsInOrder(Window& owner, std::vector<std::uint32_t> rows, bool descending) {
  const std::vector<std::uint64_t> keys = owner.SortKeys(rows, descending);
  if (keys.size() != rows.size()) return RowsByCompare(owner, std::move(rows), descending);
  return RowsByKey(rows, keys);
}

}  // namespace celldesk
