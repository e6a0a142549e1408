#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace celldesk {

/// The tokens of a list string, each ended by ";" (the last one may go without). "#" escapes the character
/// after it: "#;" is a ";" inside the token, "# " is "#" itself. Reading stops at the end or when a token
/// begins with a carriage return.
std::vector<std::u16string> ParseTokens(std::u16string_view list);

/// One column of a report list.
struct ColumnSpec {
  int width = 0;  ///< in pixels
  std::u16string caption;

  friend bool operator==(const ColumnSpec&, const ColumnSpec&) = default;
};

/// Columns from a column string, tokens in pairs: width, caption. A width token without digits gives 0; a
/// width without a caption ends the reading.
std::vector<ColumnSpec> ParseColumns(std::u16string_view column_string);

}  // namespace celldesk
