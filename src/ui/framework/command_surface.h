#pragma once

#include <memory>

#include "ui/framework/menu_state.h"

namespace celldesk {

class Window;
struct NativeSurface;

/// Menus and the command bar of a window, by number. Each item's command goes to the window's OnCommand;
/// before a menu opens, and before an accelerator acts, the window's OnInitMenuPopup is asked for every
/// pop-up.
class CommandSurface {
 public:
  explicit CommandSurface(Window& owner);
  ~CommandSurface();
  CommandSurface(const CommandSurface&) = delete;
  CommandSurface& operator=(const CommandSurface&) = delete;

  /// Replaces the menu bar by the menu resource of this number.
  void SetMenu(int menu);
  /// Replaces the command bar by the one with this tool-tip list.
  void SetCommandBar(int tool_tips);
  int menu() const { return menu_; }

  /// State of a command bar button.
  void EnableButton(int command, bool enabled);
  void PressButton(int command, bool pressed);

  /// True when the menu or the command bar has this command.
  bool Offers(int command) const;
  /// Asks the owner about every pop-up of the menu bar and returns its answers.
  MenuState QueryState() const;

  NativeSurface* native() const { return native_.get(); }

 private:
  Window& owner_;
  int menu_ = 0;
  int popups_ = 0;
  std::unique_ptr<NativeSurface> native_;
};

}  // namespace celldesk
