// The help page is complete: what the menus offer and the boxes say stands in it.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

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

std::string HelpPage() {
  std::ifstream file(SourceFolder() + "/src/ui/resources/help/CellDesk.htm");
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The page as a reader sees it, without its marks.
std::string HelpText() {
  std::string text = HelpPage();
  for (std::size_t open = text.find('<'); open != text.npos; open = text.find('<', open)) {
    const std::size_t close = text.find('>', open);
    text.erase(open, close == text.npos ? text.npos : close - open + 1);
  }
  return Joined(text);
}

/// A text of the program as the page writes it: "…" for what is filled in.
std::string AsInHelp(const std::u16string& text) {
  std::string result = ToUtf8(text);
  ReplaceAll(result, "%#2x,%s", "%s");
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

/// Texts that are no message: captions, columns, choices, tool tips, units, file types, hints and progress.
/// Any other number of the strings is explained in the help.
bool IsNoMessage(int number) {
  constexpr std::pair<int, int> kRanges[] = {{100, 108}, {121, 123}, {125, 126}, {128, 132}, {134, 136},
                                             {140, 141}, {149, 149}, {152, 161}, {174, 177}, {181, 181},
                                             {301, 310}, {315, 316}, {320, 322}, {330, 334}, {340, 341},
                                             {343, 346}, {350, 351}, {355, 355}, {370, 372}, {400, 400}};
  for (const auto& [first, last] : kRanges) {
    if (number >= first && number <= last) return true;
  }
  return false;
}

TEST(HelpPage, ExplainsEveryMessage) {
  const std::string help = HelpText();
  int messages = 0;
  ForEachLine(FindResource("strings.txt"), [&](std::string_view line) {
    const int number = NumberOf(TakeWord(line));
    if (number == 0 || IsNoMessage(number)) return;
    const std::string text = AsInHelp(LoadString(number));
    EXPECT_NE(help.find(text), help.npos) << number << ": " << text;
    ++messages;
  });
  EXPECT_GE(messages, 55);
}

/// The values of an attribute of the page's marks.
std::vector<std::string> Values(const std::string& page, const std::string& attribute) {
  std::vector<std::string> values;
  const std::string begin = attribute + "=\"";
  for (std::size_t at = page.find(begin); at != page.npos; at = page.find(begin, at)) {
    at += begin.size();
    values.push_back(page.substr(at, page.find('"', at) - at));
  }
  return values;
}

TEST(HelpPage, LeadsToTopicsThatAreThere) {
  const std::string page = HelpPage();
  const std::vector<std::string> topics = Values(page, " id");
  ASSERT_FALSE(topics.empty());
  EXPECT_EQ(topics.front(), "main_contents");
  for (const std::string& link : Values(page, "href")) {
    ASSERT_EQ(link.front(), '#') << link;
    EXPECT_NE(std::find(topics.begin(), topics.end(), link.substr(1)), topics.end()) << link;
  }
}

TEST(HelpPage, ShowsPicturesThatAreThere) {
  const std::vector<std::string> pictures = Values(HelpPage(), "src");
  EXPECT_GE(pictures.size(), 4u);
  for (const std::string& picture : pictures) {
    std::ifstream file(SourceFolder() + "/src/ui/resources/help/" + picture, std::ios::binary);
    char head[4] = {};
    file.read(head, sizeof head);
    EXPECT_EQ(std::string(head, sizeof head), "\x89PNG") << picture;
  }
  EXPECT_EQ(Values(HelpPage(), "alt").size(), pictures.size()) << "for those who do not see them";
}

}  // namespace
}  // namespace celldesk
