#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace celldesk {

/// The bytes of a compiled-in file by its name ("menus.txt", "icons/new.svg"); empty when there is none. They
/// live as long as the program.
std::string_view FindResource(std::string_view name);

/// The string resource of this number; empty when there is none.
std::u16string LoadString(int number);

/// Calls `line` for every line of a text resource that is neither blank nor a comment ("#"), without its end.
void ForEachLine(std::string_view text, const std::function<void(std::string_view line)>& line);

/// Cuts the first word off `line` (up to blanks, which are cut too) and returns it; empty at the line's end.
std::string_view TakeWord(std::string_view& line);

/// The decimal number at the start of `text`; 0 when there is none.
int NumberOf(std::string_view text);

}  // namespace celldesk
