#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace celldesk {

/// The complete lines that received chunks must give, by another way than the queue's: drop each chunk's
/// returns and line feeds that follow a line's end inside it, then cut what remains at carriage returns.
inline std::vector<std::u16string> ExpectedLines(const std::vector<std::u16string_view>& chunks) {
  std::u16string kept;
  for (const auto chunk : chunks) {
    bool after_end = false;
    for (const char16_t c : chunk) {
      const bool line_end = c == u'\r' || c == u'\n';
      if (!(after_end && line_end)) kept += c;
      after_end = c == u'\r' || (after_end && line_end);
    }
  }
  std::vector<std::u16string> lines;
  for (std::size_t end; (end = kept.find(u'\r')) != std::u16string::npos; kept.erase(0, end + 1))
    lines.push_back(kept.substr(0, end));
  return lines;
}

}  // namespace celldesk
