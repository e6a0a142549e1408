#include "ui/main_frame.h"

#include <algorithm>

#include "link/at_engine.h"
#include "platform/shell.h"
#include "services/phonebook_transfer.h"
#include "services/sms_service.h"
#include "ui/commands.h"
#include "ui/framework/application.h"
#include "ui/framework/token_list.h"
#include "ui/questions.h"
#include "ui/resources/resources.h"
#include "ui/settings_dialog.h"

namespace celldesk {
namespace {

constexpr int kAboutTemplate = 213;
constexpr std::u16string_view kHelpTopic = u"file:CellDesk.htm#main_contents";
constexpr std::u16string_view kSystemFontPath = u"SYSTEM\\GDI\\SYSFNT";

constexpr std::array kFrameCommands = {command::kConnect,  command::kDisconnect, command::kConnection,
                                       command::kLoadData, command::kUpload,     command::kSettings,
                                       command::kAbout,    command::kExit};
constexpr std::array kFolderButtons = {command::kNew, command::kDelete, command::kReply, command::kForward};

// While a phone procedure runs only what starts none, and touches no data, goes on.
constexpr std::array kCommandsWhileBusy = {command::kHelp, command::kAbout};

template <typename Commands>
bool Contains(const Commands& commands, int command) {
  return std::find(commands.begin(), commands.end(), command) != commands.end();
}

}  // namespace

MainFrame::MainFrame(const ProgramServices& services) : services_(services), copies_(services) {}

MainFrame::~MainFrame() {
  Application* application = Application::Get();
  if (application->main_frame() == this) application->set_main_frame(nullptr);
  pages_.reset();
}

bool MainFrame::OnCreate(LongParameter /*parameter*/) {
  Application::Get()->set_main_frame(this);
  SetIcon("app");
  if (!MakeFonts()) return false;
  settings_ = SettingsStore(services_.registry).Load();
  last_port_ = settings_.port;
  HandOverSettings();
  MakeFolders();
  Refresh();
  return true;
}

bool MainFrame::MakeFonts() {
  SettingsKey key(services_.registry);
  static_cast<void>(key.Open(RegistryRoot::kLocalMachine, kSystemFontPath));
  const std::u16string face = key.Value(u"Nm").GetString();
  return fonts_.Create(face, static_cast<int>(key.Value(u"Ht").GetNumber(0)));
}

void MainFrame::MakeFolders() {
  const std::vector<std::u16string> labels = ParseTokens(LoadString(text::kFolders));
  const BookTraits sim{u"SM", true, text::kSimMemory};
  const BookTraits phone{u"ME", false, text::kPhoneMemory};
  sim_ = std::make_unique<AddressBookView>(*this, services_, sim, labels[0]);
  phone_ = std::make_unique<AddressBookView>(*this, services_, phone, labels[1]);
  sim_->SetPartner(*phone_);
  phone_->SetPartner(*sim_);
  books_ = std::make_unique<AddressBooks>(sim_->book(), phone_->book());
  inbox_ = std::make_unique<SmsFolderView>(*this, services_, SmsFolder::kInbox, labels[2]);
  outbox_ = std::make_unique<SmsFolderView>(*this, services_, SmsFolder::kOutbox, labels[3]);
  inbox_->SetSibling(*outbox_);
  outbox_->SetSibling(*inbox_);
  for (const AddressBookView* view : {sim_.get(), phone_.get()}) copies_.AddBook(*view);
  for (const SmsFolderView* view : {inbox_.get(), outbox_.get()}) copies_.AddMessages(*view);
  pages_ =
      std::make_unique<PageHost>(*this, kTabs, PageHostStyle{.icon_list = false, .select_first_page = true});
  pages_->AddPage(labels[0], "address_sim", *sim_);
  pages_->AddPage(labels[1], "address_mt", *phone_);
  pages_->AddPage(labels[2], "inbox", *inbox_);
  pages_->AddPage(labels[3], "outbox", *outbox_);
  pages_->Start();
}

FolderView& MainFrame::current_folder() { return static_cast<FolderView&>(*pages_->CurrentPage()); }

void MainFrame::OnCommand(int command, LongParameter parameter) {
  if (IsBusy() && !Contains(kCommandsWhileBusy, command)) {
    if (command == command::kExit && !exit_pending_) {
      exit_pending_ = true;
      ShowStatus(StatusText());
    }
    return;
  }
  notice_.clear();
  RunCommand(command, parameter);
  RefreshLater();
  // A close request that came meanwhile waits for the whole command, its boxes included.
  if (exit_pending_ && !IsBusy()) {
    exit_pending_ = false;
    if (IsAttached()) Exit();
  }
}

void MainFrame::RunCommand(int command, LongParameter parameter) {
  switch (command) {
    case command::kHelp:
      ShowHelp();
      return;
    case command::kExit:
      Exit();
      return;
    case command::kConnect:
      Connect();
      return;
    case command::kDisconnect:
      Disconnect();
      return;
    case command::kConnection:
      ToggleConnection();
      return;
    case command::kSettings:
      EditSettings();
      return;
    case command::kAbout:
      Dialog(kAboutTemplate).RunModal(this);
      return;
    default:
      break;
  }
  if (Window* view = CurrentView())
    view->Dispatch(Message::kCommand, static_cast<WordParameter>(command), parameter);
}

Window* MainFrame::CurrentView() {
  Window* view = Application::Get()->current_view();
  return view == this ? nullptr : view;
}

MessageResult MainFrame::OnNotify(int control_id, const Notification& notification) {
  if (control_id != kTabs || notification.code != NotifyCode::kPageChanged) return 0;
  FolderView& folder = current_folder();
  Application::Get()->set_current_view(&folder);
  Surface().SetMenu(folder.menu());
  Surface().SetCommandBar(folder.tool_tips());
  Refresh();
  return 0;
}

void MainFrame::OnInitMenuPopup(MenuState& menu, int index) {
  current_folder().Dispatch(Message::kInitMenuPopup, reinterpret_cast<WordParameter>(&menu), index);
  for (const int command : kFrameCommands) menu.Enable(command, IsCommandEnabled(command));
  if (!IsBusy()) return;
  const MenuState prepared = menu;
  for (const auto& [command, item] : prepared.items()) {
    if (!Contains(kCommandsWhileBusy, command)) menu.Enable(command, false);
  }
}

bool MainFrame::IsCommandEnabled(int command) {
  if (IsBusy()) return Contains(kCommandsWhileBusy, command);
  FolderView& folder = current_folder();
  switch (command) {
    case command::kConnect:
      return !IsConnected();
    case command::kDisconnect:
      return IsConnected();
    case command::kLoadData:
    case command::kUpload:
      return IsConnected() && !folder.IsCommandDisabled(command, folder.list().SelectedCount());
    case command::kConnection:
    case command::kSettings:
    case command::kAbout:
    case command::kExit:
      return true;
    default:
      return !folder.IsCommandDisabled(command, folder.list().SelectedCount());
  }
}

MessageResult MainFrame::WindowProc(Message message, WordParameter word, LongParameter parameter) {
  switch (message) {
    case Message::kClose:
      OnCommand(command::kExit, 0);
      return 0;
    case Message::kHelp:
      OnCommand(command::kHelp, 0);
      return 0;
    case Message::kActivate:
      if (Window* view = CurrentView()) view->Dispatch(message, word, parameter);
      return 0;
    case Message::kShowYourself:
      BringToFront();
      return 0;
    case Message::kDestroy:
      Application::Get()->PostQuit(0);
      return 0;
    default:
      return FrameWindow::WindowProc(message, word, parameter);
  }
}

void MainFrame::Refresh() {
  if (!IsAttached() || pages_ == nullptr || pages_->CurrentPage() == nullptr) return;
  refresh_due_ = false;
  for (const int command : kFrameCommands) Surface().EnableButton(command, IsCommandEnabled(command));
  const std::size_t selected = current_folder().list().SelectedCount();
  for (const int command : kFolderButtons)
    Surface().EnableButton(command, !IsBusy() && !current_folder().IsButtonDisabled(command, selected));
  Surface().PressButton(command::kConnection, IsConnected());
  if (!IsBusy()) SetStatus(IdleStatus());
  ShowCounts();
}

void MainFrame::ShowCounts() {
  ListView& list = current_folder().list();
  const int rows = list.RowCount();
  const int selected = static_cast<int>(list.SelectedCount());
  std::u16string counts;
  if (rows == 1) {
    counts =
        selected > 0 ? Format(LoadString(text::kOneItemSelected), {selected}) : LoadString(text::kOneItem);
  } else {
    counts = selected > 0 ? Format(LoadString(text::kItemsSelected), {rows, selected})
                          : Format(LoadString(text::kItems), {rows});
  }
  SetStatusRight(current_folder().MayLackRows() ? Format(LoadString(text::kMayLackRows), {counts}) : counts);
}

std::u16string MainFrame::IdleStatus() {
  if (!notice_.empty()) return notice_;
  std::u16string hint = current_folder().Hint();
  if (!hint.empty()) return hint;
  return IsConnected() ? Format(LoadString(text::kConnectedTo), {services_.link.port_name()})
                       : LoadString(text::kNotConnected);
}

void MainFrame::ShowStatus(std::u16string_view text) {
  SetStatus(exit_pending_ ? Format(LoadString(text::kClosingLater), {text}) : std::u16string(text));
}

void MainFrame::RefreshIfDue() {
  if (refresh_due_) Refresh();
}

void MainFrame::BeginProcedure(std::u16string_view status) {
  ++busy_;
  SetStatus(status);
  Refresh();
  Application::Get()->ShowWaitCursor(true);
}

void MainFrame::EndProcedure() {
  --busy_;
  Application::Get()->ShowWaitCursor(false);
  Refresh();
}

void MainFrame::SaveCopies() {
  copies_.Save();
  if (std::u16string notice = copies_.TakeNotice(); !notice.empty()) notice_ = std::move(notice);
}

bool MainFrame::IsConnected() const { return services_.link.IsOpen(); }

bool MainFrame::CheckCentre() {
  if (!Failed(services_.sms.SetCentre(settings_.centre))) return true;
  Tell(*this, LoadString(text::kBadCentre), BoxIcon::kStop);
  return false;
}

bool MainFrame::OpenPort() {
  services_.link.set_port_name(settings_.port);
  if (!Failed(services_.link.Open())) return true;
  if (services_.link.IsOpen()) static_cast<void>(services_.link.Close());
  return false;
}

void MainFrame::HandOverSettings() {
  services_.sms.SetOptions(settings_.delivery_report, settings_.reply_path, settings_.use_adapter,
                           static_cast<std::uint8_t>(settings_.validity));
}

Status MainFrame::Detect() {
  Status status = services_.engine.DetectPhone();
  if (Failed(status)) return status;
  status = QueryPhonebook(services_.engine, sim_->book());
  if (Failed(status)) return status;
  status = QueryPhonebook(services_.engine, phone_->book());
  if (Failed(status) && status != E_NOTIMPL) return status;
  return services_.sms.QueryCapabilities();
}

void MainFrame::Connect() {
  if (IsConnected()) return;
  last_port_ = settings_.port;
  if (!CheckCentre()) return;
  bool opened = false;
  Status status = S_OK;
  {
    const PhoneProcedure procedure(*this, Format(LoadString(text::kConnecting), {settings_.port}));
    opened = OpenPort();
    if (opened) {
      HandOverSettings();
      status = Detect();
      if (Failed(status)) static_cast<void>(services_.link.Close());
    }
  }
  current_folder().Dispatch(Message::kActivate, 1, 0);
  if (!opened) Tell(*this, Format(LoadString(text::kCannotOpenPort), {settings_.port}), BoxIcon::kStop);
  if (Failed(status)) Tell(*this, LoadString(text::kNoPhone), BoxIcon::kStop);
}

void MainFrame::ClosePort() {
  const PhoneProcedure procedure(*this, LoadString(text::kDisconnecting));
  static_cast<void>(services_.link.Close());
}

void MainFrame::Disconnect() {
  if (!IsConnected() || !MayLeave(false)) return;
  ClosePort();
  current_folder().Dispatch(Message::kActivate, 1, 0);
}

void MainFrame::ToggleConnection() {
  if (IsConnected()) {
    Disconnect();
  } else {
    Connect();
  }
}

// What the dialog saved holds even where the registry did not take it.
void MainFrame::EditSettings() {
  settings_ = SettingsStore(services_.registry).Load();
  SettingsDialog dialog(services_);
  if (dialog.RunModal(this) != kIdOk) return;
  settings_ = dialog.settings();
  if (!CheckCentre()) return;
  HandOverSettings();
  if (settings_.port == last_port_) return;
  last_port_ = settings_.port;
  if (!IsConnected()) return;
  ClosePort();
  Connect();
}

bool MainFrame::MayLeaveBook(const AddressBookView& view) {
  return !view.HasUnsavedChanges() ||
         Ask(*this, Format(LoadString(text::kUnsavedBook), {view.DisplayName()}), BoxIcon::kQuestion);
}

bool MainFrame::HasUnsavedChanges() const {
  return sim_->HasUnsavedChanges() || phone_->HasUnsavedChanges() || inbox_->HasUnsavedChanges() ||
         outbox_->HasUnsavedChanges();
}

// Disconnect asks about unsaved changes too, in words that speak of exiting.
bool MainFrame::MayLeave(bool exit) {
  if (!MayLeaveBook(*sim_) || !MayLeaveBook(*phone_)) return false;
  const bool messages_changed = inbox_->HasUnsavedChanges() || outbox_->HasUnsavedChanges();
  if (messages_changed && !Ask(*this, LoadString(text::kChangedMessages), BoxIcon::kQuestion)) return false;
  if (!exit || !IsConnected()) return true;
  return Ask(*this, LoadString(text::kConnectedExit), BoxIcon::kQuestion);
}

void MainFrame::Exit() {
  if (!MayLeave(true)) return;
  if (HasUnsavedChanges()) SaveCopies();
  current_folder().OnLeavePage();
  if (IsConnected()) ClosePort();
  Destroy();
}

void MainFrame::ComposeMessage(std::u16string_view number, std::u16string_view name) {
  outbox_->Compose({std::u16string(number), std::u16string(name), {}});
}

void MainFrame::ShowHelp() {
  if (!services_.shell.OpenHelp(kHelpTopic))
    Tell(*this, LoadString(text::kHelpMissing), BoxIcon::kInformation);
}

}  // namespace celldesk
