#include "platform/vdir/vcard_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/vdir/ascii.h"
#include "util/text.h"
#include "util/windows1250.h"

namespace celldesk {
namespace {

constexpr std::string_view kTelScheme = "tel:";

std::optional<int> HexDigit(char digit) {
  const char lower = LowerAscii(digit);
  if (lower >= '0' && lower <= '9') return lower - '0';
  if (lower >= 'a' && lower <= 'f') return lower - 'a' + 10;
  return std::nullopt;
}

/// `text` with every "=41" (for the mark "=") turned into its byte; a mark before anything else stays.
std::string DecodeHexPairs(std::string_view text, char mark) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool marked = text[i] == mark && i + 2 < text.size();
    const auto high = marked ? HexDigit(text[i + 1]) : std::nullopt;
    const auto low = marked ? HexDigit(text[i + 2]) : std::nullopt;
    bytes.push_back(high && low ? static_cast<char>(*high * 16 + *low) : text[i]);
    if (high && low) i += 2;
  }
  return bytes;
}

std::u16string Widen(std::string_view bytes, char16_t (*character_of)(std::uint8_t)) {
  std::u16string text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(),
                 [character_of](char byte) { return character_of(static_cast<std::uint8_t>(byte)); });
  return text;
}

char16_t FromLatin1(std::uint8_t byte) { return byte; }

std::u16string DecodeCharset(std::string_view bytes, std::string_view charset) {
  if (EqualAscii(charset, "windows-1250") || EqualAscii(charset, "cp1250"))
    return Widen(bytes, FromWindows1250);
  if (EqualAscii(charset, "ISO-8859-1") || EqualAscii(charset, "latin1")) return Widen(bytes, FromLatin1);
  // Only well-formed UTF-8 comes back as it was.
  if (std::u16string text = FromUtf8(bytes); ToUtf8(text) == bytes) return text;
  return Widen(bytes, FromLatin1);
}

bool IsControl(char16_t character) { return character < u' ' || character == 0x7F; }

/// What a backslash before `character` stands for; none when it stands for itself.
std::optional<char16_t> EscapedCharacter(char16_t character) {
  if (character == u'n' || character == u'N') return u' ';
  constexpr std::u16string_view kEscaped = u"\\;,:";
  return kEscaped.find(character) != std::u16string_view::npos ? std::optional(character) : std::nullopt;
}

/// In place: the text only gets shorter.
void Unescape(std::u16string& text) {
  std::size_t end = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool marked = text[i] == u'\\' && i + 1 < text.size();
    const auto escaped = marked ? EscapedCharacter(text[i + 1]) : std::nullopt;
    text[end++] = escaped.value_or(text[i]);
    if (escaped) ++i;
  }
  text.resize(end);
}

}  // namespace

std::string_view TakeComponent(std::string_view& value) {
  std::size_t end = 0;
  while (end < value.size() && value[end] != ';') end += value[end] == '\\' ? 2 : 1;
  end = std::min(end, value.size());
  const std::string_view component = value.substr(0, end);
  value.remove_prefix(std::min(end + 1, value.size()));
  return component;
}

std::u16string DecodeVcardText(std::string_view raw, const VcardParameters& parameters) {
  if (parameters.base64) return {};
  std::u16string text = parameters.quoted_printable
                            ? DecodeCharset(DecodeHexPairs(raw, '='), parameters.charset)
                            : DecodeCharset(raw, parameters.charset);
  Unescape(text);
  std::erase(text, u'\r');
  std::replace_if(text.begin(), text.end(), IsControl, u' ');
  return text;
}

bool IsTelUri(std::string_view value) { return StartsWithAscii(value, kTelScheme); }

std::u16string DecodeTelUri(std::string_view uri) {
  uri.remove_prefix(std::min(kTelScheme.size(), uri.size()));
  std::string number = DecodeHexPairs(uri.substr(0, uri.find(';')), '%');
  std::erase_if(number, [](char c) { return std::string_view("-.() ").find(c) != std::string_view::npos; });
  return DecodeVcardText(number, {});
}

}  // namespace celldesk
