#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "util/field_text.h"
#include "util/object.h"

namespace celldesk {

/// Countries, their GSM operators and the operators' SMS centres, straight from the bytes of the directory:
/// nothing is kept but the bytes. The text has windows-1250 lines as util/field_text.h tells; blank lines and
/// lines that begin with "//" are skipped. A line that begins with "@" opens a section: the first lists the
/// countries (name; code; dialling code), each other one is headed by a country's code and lists its
/// operators (name; network code; SMS centres). Irregular lines are taken for what they hold.
class OperatorDirectory : public Object {
 public:
  /// Where a field begins: its offset into the bytes.
  using Position = std::size_t;

  /// The bytes are borrowed for the directory's life.
  explicit OperatorDirectory(FieldBytes bytes) : bytes_(bytes) {}

  /// The names of the countries, in the order of the directory.
  std::vector<std::u16string> Countries() const;
  /// The names of a country's operators; none for a country that is not listed or has no section.
  std::vector<std::u16string> Operators(std::u16string_view country) const;
  /// The SMS centres of an operator of that country.
  std::vector<std::u16string> Centres(std::u16string_view country, std::u16string_view operator_name) const;

  /// The first line that begins with "@", or none.
  std::optional<Position> FirstSection() const;
  /// The next line that begins with "@", for a position in a line; none at the end.
  std::optional<Position> NextSection(Position position) const;
  /// The first line under the header of a section; none when it has none.
  std::optional<Position> FirstLine(Position section) const;
  /// The line after the one that `position` is in; none at the end of the section.
  std::optional<Position> NextLine(Position position) const;
  /// The text of the field at `position`.
  std::u16string CopyField(Position position) const;
  /// 0 when `text` equals the field; a carriage return in the field matches a line feed, too.
  int CompareField(std::u16string_view text, Position position) const;
  /// The field after the one at `position`, also when that is the start of the next line; none at the end.
  std::optional<Position> SkipField(Position position) const;

 private:
  std::optional<Position> LineAt(Position position) const;
  std::optional<Position> FindLine(std::optional<Position> line, std::u16string_view name) const;
  std::optional<Position> FindSection(std::u16string_view code) const;
  std::optional<Position> FirstOperator(std::u16string_view country) const;
  bool IsLineEnd(Position position) const;
  Position AfterLineEnd(Position position) const;

  FieldBytes bytes_;
};

}  // namespace celldesk
