#pragma once

#include <algorithm>
#include <string_view>

namespace celldesk {

/// The lower-case form of an ASCII letter; any other byte as it is, whatever the locale.
constexpr char LowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// True when both are the same but for the case of ASCII letters.
constexpr bool EqualAscii(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

constexpr bool StartsWithAscii(std::string_view text, std::string_view prefix) {
  return EqualAscii(text.substr(0, prefix.size()), prefix);
}

/// `text` without blanks and tabs at both ends.
constexpr std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace celldesk
