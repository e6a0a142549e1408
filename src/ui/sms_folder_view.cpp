#include "ui/sms_folder_view.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "config/settings_store.h"
#include "link/at_engine.h"
#include "pdu/address.h"
#include "ui/commands.h"
#include "ui/framework/menu_state.h"
#include "ui/questions.h"
#include "ui/resources/resources.h"
#include "ui/sms_editor.h"
#include "ui/sms_exchange.h"
#include "ui/sms_viewer.h"

namespace celldesk {
namespace {

constexpr std::array kInboxCommands = {
    command::kOpen,     command::kReply, command::kForward, command::kDelete, 0, command::kShowNames, 0,
    command::kLoadData, command::kUpload};
constexpr std::array kOutboxCommands = {command::kOpen,     command::kDelete,    0,
                                        command::kNew,      command::kShowNames, 0,
                                        command::kLoadData, command::kUpload};
constexpr FolderTraits kInbox{186,
                              text::kInboxToolTips,
                              text::kInboxColumns,
                              SettingsStore::kInboxColumns,
                              kInboxCommands,
                              SmsColumns::kNumber};
constexpr FolderTraits kOutbox{196,
                               text::kOutboxToolTips,
                               text::kOutboxColumns,
                               SettingsStore::kOutboxColumns,
                               kOutboxCommands,
                               SmsColumns::kNumber};
constexpr int kOpenedImage = 0, kNotOpenedImage = 1;
constexpr std::chrono::milliseconds kBeforeDownload{500};

}  // namespace

SmsFolderView::SmsFolderView(FrameServices& frame, const ProgramServices& services, SmsFolder folder,
                             std::u16string_view title)
    : FolderView(frame, services, folder == SmsFolder::kInbox ? kInbox : kOutbox, title),
      folder_(folder),
      columns_(folder, frame.address_books(), services.locale) {}

SmsMessage& SmsFolderView::MessageAt(int row) {
  return messages().At(static_cast<int>(list().RecordAt(row)));
}

// A row may outlive its record for a moment: while the model is emptied.
const SmsMessage* SmsFolderView::MessageOf(std::size_t record) const {
  const int position = static_cast<int>(record);
  return position < messages().count() ? &messages().At(position) : nullptr;
}

bool SmsFolderView::OnInitDialog(int focus, LongParameter parameter) {
  FolderView::OnInitDialog(focus, parameter);
  list().SetImages({"message", "message_unread"}, SmsColumns::kNumber);
  list().FitColumn(SmsColumns::kDate);
  return true;
}

void SmsFolderView::OnCommand(int command, LongParameter /*parameter*/) {
  switch (command) {
    case command::kOk:
    case command::kOpen:
      Open();
      break;
    case command::kNew:
    case command::kReply:
    case command::kForward:
      Answer(command);
      break;
    case command::kDelete:
      DeleteSelected(frame().window());
      break;
    case command::kDeleteAll:
      DeleteAll();
      break;
    case command::kImport:
      ImportMessages(frame().window(), services().files, *this);
      break;
    case command::kExport:
      ExportMessages(frame().window(), services().files, *this);
      break;
    case command::kLoadData:
      LoadData();
      break;
    case command::kUpload:
      Upload();
      break;
    case command::kShowNames:
      ShowNames();
      break;
    default:
      break;
  }
  frame().RefreshLater();
}

void SmsFolderView::OnInitMenuPopup(MenuState& menu, int index) {
  FolderView::OnInitMenuPopup(menu, index);
  menu.Check(command::kShowNames, names_);
}

bool SmsFolderView::IsCommandDisabled(int command, std::size_t selection_count) {
  switch (command) {
    case command::kOpen:
    case command::kDelete:
      return selection_count == 0;
    case command::kReply:
      return !is_inbox() || selection_count != 1;
    case command::kForward:
      return is_inbox() ? selection_count != 1 : selection_count == 0;
    case command::kNew:
    case command::kDeleteAll:
    case command::kShowNames:
    case command::kImport:
    case command::kExport:
    case command::kLoadData:
    case command::kUpload:
      return false;
    default:
      return true;
  }
}

// The buttons only ask whether anything is selected.
bool SmsFolderView::IsButtonDisabled(int command, std::size_t selection_count) {
  const bool asks = command == command::kDelete || command == command::kReply || command == command::kForward;
  return asks ? selection_count == 0 : IsCommandDisabled(command, selection_count);
}

void SmsFolderView::OnShowPage() {
  if (!filled_) Fill();
  FolderView::OnShowPage();
}

void SmsFolderView::Fill() {
  std::vector<std::uint32_t> records;
  for (int position = 0; position < messages().count(); ++position) {
    if (BelongsTo(folder_, messages().At(position))) records.push_back(static_cast<std::uint32_t>(position));
  }
  list().SetRows(records);
  filled_ = true;
}

void SmsFolderView::ForgetRows() {
  filled_ = false;
  if (IsAttached()) list().Clear();
}

int SmsFolderView::Compare(std::size_t record1, std::size_t record2) {
  const SmsMessage* left = MessageOf(record1);
  const SmsMessage* right = MessageOf(record2);
  if (left == nullptr || right == nullptr) return 0;
  return columns_.Compare(*left, *right, list().sort_column(), names_);
}

bool SmsFolderView::SortsLast(std::size_t record) {
  const SmsMessage* message = MessageOf(record);
  return message == nullptr || columns_.SortsLast(*message, list().sort_column());
}

std::vector<std::uint64_t> SmsFolderView::SortKeys(std::span<const std::uint32_t> records, bool descending) {
  std::vector<const SmsMessage*> sorted(records.size());
  std::transform(records.begin(), records.end(), sorted.begin(),
                 [this](std::uint32_t record) { return MessageOf(record); });
  return columns_.SortKeys(sorted, list().sort_column(), names_, descending);
}

int SmsFolderView::AddItem(std::size_t record) {
  const SmsMessage* message = MessageOf(record);
  if (message == nullptr || !BelongsTo(folder_, *message)) return -1;
  return list().Shows(record) ? list().RowOf(record) : list().AddRow(record);
}

std::u16string_view SmsFolderView::ColumnText(std::size_t record, int column, std::u16string& buffer) {
  const SmsMessage* message = MessageOf(record);
  return message == nullptr ? std::u16string_view() : columns_.Text(*message, column, names_, buffer);
}

FontRole SmsFolderView::ItemFont(std::size_t record) {
  const SmsMessage* message = MessageOf(record);
  return message == nullptr ? FontRole::kNormal : FontFor(*message);
}

int SmsFolderView::ItemImage(std::size_t record) {
  const SmsMessage* message = MessageOf(record);
  if (message == nullptr) return -1;
  return (message->flags & kMessageNotOpened) != 0 ? kNotOpenedImage : kOpenedImage;
}

std::u16string SmsFolderView::EmptyText() const {
  if (!frame().IsConnected()) return FolderView::EmptyText();
  if (!loaded_) return LoadString(text::kEmptyLoadMessages);
  return LoadString(is_inbox() ? text::kEmptyInbox : text::kEmptyOutbox);
}

int SmsFolderView::FirstSelected() {
  if (!IsAttached()) return -1;
  const std::vector<int> rows = list().SelectedRows();
  return rows.empty() ? -1 : rows.front();
}

void SmsFolderView::Open() {
  const int row = FirstSelected();
  if (row < 0) return;
  if (!is_inbox()) {
    SmsEditor(*this, row).RunModal(&frame().window());
    return;
  }
  const int end = SmsViewer(*this, row).RunModal(&frame().window());
  if (end == command::kReply || end == command::kForward) Answer(end);
}

// Without room in the phone a message can still be sent.
void SmsFolderView::Answer(int command) {
  if (!sms().HasRoom()) Tell(frame().window(), LoadString(text::kNoSpace), BoxIcon::kStop);
  SmsDraft draft;
  const int row = FirstSelected();
  if (command != command::kNew && row >= 0) {
    const SmsMessage& message = MessageAt(row);
    draft.text = message.text;
    if (command == command::kReply && is_inbox()) draft.number = NumberFor(folder_, message);
    draft.name = address_books().NameOf(draft.number);
  }
  Compose(draft);
}

void SmsFolderView::Compose(const SmsDraft& draft) {
  SmsEditor(*this, draft).RunModal(&frame().window());
  frame().RefreshLater();
}

void SmsFolderView::ShowNewMessage(std::size_t record) {
  for (SmsFolderView* folder : {this, sibling_}) {
    if (!folder->IsAttached()) continue;
    const int row = folder->AddItem(record);
    if (row < 0) continue;
    folder->list().ClearSelection();
    folder->list().Select(row, true);
    folder->list().SetFocusedRow(row);
  }
}

bool SmsFolderView::MayRemoveNew(const std::vector<int>& rows, Window& owner) {
  std::uint32_t flags = 0;
  for (const int row : rows) flags |= MessageAt(row).flags;
  if ((flags & kMessageNew) == 0) return true;
  return Ask(owner, Format(LoadString(text::kDeleteNew), {static_cast<int>(rows.size())}),
             BoxIcon::kQuestion);
}

bool SmsFolderView::DeleteSelected(Window& owner) {
  const std::vector<int> rows = list().SelectedRows();
  if (!MayRemoveNew(rows, owner)) return false;
  frame().SaveCopies();
  int removed = 0;
  for (const int row : rows) removed += Mark(row - removed, true);
  list().Redraw(-1);
  return true;
}

void SmsFolderView::DeleteAll() {
  if (Ask(frame().window(), LoadString(text::kDeleteAllItems), BoxIcon::kQuestion)) {
    frame().SaveCopies();
    for (int row = 0; row < list().RowCount();) row += 1 - Mark(row, false);
  }
  list().Redraw(-1);
}

// The number of rows that went: a new message is in no phone, so there is nothing to mark.
int SmsFolderView::Mark(int row, bool toggle) {
  SmsMessage& message = MessageAt(row);
  message.flags = toggle ? message.flags ^ kMessageToDelete : message.flags | kMessageToDelete;
  message.flags |= kMessageChanged;
  if ((message.flags & kMessageNew) == 0) return 0;
  const int position = static_cast<int>(list().RecordAt(row));
  list().RemoveRow(row);
  messages().Remove(position);
  return 1;
}

void SmsFolderView::LoadData() { LoadData(services().engine.missed_answers()); }

// `missed_before`: of the answers, when the command began.
void SmsFolderView::LoadData(int missed_before) {
  if (!frame().IsConnected()) return;
  if (messages().IsChanged() && !Ask(frame().window(), LoadString(text::kLoadMessages), BoxIcon::kQuestion)) {
    return;
  }
  frame().SaveCopies();
  Status status = S_OK;
  {
    progress_text_ = text::kReading;
    progress_ = 0;
    const PhoneProcedure procedure(frame(), Format(LoadString(progress_text_), {title(), progress_}));
    ForgetRows();
    sibling_->ForgetRows();
    messages().Clear();
    services().engine.waiter().Pause(kBeforeDownload);
    status = sms().ListAll(this);
    if (!Failed(status)) filled_ = loaded_ = sibling_->loaded_ = true;
    lacks_rows_ = Failed(status) || sms().read_memories().empty() || !sms().all_pdus_came() ||
                  services().engine.missed_answers() != missed_before;
    sibling_->lacks_rows_ = lacks_rows_;
    for (SmsFolderView* folder : {this, sibling_}) {
      if (folder->IsAttached()) folder->list().SortAgain();
    }
  }
  list().SetEmptyText(EmptyText());
  if (Failed(status)) TellCommunicationError(frame().window(), services().engine);
}

void SmsFolderView::Upload() {
  if (!frame().IsConnected()) return;
  frame().SaveCopies();
  frame().window().UpdateNow();
  const int missed_before = services().engine.missed_answers();
  Status status = S_OK;
  {
    progress_text_ = text::kUploadingCount;
    progress_ = 0;
    const PhoneProcedure procedure(frame(), Format(LoadString(text::kUploading), {title()}));
    sms().SetProgress([this](SmsMessage& message, int) { return AskAboutSending(message); }, this);
    status = sms().UploadAll();
    sms().SetProgress({}, nullptr);
  }
  if (Failed(status)) {
    TellCommunicationError(frame().window(), services().engine);
  } else {
    LoadData(missed_before);
  }
}

UploadAnswer SmsFolderView::AskAboutSending(const SmsMessage& message) {
  const std::u16string number = AddressForDisplay(message.submit.number, message.submit.toa);
  const std::u16string question =
      Format(LoadString(text::kSendError), {message.text, number, LastErrorText(services().engine)});
  return static_cast<UploadAnswer>(ShowMessageBox(
      &frame().window(), {question, {}, BoxButtons::kYesNoCancel, BoxIcon::kInformation, false}));
}

void SmsFolderView::ShowNames() {
  names_ = !names_;
  list().Redraw(-1);
}

// Both folders are fed: the user may look at the other one meanwhile.
void SmsFolderView::RowRead(int position) {
  for (SmsFolderView* folder : {this, sibling_}) {
    if (folder == this || folder->filled_) folder->Follow(static_cast<std::size_t>(position));
  }
  ++progress_;
  if (frame().IsBusy()) frame().ShowStatus(Format(LoadString(progress_text_), {title(), progress_}));
}

// The row follows what became of its record.
void SmsFolderView::Follow(std::size_t record) {
  if (!list().Shows(record)) {
    AddItem(record);
    return;
  }
  const SmsMessage* message = MessageOf(record);
  const int row = list().RowOf(record);
  if (message != nullptr && BelongsTo(folder_, *message)) {
    list().Redraw(row);
  } else {
    list().RemoveRow(row);
  }
}

void SmsFolderView::Repaint() { list().UpdateNow(); }

}  // namespace celldesk
