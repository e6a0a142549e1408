#include "link/response_line.h"

#include <algorithm>
#include <utility>

namespace celldesk {

void ResponseLine::Take(std::u16string&& text) {
  text_ = std::move(text);
  cursor_ = 0;
}

void ResponseLine::Clear() { Take({}); }

void ResponseLine::DropLineFeeds() { text_.erase(0, std::min(text_.find_first_not_of(u'\n'), text_.size())); }

bool StartsWith(ResponseLine& response, std::u16string_view literal) {
  const bool matches = response.text().starts_with(literal);
  if (matches) response.cursor_ = literal.size();
  return matches;
}

bool IsOk(ResponseLine& response) { return StartsWith(response, u"OK"); }
bool IsError(ResponseLine& response) { return StartsWith(response, u"ERROR"); }
bool IsRefused(ResponseLine& response) { return IsError(response) || StartsWith(response, u"+CMS ERROR:"); }

std::u16string_view Field(const ResponseLine& response, std::size_t n) {
  constexpr auto npos = std::u16string_view::npos;
  std::u16string_view text = response.rest();
  const auto drop = [&text](std::size_t count) { text.remove_prefix(std::min(count, text.size())); };

  drop(text.find_first_not_of(u' '));
  for (; n > 0; --n) {
    std::size_t skip_from = 0;
    if (text.starts_with(response.open_quote_)) skip_from = text.find(response.close_quote_, 1);
    const std::size_t separator = skip_from == npos ? npos : text.find(response.separator_, skip_from);
    if (separator == npos) return {};
    drop(separator + 1);
  }
  if (text.starts_with(response.open_quote_)) {
    text.remove_prefix(1);
    return text.substr(0, text.find(response.close_quote_));
  }
  // A field holds at least its first character, even when that is the separator.
  return text.substr(0, text.find(response.separator_, 1));
}

std::u16string_view RangeBound(std::u16string_view text, bool upper) {
  constexpr auto npos = std::u16string_view::npos;
  const std::size_t open = text.find(u'(');
  const std::size_t hyphen = open == npos ? npos : text.find(u'-', open + 1);
  const std::size_t close = hyphen == npos ? npos : text.find(u')', hyphen + 1);
  if (close == npos) return {};
  return upper ? text.substr(hyphen + 1, close - hyphen - 1) : text.substr(open + 1, hyphen - open - 1);
}

}  // namespace celldesk
