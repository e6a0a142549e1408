#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "util/inline_text.h"

namespace celldesk {

/// Records of fields as the program's files hold them: text in windows-1250, one record a line, every field
/// closed by ";". In a field "#" stands as "# " and ";" as "#;"; "#" before any other byte stands for that
/// byte. A line ends with CR LF directly after the ";" of its last field, so that line ends inside a field
/// are taken for text (except at its very start).

using FieldBytes = std::span<const std::uint8_t>;

/// Append one closed field, and the end of a record.
void AppendField(std::string& bytes, std::u16string_view text);
void AppendNumber(std::string& bytes, std::int32_t number);
void AppendLineEnd(std::string& bytes);

/// The position after the ";" that closes the field at `position`; none when the text ends first.
std::optional<std::size_t> AfterField(FieldBytes bytes, std::size_t position);
/// The text of the field at `position`, up to its ";" or the end, escapes resolved.
std::u16string CopyField(FieldBytes bytes, std::size_t position);
/// The start of the next line for a `position` in a line or at its end; the size of the text when there is
/// none.
std::size_t AfterLine(FieldBytes bytes, std::size_t position);

/// True when `prefix` stands at `position`.
bool StandsAt(FieldBytes bytes, std::size_t position, std::string_view prefix);
/// `position` moved past blank lines, and then past lines that begin with "//" and the blank lines among
/// them. After a comment, any line that begins with "/" counts as one.
std::size_t SkipComments(FieldBytes bytes, std::size_t position);

/// Goes through a file field by field and line by line. The bytes are borrowed.
class FieldReader {
 public:
  explicit FieldReader(FieldBytes bytes);

  /// The next field of the line; none, without moving, at the end of the line and when no ";" closes it.
  std::optional<std::u16string> Next();
  /// The same, as it stands in the file.
  std::optional<FieldBytes> NextBytes();
  /// The text of a field that NextBytes gave, escapes resolved: into `text`, whose room is used again.
  void Take(FieldBytes field, std::u16string& text) const;
  template <std::size_t kInline>
  void Take(FieldBytes field, InlineText<kInline>& text) const {
    text.Overwrite(field.size(), [&](char16_t* characters) { return Write(field, characters); });
  }
  /// Its number in decimal, 0 when it holds none.
  std::int32_t Number(FieldBytes field) const;
  /// The text into room for as many characters as the field has bytes; how many it made.
  std::size_t Write(FieldBytes field, char16_t* text) const;
  /// Moves to the next line that is neither blank nor a comment; false when there is none, or it begins with
  /// "@".
  bool NextLine();

 private:
  FieldBytes bytes_;
  bool has_escapes_;  // anywhere; hardly any file has
  std::size_t position_ = 0;
};

}  // namespace celldesk
