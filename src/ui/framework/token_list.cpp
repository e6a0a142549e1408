#include "ui/framework/token_list.h"

#include "util/number_text.h"

namespace celldesk {

std::vector<std::u16string> ParseTokens(std::u16string_view list) {
  std::vector<std::u16string> tokens;
  std::size_t position = 0;
  while (position < list.size() && list[position] != u'\r') {
    std::u16string token;
    for (; position < list.size() && list[position] != u';'; ++position) {
      if (list[position] != u'#' || position + 1 == list.size()) {
        token += list[position];
      } else {
        ++position;
        token += list[position] == u' ' ? u'#' : list[position];
      }
    }
    ++position;
    tokens.push_back(std::move(token));
  }
  return tokens;
}

std::vector<ColumnSpec> ParseColumns(std::u16string_view column_string) {
  const std::vector<std::u16string> tokens = ParseTokens(column_string);
  std::vector<ColumnSpec> columns;
  for (std::size_t i = 0; i + 1 < tokens.size(); i += 2) {
    columns.push_back({ParseDecimal(tokens[i]), tokens[i + 1]});
  }
  return columns;
}

}  // namespace celldesk
