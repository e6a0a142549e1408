#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace celldesk {

/// The place of each of `count` items in an order, from 0; equal items share one. `compare(left, right)` is
/// negative, zero or positive as the item of number `left` stands before, with or after the other.
template <typename Compare>
std::vector<std::uint32_t> RanksBy(std::size_t count, const Compare& compare) {
  std::vector<std::uint32_t> order(count);
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t left, std::uint32_t right) { return compare(left, right) < 0; });
  std::vector<std::uint32_t> ranks(count);
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0 && compare(order[i - 1], order[i]) != 0) ++rank;
    ranks[order[i]] = rank;
  }
  return ranks;
}

}  // namespace celldesk
