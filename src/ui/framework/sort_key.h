#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace celldesk {

/// What a record is sorted by, packed into one number: records stand in ascending order of it. Groups and the
/// values in them count downwards when the order is descending; a record that sorts last stands behind its
/// group's values either way.
struct SortKey {
  static constexpr int kGroupShift = 62, kLastShift = 61;
  static constexpr std::uint64_t kLargestGroup = 3;
  static constexpr std::uint64_t kLargestValue = (std::uint64_t{1} << kLastShift) - 1;
  /// Behind every record that has a key.
  static constexpr std::uint64_t kNone = ~std::uint64_t{0};

  std::uint64_t value = 0;  ///< at most kLargestValue
  std::uint64_t group = 0;  ///< at most kLargestGroup
  bool last = false;        ///< the value does not count

  constexpr std::uint64_t Packed(bool descending) const {
    const std::uint64_t in_group = last ? 0 : descending ? kLargestValue - value : value;
    const std::uint64_t directed_group = descending ? kLargestGroup - group : group;
    return directed_group << kGroupShift | std::uint64_t{last} << kLastShift | in_group;
  }
};

/// The packed keys of records that have a place each, of one group.
std::vector<std::uint64_t> PackedKeys(std::span<const std::uint32_t> places, bool descending);

}  // namespace celldesk
