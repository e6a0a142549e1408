#include "platform/settings_value.h"

#include <charconv>

#include "util/text.h"

namespace celldesk {
namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

constexpr std::string_view kString = "string:", kNumber = "number:", kBinary = "binary:",
                           kStringBytes = "string-bytes:", kNumberBytes = "number-bytes:";

constexpr bool IsHigh(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsLow(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

bool StandsAlone(std::u16string_view text, std::size_t i) {
  if (IsHigh(text[i])) return i + 1 == text.size() || !IsLow(text[i + 1]);
  return IsLow(text[i]) && (i == 0 || !IsHigh(text[i - 1]));
}

std::string EscapeUnit(char16_t unit) {
  switch (unit) {
    case u'\\':
      return "\\\\";
    case u'\n':
      return "\\n";
    case u'\r':
      return "\\r";
    case u'\t':
      return "\\t";
    case u' ':
      return "\\s";
    default:
      break;
  }
  std::string text = "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += kHexDigits[(unit >> shift) & 0xF];
  return text;
}

bool NeedsEscape(std::u16string_view text, std::size_t i, std::u16string_view special) {
  const char16_t unit = text[i];
  if (unit == u' ') return i == 0 || i + 1 == text.size() || special.find(unit) != special.npos;
  return unit < 32 || unit == 127 || unit == u'\\' || special.find(unit) != special.npos ||
         StandsAlone(text, i);
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::optional<char16_t> ParseUnit(std::string_view digits) {
  unsigned unit = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
  if (digits.size() != 4 || error != std::errc() || end != digits.data() + 4) return std::nullopt;
  return static_cast<char16_t>(unit);
}

// The unit of the escape that begins `text`, which is shortened by it.
std::optional<char16_t> TakeEscape(std::string_view& text) {
  constexpr std::string_view kLetters = "\\nrts", kUnits = "\\\n\r\t ";
  if (text.size() < 2) return std::nullopt;
  if (text[1] == 'u') {
    const auto unit = ParseUnit(text.substr(2, 4));
    if (unit) text.remove_prefix(6);
    return unit;
  }
  const std::size_t letter = kLetters.find(text[1]);
  if (letter == kLetters.npos) return std::nullopt;
  text.remove_prefix(2);
  return static_cast<char16_t>(kUnits[letter]);
}

std::string EncodeHex(const std::vector<std::uint8_t>& bytes) {
  std::string text;
  text.reserve(bytes.size() * 2);
  for (std::uint8_t byte : bytes) {
    text += kHexDigits[byte >> 4];
    text += kHexDigits[byte & 0xF];
  }
  return text;
}

std::optional<std::vector<std::uint8_t>> DecodeHex(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == ' ') {
      ++i;
      continue;
    }
    const int high = HexDigit(text[i]), low = i + 1 < text.size() ? HexDigit(text[i + 1]) : -1;
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
    i += 2;
  }
  return bytes;
}

std::optional<std::u16string> WholeText(const std::vector<std::uint8_t>& bytes) {
  if (bytes.size() < 2 || bytes.size() % 2 != 0 || bytes.back() != 0 || bytes[bytes.size() - 2] != 0)
    return std::nullopt;
  std::u16string text;
  for (std::size_t i = 0; i + 2 < bytes.size(); i += 2)
    text += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
  return text;
}

std::string EncodeString(const RegistryData& data) {
  const auto text = WholeText(data.bytes);
  return text ? std::string(kString) + EscapeText(*text) : std::string(kStringBytes) + EncodeHex(data.bytes);
}

std::string EncodeNumber(const RegistryData& data) {
  if (data.bytes.size() != 4) return std::string(kNumberBytes) + EncodeHex(data.bytes);
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) number |= static_cast<std::uint32_t>(data.bytes[i]) << (8 * i);
  return std::string(kNumber) + std::to_string(number);
}

std::optional<RegistryData> DecodeString(std::string_view text) {
  const auto units = UnescapeText(text);
  if (!units) return std::nullopt;
  RegistryData data{RegistryType::kString, {}};
  for (char16_t unit : *units) {
    data.bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    data.bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  data.bytes.insert(data.bytes.end(), {0, 0});
  return data;
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<RegistryData> DecodeNumber(std::string_view text) {
  text = WithoutBlanks(text);
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  RegistryData data{RegistryType::kNumber, {}};
  for (int shift = 0; shift < 32; shift += 8)
    data.bytes.push_back(static_cast<std::uint8_t>(number >> shift));
  return data;
}

std::optional<RegistryData> DecodeBytes(RegistryType type, std::string_view text) {
  auto bytes = DecodeHex(WithoutBlanks(text));
  if (!bytes) return std::nullopt;
  return RegistryData{type, std::move(*bytes)};
}

}  // namespace

std::string EncodeValue(const RegistryData& data) {
  if (data.type == RegistryType::kString) return EncodeString(data);
  if (data.type == RegistryType::kNumber) return EncodeNumber(data);
  return std::string(kBinary) + EncodeHex(data.bytes);
}

std::optional<RegistryData> DecodeValue(std::string_view text) {
  const auto after = [&](std::string_view prefix) { return text.substr(prefix.size()); };
  if (text.starts_with(kString)) return DecodeString(after(kString));
  if (text.starts_with(kNumber)) return DecodeNumber(after(kNumber));
  if (text.starts_with(kBinary)) return DecodeBytes(RegistryType::kBinary, after(kBinary));
  if (text.starts_with(kStringBytes)) return DecodeBytes(RegistryType::kString, after(kStringBytes));
  if (text.starts_with(kNumberBytes)) return DecodeBytes(RegistryType::kNumber, after(kNumberBytes));
  return std::nullopt;
}

std::string EscapeText(std::u16string_view text, std::u16string_view special) {
  std::string escaped;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!NeedsEscape(text, i, special)) continue;
    escaped += ToUtf8(text.substr(start, i - start)) + EscapeUnit(text[i]);
    start = i + 1;
  }
  return escaped + ToUtf8(text.substr(start));
}

std::optional<std::u16string> UnescapeText(std::string_view text) {
  std::u16string plain;
  while (!text.empty()) {
    const std::size_t end = text.find('\\');
    plain += FromUtf8(text.substr(0, end));
    if (end == text.npos) break;
    text.remove_prefix(end);
    const auto unit = TakeEscape(text);
    if (!unit) return std::nullopt;
    plain += *unit;
  }
  return plain;
}

}  // namespace celldesk
