#pragma once

#include <array>
#include <memory>
#include <string>

#include "config/settings_store.h"
#include "ui/address_book_view.h"
#include "ui/address_books.h"
#include "ui/folder_copies.h"
#include "ui/frame_services.h"
#include "ui/framework/frame_window.h"
#include "ui/framework/page_host.h"
#include "ui/program_services.h"
#include "ui/sms_folder_view.h"

namespace celldesk {

/// The main window: tab strip with the four folders, menus and command bar of the current one, and the
/// commands that belong to no folder. Every other command goes to the current view.
class MainFrame : public FrameWindow, public FrameServices {
 public:
  static constexpr int kTabs = 1;

  explicit MainFrame(const ProgramServices& services);
  ~MainFrame() override;

  AddressBookView& sim_view() { return *sim_; }
  AddressBookView& phone_view() { return *phone_; }
  SmsFolderView& inbox() { return *inbox_; }
  SmsFolderView& outbox() { return *outbox_; }
  PageHost& pages() { return *pages_; }
  /// The folder that is shown.
  FolderView& current_folder();
  const Settings& settings() const { return settings_; }

  bool OnCreate(LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  void OnInitMenuPopup(MenuState& menu, int index) override;
  MessageResult WindowProc(Message message, WordParameter word, LongParameter parameter) override;
  /// Command bar and status line follow the state of the folder and the connection.
  void Refresh();

  Window& window() override { return *this; }
  CommandSurface& commands() override { return Surface(); }
  const FontSet& fonts() const override { return fonts_; }
  bool IsConnected() const override;
  void SaveCopies() override;
  void BeginProcedure(std::u16string_view status) override;
  void EndProcedure() override;
  bool IsBusy() const override { return busy_ > 0; }
  void ShowStatus(std::u16string_view text) override;
  void RefreshLater() override { refresh_due_ = true; }
  const AddressBooks& address_books() const override { return *books_; }
  void ComposeMessage(std::u16string_view number, std::u16string_view name) override;
  void RefreshIfDue() override;

 private:
  bool MakeFonts();
  void MakeFolders();
  void RunCommand(int command, LongParameter parameter);
  /// What gets the messages that are not the frame's: the current view, unless that is the frame.
  Window* CurrentView();
  void Connect();
  void Disconnect();
  void ToggleConnection();
  void ClosePort();
  void EditSettings();
  void Exit();
  void ShowHelp();
  bool CheckCentre();
  void HandOverSettings();
  bool OpenPort();
  Status Detect();
  bool HasUnsavedChanges() const;
  bool MayLeave(bool exit);
  bool MayLeaveBook(const AddressBookView& view);
  bool IsCommandEnabled(int command);
  void ShowCounts();
  std::u16string IdleStatus();

  ProgramServices services_;
  FontSet fonts_;
  Settings settings_;
  std::u16string last_port_;
  std::unique_ptr<AddressBookView> sim_;
  std::unique_ptr<AddressBookView> phone_;
  std::unique_ptr<AddressBooks> books_;
  std::unique_ptr<SmsFolderView> inbox_;
  std::unique_ptr<SmsFolderView> outbox_;
  std::unique_ptr<PageHost> pages_;
  FolderCopies copies_;
  std::u16string notice_;  // stands in the status line until the next command
  int busy_ = 0;
  bool exit_pending_ = false;
  bool refresh_due_ = true;
};

}  // namespace celldesk
