#include "ui/framework/menu_template.h"

#include "ui/framework/token_list.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

// Calls `line` with the lines that follow "HEADER NUMBER" up to the next line that begins with HEADER.
void ForEachLineOf(std::string_view resource, std::string_view header, int number,
                   const std::function<void(std::string_view line)>& line) {
  bool inside = false;
  ForEachLine(FindResource(resource), [&](std::string_view one) {
    std::string_view rest = one;
    if (one.front() != ' ' && TakeWord(rest) == header) {
      inside = NumberOf(rest) == number;
    } else if (inside) {
      line(one);
    }
  });
}

}  // namespace

std::vector<MenuPopup> LoadMenu(int number) {
  std::vector<MenuPopup> popups;
  ForEachLineOf("menus.txt", "menu", number, [&](std::string_view line) {
    const bool is_title = line.front() != ' ';
    const std::string_view word = TakeWord(line);
    if (is_title) {
      popups.push_back({FromUtf8(line), {}});
    } else if (!popups.empty()) {
      popups.back().items.push_back({NumberOf(word), FromUtf8(line)});
    }
  });
  return popups;
}

std::vector<Accelerator> LoadAccelerators(int number) {
  std::vector<Accelerator> table;
  ForEachLineOf("accelerators.txt", "table", number, [&](std::string_view line) {
    const std::string_view key = TakeWord(line);
    table.push_back({FromUtf8(key), NumberOf(line)});
  });
  return table;
}

std::vector<CommandBarItem> LoadCommandBar(int tool_tips) {
  const std::vector<std::u16string> tips = ParseTokens(LoadString(tool_tips));
  std::vector<CommandBarItem> items;
  ForEachLine(FindResource("command_bars.txt"), [&](std::string_view line) {
    if (NumberOf(TakeWord(line)) != tool_tips) return;
    for (std::size_t i = 0; !line.empty() && i < tips.size(); ++i)
      items.push_back({NumberOf(TakeWord(line)), tips[i]});
  });
  return items;
}

}  // namespace celldesk
