#include "simulator/ascii.h"

#include <charconv>

namespace celldesk::simulator {

char ToUpper(char byte) { return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte; }

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  for (char& byte : upper) byte = ToUpper(byte);
  return upper;
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && ToUpper(text.substr(0, prefix.size())) == ToUpper(prefix);
}

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlank = " \t\r\n";
  const auto first = text.find_first_not_of(kBlank);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

std::optional<int> ParseNumber(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::string ToHex(std::string_view octets) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char octet : octets) {
    text += kDigits[static_cast<unsigned char>(octet) >> 4];
    text += kDigits[static_cast<unsigned char>(octet) & 15];
  }
  return text;
}

std::optional<std::string> FromHex(std::string_view text) {
  if (text.size() % 2 != 0) return std::nullopt;
  std::string octets;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    unsigned value = 0;
    const char* end = text.data() + i + 2;
    const auto result = std::from_chars(text.data() + i, end, value, 16);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    octets += static_cast<char>(value);
  }
  return octets;
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const auto end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == text.npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::string Join(const std::vector<std::string>& parts, std::string_view separator) {
  std::string text;
  for (const std::string& part : parts) {
    if (&part != &parts.front()) text += separator;
    text += part;
  }
  return text;
}

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string QuotedList(const std::vector<std::string>& texts) {
  return texts.empty() ? std::string() : Quoted(Join(texts, "\",\""));
}

}  // namespace celldesk::simulator
