#include "ui/framework/sort_key.h"

#include <algorithm>

namespace celldesk {

std::vector<std::uint64_t> PackedKeys(std::span<const std::uint32_t> places, bool descending) {
  std::vector<std::uint64_t> keys(places.size());
  std::transform(places.begin(), places.end(), keys.begin(),
                 [descending](std::uint32_t place) { return SortKey{.value = place}.Packed(descending); });
  return keys;
}

}  // namespace celldesk
