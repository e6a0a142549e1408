// The help page is complete: what the menus offer and the boxes say stands in it.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "support/paths.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

void ReplaceAll(std::string& text, std::string_view what, std::string_view by) {
  for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
}

/// One blank between words, none at the ends.
std::string Joined(const std::string& text) {
  std::istringstream words(text);
  std::string result, word;
  while (words >> word) result += (result.empty() ? "" : " ") + word;
  return result;
}

/// The page as a reader sees it, without its marks.
std::string HelpText() {
  std::ifstream file(SourceFolder() + "/src/ui/resources/help/CellDesk.htm");
  std::string text(std::istreambuf_iterator<char>(file), {});
  for (std::size_t open = text.find('<'); open != text.npos; open = text.find('<', open)) {
    const std::size_t close = text.find('>', open);
    text.erase(open, close == text.npos ? text.npos : close - open + 1);
  }
  return Joined(text);
}

/// A text of the program as the page writes it: "…" for what is filled in.
std::string AsInHelp(const std::u16string& text) {
  std::string result = ToUtf8(text);
  for (const char* const value : {"%s", "%i"}) ReplaceAll(result, value, "\u2026");
  ReplaceAll(result, "\\r", " ");
  return Joined(result);
}

TEST(HelpPage, NamesEveryCommandOfTheMenus) {
  const std::string help = HelpText();
  int commands = 0;
  bool offered = false;
  ForEachLine(FindResource("menus.txt"), [&](std::string_view line) {
    const std::string word(TakeWord(line));
    // The filter menu belongs to no folder yet.
    if (word == "menu") offered = NumberOf(line) != 195;
    if (!offered || NumberOf(word) == 0) return;
    std::string name(line);
    ReplaceAll(name, "&", "");
    ReplaceAll(name, "...", "");
    EXPECT_NE(help.find(name), help.npos) << name;
    ++commands;
  });
  EXPECT_GT(commands, 40);
}

TEST(HelpPage, ExplainsEveryBox) {
  const std::string help = HelpText();
  for (const int number : {109, 110, 111, 112, 113, 114, 115, 116, 117, 118, 119, 120, 127, 133,
                           138, 139, 144, 145, 147, 150, 151, 163, 180, 311, 312, 313, 342, 347,
                           352, 353, 354, 356, 357, 358, 359, 360, 361, 362, 363, 364, 365, 366}) {
    const std::string text = AsInHelp(LoadString(number));
    ASSERT_FALSE(text.empty()) << number;
    EXPECT_NE(help.find(text), help.npos) << number << ": " << text;
  }
}

}  // namespace
}  // namespace celldesk
