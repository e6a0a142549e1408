#include "util/field_text.h"

#include <algorithm>

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

}  // namespace

void AppendField(std::string& bytes, std::u16string_view text) {
  for (const char16_t character : text) {
    const char byte = static_cast<char>(ToWindows1250(character));
    if (byte == kClose) bytes += kEscape;
    bytes += byte;
    if (byte == kEscape) bytes += ' ';
  }
  bytes += kClose;
}

void AppendNumber(std::string& bytes, std::int32_t number) {
  bytes += std::to_string(number);
  bytes += kClose;
}

void AppendLineEnd(std::string& bytes) { bytes += kLineEnd; }

std::optional<std::size_t> AfterField(FieldBytes bytes, std::size_t position) {
  for (; position < bytes.size(); ++position) {
    if (bytes[position] == kClose) return position + 1;
    if (bytes[position] == kEscape) ++position;
  }
  return std::nullopt;
}

std::u16string CopyField(FieldBytes bytes, std::size_t position) {
  std::u16string text;
  for (; position < bytes.size() && bytes[position] != kClose; ++position) {
    const bool escaped = bytes[position] == kEscape && position + 1 < bytes.size();
    if (escaped) ++position;
    const bool is_hash = escaped && bytes[position] == ' ';
    text += is_hash ? char16_t{kEscape} : FromWindows1250(bytes[position]);
  }
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

std::optional<std::u16string> FieldReader::Next() {
  if (IsLineEnd(bytes_, position_)) return std::nullopt;
  const std::optional<std::size_t> after = AfterField(bytes_, position_);
  if (!after) return std::nullopt;
  std::u16string text = CopyField(bytes_, position_);
  position_ = *after;
  return text;
}

bool FieldReader::NextLine() {
  position_ = SkipComments(bytes_, AfterLine(bytes_, position_));
  return position_ < bytes_.size() && !StandsAt(bytes_, position_, "@");
}

}  // namespace celldesk
