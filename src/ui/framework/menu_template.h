#pragma once

#include <string>
#include <vector>

namespace celldesk {

/// A menu item; command 0 is a separator.
struct MenuItem {
  int command = 0;
  std::u16string text;
};

/// A pop-up menu of a menu bar.
struct MenuPopup {
  std::u16string title;
  std::vector<MenuItem> items;
};

/// The menu resource of this number; empty when there is none.
std::vector<MenuPopup> LoadMenu(int number);

/// A key of an accelerator table, as the user reads it ("Ctrl+D"), and its command.
struct Accelerator {
  std::u16string key;
  int command = 0;
};

/// The accelerator table of this number; empty when there is none.
std::vector<Accelerator> LoadAccelerators(int number);

/// A command bar's button with its tool tip; command 0 is a separator.
struct CommandBarItem {
  int command = 0;
  std::u16string tool_tip;
};

/// The command bar whose tool tips are the string resource of this number.
std::vector<CommandBarItem> LoadCommandBar(int tool_tips);

}  // namespace celldesk
