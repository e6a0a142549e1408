#pragma once

#include <array>
#include <string_view>

namespace celldesk {

/// The phone's message memories (GSM 07.05 3.2.2); a message keeps its memory as the index into this table.
inline constexpr std::array<std::u16string_view, 6> kMessageMemories = {u"SM", u"ME", u"MT",
                                                                        u"BM", u"TA", u"SR"};

/// Indexes of the memories that messages are saved to.
inline constexpr int kSimMemory = 0;
inline constexpr int kPhoneMemory = 1;

constexpr bool IsMessageMemory(int memory) {
  return memory >= 0 && memory < static_cast<int>(kMessageMemories.size());
}

}  // namespace celldesk
