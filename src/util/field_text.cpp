#include "util/field_text.h"

#include <algorithm>
#include <utility>

#include "util/number_text.h"
#include "util/windows1250.h"

namespace celldesk {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kEscape = '#';
constexpr char kClose = ';';

/// True when the byte before `position` closes a field and a line end follows.
bool IsLineEnd(FieldBytes bytes, std::size_t position) {
  return position > 0 && bytes[position - 1] == kClose && StandsAt(bytes, position, kLineEnd);
}

std::size_t SkipBlankLines(FieldBytes bytes, std::size_t position) {
  while (StandsAt(bytes, position, kLineEnd)) position += kLineEnd.size();
  return position;
}

/// Past the line end that follows next, whatever stands before it.
std::size_t AfterLineEnd(FieldBytes bytes, std::size_t position) {
  while (position < bytes.size() && !StandsAt(bytes, position, kLineEnd)) ++position;
  return std::min(position + kLineEnd.size(), bytes.size());
}

std::string Escaped(std::string_view field) {
  std::string escaped;
  for (const char byte : field) {
    if (byte == kClose) escaped += kEscape;
    escaped += byte;
    if (byte == kEscape) escaped += ' ';
  }
  return escaped;
}

std::string_view AsText(FieldBytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// True when the byte at `position` belongs to an escape of the field that begins at `start`: of the "#"
/// before it, every second one is escaped itself.
bool IsEscaped(std::string_view text, std::size_t start, std::size_t position) {
  std::size_t first = position;
  while (first > start && text[first - 1] == kEscape) --first;
  return (position - first) % 2 != 0;
}

/// The position of the ";" that closes the field at `position`; npos when the text ends first.
std::size_t FindClose(std::string_view text, std::size_t position) {
  std::size_t close = text.find(kClose, position);
  while (close != text.npos && IsEscaped(text, position, close)) close = text.find(kClose, close + 1);
  return close;
}

/// Resolves the escapes of a field's text in place: "# " is "#", and "#" before any other character is that
/// character. A "#" at the end stands for itself. The new length.
std::size_t ResolveEscapes(std::span<char16_t> text) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == kEscape && i + 1 < text.size();
    if (escaped) ++i;
    text[length++] = escaped && text[i] == u' ' ? char16_t{kEscape} : text[i];
  }
  return length;
}

}  // namespace

void AppendField(std::string& bytes, std::u16string_view text) {
  const std::size_t start = bytes.size();
  bytes.resize(start + text.size());
  bool special = false;
  std::transform(text.begin(), text.end(), bytes.data() + start, [&special](char16_t character) {
    const char byte = static_cast<char>(ToWindows1250(character));
    special |= byte == kClose || byte == kEscape;
    return byte;
  });
  if (special) bytes.replace(start, bytes.npos, Escaped(std::string_view(bytes).substr(start)));
  bytes += kClose;
}

void AppendNumber(std::string& bytes, std::int32_t number) {
  bytes += std::to_string(number);
  bytes += kClose;
}

void AppendLineEnd(std::string& bytes) { bytes += kLineEnd; }

std::optional<std::size_t> AfterField(FieldBytes bytes, std::size_t position) {
  const std::size_t close = FindClose(AsText(bytes), position);
  return close == std::string_view::npos ? std::nullopt : std::optional(close + 1);
}

std::u16string CopyField(FieldBytes bytes, std::size_t position) {
  const std::optional<std::size_t> after = AfterField(bytes, position);
  const std::size_t end = after ? *after - 1 : bytes.size();
  if (position >= end) return {};
  std::u16string text(end - position, u'\0');
  WidenWindows1250(bytes.subspan(position, end - position), text.data());
  text.resize(ResolveEscapes(text));
  return text;
}

std::size_t AfterLine(FieldBytes bytes, std::size_t position) {
  std::optional<std::size_t> next = position;
  while (next && !IsLineEnd(bytes, *next)) next = AfterField(bytes, *next);
  return next ? *next + kLineEnd.size() : bytes.size();
}

bool StandsAt(FieldBytes bytes, std::size_t position, std::string_view prefix) {
  if (position > bytes.size() || bytes.size() - position < prefix.size()) return false;
  const FieldBytes found = bytes.subspan(position, prefix.size());
  return std::equal(found.begin(), found.end(), prefix.begin());
}

std::size_t SkipComments(FieldBytes bytes, std::size_t position) {
  position = SkipBlankLines(bytes, position);
  if (!StandsAt(bytes, position, "//")) return position;
  while (StandsAt(bytes, position, "/")) position = SkipBlankLines(bytes, AfterLineEnd(bytes, position));
  return position;
}

FieldReader::FieldReader(FieldBytes bytes)
    : bytes_(bytes), has_escapes_(AsText(bytes).find(kEscape) != std::string_view::npos) {}

std::optional<std::u16string> FieldReader::Next() {
  const std::optional<FieldBytes> field = NextBytes();
  if (!field) return std::nullopt;
  std::optional<std::u16string> text(std::in_place);
  Take(*field, *text);
  return text;
}

std::optional<FieldBytes> FieldReader::NextBytes() {
  if (IsLineEnd(bytes_, position_)) return std::nullopt;
  const std::string_view text = AsText(bytes_);
  const std::size_t close = has_escapes_ ? FindClose(text, position_) : text.find(kClose, position_);
  if (close == text.npos) return std::nullopt;
  const std::size_t start = std::exchange(position_, close + 1);
  return bytes_.subspan(start, close - start);
}

void FieldReader::Take(FieldBytes field, std::u16string& text) const {
  text.resize(field.size());
  text.resize(Write(field, text.data()));
}

std::int32_t FieldReader::Number(FieldBytes field) const {
  if (!has_escapes_) return ParseDecimal(AsText(field));
  std::u16string text;
  Take(field, text);
  return ParseDecimal(text);
}

std::size_t FieldReader::Write(FieldBytes field, char16_t* text) const {
  WidenWindows1250(field, text);
  return has_escapes_ ? ResolveEscapes({text, field.size()}) : field.size();
}

bool FieldReader::NextLine() {
  position_ = SkipComments(bytes_, AfterLine(bytes_, position_));
  return position_ < bytes_.size() && !StandsAt(bytes_, position_, "@");
}

}  // namespace celldesk
