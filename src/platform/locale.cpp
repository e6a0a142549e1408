#include "platform/locale.h"

#include "platform/text_ranks.h"

namespace celldesk {

std::vector<std::uint32_t> Locale::Ranks(std::size_t count, const TextAt& text_at) const {
  std::vector<std::u16string> texts(count);
  std::u16string buffer;
  for (std::size_t i = 0; i < count; ++i) texts[i] = text_at(i, buffer);
  return RanksBy(count,
                 [&](std::size_t left, std::size_t right) { return Compare(texts[left], texts[right]); });
}

}  // namespace celldesk
