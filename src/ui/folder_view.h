#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/frame_services.h"
#include "ui/framework/dialog.h"
#include "ui/program_services.h"

namespace celldesk {

/// What distinguishes a folder: its resources and where its column widths are kept.
struct FolderTraits {
  int menu;
  int tool_tips;
  int columns;
  std::u16string_view widths_value;
  std::span<const int> context_commands;  ///< of the list's own menu; 0 is a separator
  int search_column;                      ///< where typed letters are looked for
};

/// A folder: a page with one list over a local copy of the phone's data.
class FolderView : public Dialog {
 public:
  static constexpr int kListId = 1000;

  FolderView(FrameServices& frame, const ProgramServices& services, const FolderTraits& traits,
             std::u16string_view title);

  int menu() const { return traits_.menu; }
  int tool_tips() const { return traits_.tool_tips; }
  /// The folder's label, as its tab shows it.
  const std::u16string& title() const { return title_; }
  ListView& list() { return List(kListId); }

  /// True when local changes would be lost by leaving.
  virtual bool HasUnsavedChanges() const { return false; }

  /// State of a command bar button; the menu's unless a folder says otherwise.
  virtual bool IsButtonDisabled(int command, std::size_t selection_count) {
    return IsCommandDisabled(command, selection_count);
  }

  bool OnInitDialog(int focus, LongParameter parameter) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  MessageResult WindowProc(Message message, WordParameter word, LongParameter parameter) override;
  void OnInitMenuPopup(MenuState& menu, int index) override;
  void OnShowPage() override;
  bool OnLeavePage() override;
  /// Keeps the frame's command bar and status line up to date.
  bool OnIdle(int count) override;

  /// True when the phone may hold more than the last Load Data read: an answer was missed on the way, or the
  /// phone named nothing that could be read.
  virtual bool MayLackRows() const { return false; }

  /// What the user is to do in the folder's present mode, for the status line; empty in the ordinary one.
  virtual std::u16string Hint() const { return {}; }

 protected:
  FrameServices& frame() { return frame_; }
  const FrameServices& frame() const { return frame_; }
  const ProgramServices& services() const { return services_; }
  /// What the empty list tells.
  virtual std::u16string EmptyText() const;

 private:
  /// Empty when none are stored, or those of another number of columns.
  std::vector<std::uint16_t> StoredWidths();

  FrameServices& frame_;
  ProgramServices services_;
  FolderTraits traits_;
  std::u16string title_;
  std::vector<std::uint16_t> shown_widths_;  // of the columns, when the page was last shown
};

}  // namespace celldesk
