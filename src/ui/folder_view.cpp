#include "ui/folder_view.h"

#include <array>

#include "config/settings_store.h"
#include "ui/commands.h"
#include "ui/framework/menu_state.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kFolderTemplate = 180;

// What a folder's menu may hold; the frame sets the commands of the connection itself.
constexpr std::array kFolderCommands = {
    command::kNew,    command::kOpen,           command::kDelete,         command::kDeleteAll,
    command::kReply,  command::kForward,        command::kSendSms,        command::kShowNames,
    command::kImport, command::kItemAssignment, command::kUploadSelected, command::kExport,
};

}  // namespace

FolderView::FolderView(FrameServices& frame, const ProgramServices& services, const FolderTraits& traits,
                       std::u16string_view title)
    : Dialog(kFolderTemplate), frame_(frame), services_(services), traits_(traits), title_(title) {}

bool FolderView::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  list().BuildColumns(traits_.columns);
  list().SetName(title_);
  list().SetSearchColumn(traits_.search_column);
  list().SetFonts(frame_.fonts());
  list().EnableSorting(true);
  list().SetEmptyText(EmptyText());
  return true;
}

MessageResult FolderView::OnNotify(int /*control_id*/, const Notification& notification) {
  if (notification.code == NotifyCode::kSelectionChanged) frame_.RefreshLater();
  if (notification.code == NotifyCode::kDeleteKey) {
    frame_.window().Dispatch(Message::kCommand, command::kDelete, 0);
  }
  if (notification.code == NotifyCode::kContextMenu) {
    list().ShowContextMenu(frame_.commands(), traits_.context_commands);
  }
  return 0;
}

// A command that a key or a double click gives in the list does not come through the frame: while a phone
// procedure runs it ends here.
MessageResult FolderView::WindowProc(Message message, WordParameter /*word*/, LongParameter /*parameter*/) {
  if (message == Message::kCommand && frame_.IsBusy()) return 1;
  if (message != Message::kActivate) return 0;
  list().SetEmptyText(EmptyText());
  list().SetFocus();
  return 1;
}

void FolderView::OnInitMenuPopup(MenuState& menu, int /*index*/) {
  const std::size_t selected = list().SelectedCount();
  for (const int one : kFolderCommands) menu.Enable(one, !IsCommandDisabled(one, selected));
}

void FolderView::OnShowPage() {
  list().SetWidths(StoredWidths());
  shown_widths_ = list().Widths();
  list().SetEmptyText(EmptyText());
  list().SetFocus();
}

// Widths that nobody changed go over none that are stored: another window may have stored them meanwhile.
bool FolderView::OnLeavePage() {
  const std::vector<std::uint16_t> widths = list().Widths();
  if (widths != shown_widths_ || StoredWidths().empty()) {
    SettingsStore(services_.registry).SaveColumnWidths(traits_.widths_value, widths);
  }
  return true;
}

std::vector<std::uint16_t> FolderView::StoredWidths() {
  const SettingsStore store(services_.registry);
  return store.LoadColumnWidths(traits_.widths_value, static_cast<std::size_t>(list().ColumnCount()));
}

bool FolderView::OnIdle(int /*count*/) {
  frame_.RefreshIfDue();
  return false;
}

std::u16string FolderView::EmptyText() const {
  return LoadString(frame_.IsConnected() ? text::kEmptyLoad : text::kEmptyConnect);
}

}  // namespace celldesk
