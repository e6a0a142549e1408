#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/object.h"

namespace celldesk {

/// One line from the phone with the cursor that field parsing starts at.
class ResponseLine : public Object {
 public:
  /// Fields are quoted by `open_quote` ... `close_quote` and separated by `separator`.
  explicit ResponseLine(char16_t open_quote = u'"', char16_t close_quote = u'"', char16_t separator = u',')
      : open_quote_(open_quote), close_quote_(close_quote), separator_(separator) {}

  /// The line without its carriage return; empty before the first line and after Clear.
  std::u16string_view text() const { return text_; }
  /// What follows the cursor.
  std::u16string_view rest() const { return std::u16string_view(text_).substr(cursor_); }

  /// Takes `text` over, the cursor at its start.
  void Take(std::u16string&& text);
  void Clear();
  /// Drops the line feeds at the start: what is left of a line end that two reads of the port cut in half.
  void DropLineFeeds();

 private:
  friend bool StartsWith(ResponseLine& response, std::u16string_view literal);
  friend std::u16string_view Field(const ResponseLine& response, std::size_t n);

  std::u16string text_;
  std::size_t cursor_ = 0;
  char16_t open_quote_;
  char16_t close_quote_;
  char16_t separator_;
};

/// True when the line (from its first character) begins with `literal`, exactly; the cursor then stands after
/// it.
bool StartsWith(ResponseLine& response, std::u16string_view literal);
/// Prefix tests for the final results "OK" and "ERROR".
bool IsOk(ResponseLine& response);
bool IsError(ResponseLine& response);
/// "ERROR" or "+CMS ERROR:".
bool IsRefused(ResponseLine& response);

/// The n-th field (from 0) after the cursor, without its quotes; empty beyond the last one. Borrowed from the
/// line's text. Blanks are skipped before field 0 only.
std::u16string_view Field(const ResponseLine& response, std::size_t n);

/// From "(lower-upper)" the text of one bound; empty when one of the three characters is missing.
std::u16string_view RangeBound(std::u16string_view text, bool upper);

}  // namespace celldesk
