#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace celldesk {

/// One argument of Format: a 32-bit integer or a text (borrowed for the call).
class FormatArgument {
 public:
  FormatArgument(int value) : number_(value) {}                         // NOLINT(google-explicit-constructor)
  FormatArgument(unsigned value) : number_(static_cast<int>(value)) {}  // NOLINT(google-explicit-constructor)
  FormatArgument(std::u16string_view text)
      : is_text_(true), text_(text) {}  // NOLINT(google-explicit-constructor)
  FormatArgument(const std::u16string& text) : FormatArgument(std::u16string_view(text)) {}  // NOLINT
  FormatArgument(const char16_t* text) : FormatArgument(std::u16string_view(text)) {}        // NOLINT

  bool is_text() const { return is_text_; }
  int number() const { return number_; }
  std::u16string_view text() const { return text_; }

 private:
  bool is_text_ = false;
  int number_ = 0;
  std::u16string_view text_;
};

/// Longest result of Format in characters; longer ones are cut there.
inline constexpr std::size_t kFormatLimit = 1024;

/// Formats with the window manager's rules, not the C library's: %s text, %i %d %u %x %X %c, flags '-', '0'
/// and '#' ("0x" before every hexadecimal value, zero included), width, precision, "%%"; any other character
/// after % prints as itself. A missing argument, or one of the wrong kind, prints as empty text or 0.
std::u16string Format(std::u16string_view format, std::initializer_list<FormatArgument> arguments,
                      std::size_t limit = kFormatLimit);

/// `text` without spaces, tabs, line feeds and carriage returns at both ends; other control characters stay.
std::u16string_view Trim(std::u16string_view text);

/// Widens 7-bit text (constants, tables); bytes of 128 and more become U+FFFD.
std::u16string WidenAscii(std::string_view text);

/// UTF-8 to UTF-16 and back, for what the system gives and takes (paths, environment). Malformed input
/// becomes U+FFFD, never an error.
std::u16string FromUtf8(std::string_view text);
std::string ToUtf8(std::u16string_view text);

}  // namespace celldesk
