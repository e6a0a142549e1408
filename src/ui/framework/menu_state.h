#pragma once

#include <map>

namespace celldesk {

/// State of the menu items that a window prepares before a menu opens: by command number.
class MenuState {
 public:
  struct Item {
    bool enabled = true;
    bool checked = false;
  };

  void Enable(int command, bool enabled) { items_[command].enabled = enabled; }
  void Check(int command, bool checked) { items_[command].checked = checked; }
  bool IsEnabled(int command) const { return Find(command).enabled; }
  bool IsChecked(int command) const { return Find(command).checked; }
  const std::map<int, Item>& items() const { return items_; }

 private:
  Item Find(int command) const {
    const auto found = items_.find(command);
    return found == items_.end() ? Item{} : found->second;
  }

  std::map<int, Item> items_;
};

}  // namespace celldesk
