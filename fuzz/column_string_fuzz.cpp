// Input: a list string, one character for each octet. Property: its tokens, escaped and put together again,
// give the same tokens; there is no more than one token for each ";" and a last one; columns are the tokens
// in pairs.

#include <algorithm>
#include <cstdint>

#include "fuzz/property.h"
#include "ui/framework/token_list.h"
#include "util/number_text.h"

namespace {

using namespace celldesk;

std::u16string Escaped(const std::u16string& token) {
  std::u16string text;
  for (const char16_t character : token) {
    if (character == u';' || (character == u'\r' && text.empty())) text += u'#';
    text += character;
    if (character == u'#') text += u' ';
  }
  return text + u';';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string list(data, data + size);
  const std::vector<std::u16string> tokens = ParseTokens(list);
  HOLDS(static_cast<std::ptrdiff_t>(tokens.size()) <= std::count(list.begin(), list.end(), u';') + 1);
  std::u16string together;
  for (const std::u16string& token : tokens) together += Escaped(token);
  HOLDS(ParseTokens(together) == tokens);

  const std::vector<ColumnSpec> columns = ParseColumns(list);
  HOLDS(columns.size() == tokens.size() / 2);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    HOLDS(columns[i].width == ParseDecimal(tokens[2 * i]));
    HOLDS(columns[i].caption == tokens[2 * i + 1]);
  }
  return 0;
}
