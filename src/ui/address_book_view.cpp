#include "ui/address_book_view.h"

#include <algorithm>
#include <array>

#include "config/settings_store.h"
#include "data/entry_editing.h"
#include "data/entry_order.h"
#include "ui/address_book_exchange.h"
#include "ui/address_edit_dialog.h"
#include "ui/commands.h"
#include "ui/framework/menu_state.h"
#include "ui/framework/sort_key.h"
#include "ui/questions.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::array kContextCommands = {command::kOpen,
                                         command::kDelete,
                                         command::kSendSms,
                                         0,
                                         command::kNew,
                                         command::kItemAssignment,
                                         0,
                                         command::kLoadData,
                                         command::kUploadSelected};
constexpr FolderTraits kTraits{185,
                               text::kAddressToolTips,
                               text::kAddressColumns,
                               SettingsStore::kAddressColumns,
                               kContextCommands,
                               static_cast<int>(AddressColumn::kName)};
constexpr int kUnchangedImage = 0, kChangedImage = 1;
constexpr int kIdColumn = 0;

// Only the capability query tells that a memory does not exist; a selection refused after it is a failure
// like any other.
Status AfterQuery(Status status) { return status == E_NOTIMPL ? E_FAIL : status; }

}  // namespace

AddressBookView::AddressBookView(FrameServices& frame, const ProgramServices& services,
                                 const BookTraits& traits, std::u16string_view title)
    : FolderView(frame, services, kTraits, title),
      traits_(traits),
      book_(traits.memory, traits.ignore_select_errors),
      assignment_(book_) {}

std::u16string AddressBookView::DisplayName() const { return LoadString(traits_.display_name); }

bool AddressBookView::OnInitDialog(int focus, LongParameter parameter) {
  FolderView::OnInitDialog(focus, parameter);
  list().SetImages({"entry", "entry_changed"});
  list().FitColumn(kIdColumn);
  // What came into the book before its page was made.
  std::vector<std::uint32_t> records;
  for (int position = 0; position < book_.count(); ++position) {
    if (book_.At(position).is_occupied()) records.push_back(static_cast<std::uint32_t>(position));
  }
  list().SetRows(records);
  return true;
}

void AddressBookView::OnCommand(int command, LongParameter /*parameter*/) {
  switch (command) {
    case command::kOk:
    case command::kOpen:
      Edit();
      break;
    case command::kNew:
      New();
      break;
    case command::kDelete:
      Delete();
      break;
    case command::kDeleteAll:
      DeleteAll();
      break;
    case command::kSendSms:
      SendSms();
      break;
    case command::kItemAssignment:
      ToggleItemAssignment();
      break;
    case command::kImport:
      if (!assignment_.active()) AddressBookExchange(frame(), services(), *this, *partner_).Import();
      break;
    case command::kExport:
      if (!assignment_.active()) AddressBookExchange(frame(), services(), *this, *partner_).Export();
      break;
    case command::kLoadData:
      LoadData();
      break;
    case command::kUpload:
      Upload(false);
      break;
    case command::kUploadSelected:
      Upload(true);
      break;
    default:
      break;
  }
  frame().RefreshLater();
}

MessageResult AddressBookView::OnNotify(int control_id, const Notification& notification) {
  if (notification.code == NotifyCode::kClick && assignment_.active()) AssignRow(notification.row);
  return FolderView::OnNotify(control_id, notification);
}

void AddressBookView::OnInitMenuPopup(MenuState& menu, int index) {
  FolderView::OnInitMenuPopup(menu, index);
  menu.Check(command::kItemAssignment, assignment_.active());
}

// Ids are put aside during item assignment: nothing may be written or edited before they are back.
bool AddressBookView::IsCommandDisabled(int command, std::size_t selection_count) {
  switch (command) {
    case command::kItemAssignment:
      return book_.count() == 0;
    case command::kOpen:
    case command::kSendSms:
      return assignment_.active() || list().FocusedRow() < 0;
    case command::kDelete:
      return assignment_.active() || selection_count == 0;
    case command::kUploadSelected:
      return assignment_.active() || selection_count == 0 || !frame().IsConnected();
    default:
      return assignment_.active();
  }
}

int AddressBookView::Compare(std::size_t record1, std::size_t record2) {
  const auto column = static_cast<AddressColumn>(list().sort_column());
  return CompareEntries(book_.At(static_cast<int>(record1)), book_.At(static_cast<int>(record2)), column,
                        false, services().locale);
}

std::vector<std::uint64_t> AddressBookView::SortKeys(std::span<const std::uint32_t> records,
                                                     bool descending) {
  std::vector<const AddressEntry*> entries(records.size());
  std::transform(records.begin(), records.end(), entries.begin(),
                 [this](std::uint32_t record) { return &book_.At(static_cast<int>(record)); });
  const auto column = static_cast<AddressColumn>(list().sort_column());
  return PackedKeys(EntryPlaces(entries, column, services().locale), descending);
}

int AddressBookView::AddItem(std::size_t record) {
  const int position = static_cast<int>(record);
  if (position >= book_.count() || !book_.At(position).is_occupied()) return -1;
  if (list().Shows(record)) return list().RowOf(record);
  return list().AddRow(record);
}

std::u16string_view AddressBookView::ColumnText(std::size_t record, int column, std::u16string& /*buffer*/) {
  if (static_cast<int>(record) >= book_.count()) return {};
  return EntryText(book_.At(static_cast<int>(record)), static_cast<AddressColumn>(column));
}

int AddressBookView::ItemImage(std::size_t record) {
  if (static_cast<int>(record) >= book_.count()) return -1;
  return book_.At(static_cast<int>(record)).is_modified() ? kChangedImage : kUnchangedImage;
}

std::u16string AddressBookView::Hint() const {
  return assignment_.active() ? LoadString(text::kAssignmentHint) : std::u16string();
}

std::u16string AddressBookView::EmptyText() const {
  if (book_.loaded() && frame().IsConnected()) return LoadString(text::kEmptyLoaded);
  return FolderView::EmptyText();
}

std::vector<int> AddressBookView::Positions(const std::vector<int>& rows) {
  std::vector<int> positions;
  for (const int row : rows) positions.push_back(static_cast<int>(list().RecordAt(row)));
  return positions;
}

std::vector<int> AddressBookView::SelectedPositions() {
  return IsAttached() ? Positions(list().SelectedRows()) : std::vector<int>();
}

void AddressBookView::EmptyBook() {
  frame().SaveCopies();
  book_.ClearAll();
  list().Clear();
  lacks_rows_ = false;
}

void AddressBookView::Edit() {
  const int row = list().FocusedRow();
  if (assignment_.active() || row < 0) return;
  const int position = static_cast<int>(list().RecordAt(row));
  EditAt(position, AddressEntry(book_.At(position)), text::kEditItem);
}

void AddressBookView::New() {
  if (book_.count() > book_.memory().Capacity()) frame().SaveCopies();  // what is beyond it is lost
  std::optional<int> position;
  const Status status = PrepareNew(book_, position);
  DropRowsWithoutEntry();
  if (Failed(status)) return ReportFailure(status);
  if (!position) return Tell(frame().window(), LoadString(text::kMemoryFull), BoxIcon::kStop);
  EditAt(*position, NewEntryAt(book_, *position), text::kNewItem);
}

void AddressBookView::EditAt(int position, const AddressEntry& start, int title) {
  const int row = list().Shows(static_cast<std::size_t>(position))
                      ? list().RowOf(static_cast<std::size_t>(position))
                      : -1;
  AddressEditDialog dialog(book_, start, title);
  if (dialog.RunModal(&frame().window()) != kIdOk) return;
  if (ReplacesAnother(book_, position, dialog.entry())) frame().SaveCopies();
  if (const std::optional<int> placed = Place(book_, position, dialog.entry())) ShowAt(row, *placed);
}

// The row follows the entry; a row that showed what was overwritten goes.
void AddressBookView::ShowAt(int row, int position) {
  const auto record = static_cast<std::size_t>(position);
  const int overwritten = list().Shows(record) ? list().RowOf(record) : -1;
  if (row < 0) {
    if (overwritten < 0) AddItem(record);
  } else if (overwritten != row) {
    if (overwritten >= 0) list().RemoveRow(overwritten);
    list().SetRecordAt(overwritten >= 0 && overwritten < row ? row - 1 : row, record);
  }
  const int shown = list().RowOf(record);
  list().ClearSelection();
  list().Select(shown, true);
  list().SetFocusedRow(shown);
  list().Redraw(shown);
}

void AddressBookView::DropRowsWithoutEntry() {
  for (int row = list().RowCount() - 1; row >= 0; --row) {
    const int position = static_cast<int>(list().RecordAt(row));
    if (position >= book_.count()) list().RemoveRow(row);
  }
}

void AddressBookView::SendSms() {
  const int row = list().FocusedRow();
  if (row < 0) return;
  const AddressEntry& entry = book_.At(static_cast<int>(list().RecordAt(row)));
  frame().ComposeMessage(entry.number, entry.name);
}

void AddressBookView::Delete() {
  const std::vector<int> rows = list().SelectedRows();
  if (rows.empty()) return;
  const std::u16string question =
      rows.size() == 1
          ? Format(LoadString(text::kDeleteAddress), {book_.At(Positions(rows).front()).name.view()})
          : Format(LoadString(text::kDeleteItems), {static_cast<int>(rows.size())});
  if (!Ask(frame().window(), question, BoxIcon::kQuestion)) return;
  frame().SaveCopies();
  for (const int position : Positions(rows)) book_.Erase(position);
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) list().RemoveRow(*row);
}

// No keeps the rows on screen, and the entries are emptied all the same.
void AddressBookView::DeleteAll() {
  frame().SaveCopies();
  if (Ask(frame().window(), LoadString(text::kDeleteAllItems), BoxIcon::kQuestion)) list().Clear();
  book_.ClearAll();
  book_.MarkAll(AddressEntry::kModified);
  list().Redraw(-1);
}

Status AddressBookView::Initialise() {
  const Status status = services().engine.DetectPhone();
  return Failed(status) ? status : QueryPhonebook(services().engine, book_);
}

Status AddressBookView::Download() {
  if (const Status status = book_.Resize(book_.memory().Capacity()); Failed(status)) return status;
  list().Reserve(static_cast<std::size_t>(book_.count()));
  book_.ClearAll();
  list().Clear();
  rows_read_ = 0;
  const Status status = AfterQuery(ReadPhonebook(services().engine, book_, this));
  if (!Failed(status)) changed_ = false;
  list().SortAgain();
  return status;
}

void AddressBookView::LoadData() {
  if (!frame().IsConnected()) return;
  if (book_.IsModified() && !Ask(frame().window(), LoadString(text::kBookChanged), BoxIcon::kInformation))
    return;
  frame().SaveCopies();
  frame().window().UpdateNow();
  Status status = S_OK;
  {
    const PhoneProcedure procedure(frame(), Format(LoadString(text::kReading), {title(), 0}));
    const int missed = services().engine.missed_answers();
    status = Initialise();
    if (!Failed(status)) {
      status = Download();
      lacks_rows_ =
          Failed(status) || book_.memory().Capacity() <= 1 || services().engine.missed_answers() != missed;
    }
  }
  list().SetEmptyText(EmptyText());
  ReportFailure(status);
}

void AddressBookView::ReportFailure(Status status) {
  if (!Failed(status)) return;
  if (status == E_NOTIMPL) {
    Tell(frame().window(), Format(LoadString(text::kNotImplemented), {book_.memory().name}), BoxIcon::kStop);
  } else if (status == E_OUTOFMEMORY) {
    ShowMessageBox(&frame().window(), {LoadString(text::kNoMemory), LoadString(text::kCommunicationError),
                                       BoxButtons::kOk, BoxIcon::kInformation, false});
  } else {
    TellCommunicationError(frame().window(), services().engine);
  }
}

void AddressBookView::Upload(bool selected_only) {
  if (!frame().IsConnected()) return;
  frame().window().UpdateNow();
  if (list().RowCount() == 0 && !Ask(frame().window(), LoadString(text::kEmptyBook), BoxIcon::kStop, true))
    return;
  frame().SaveCopies();
  const std::vector<int> selection = Positions(list().SelectedRows());
  Status status = S_OK;
  {
    const PhoneProcedure procedure(frame(), Format(LoadString(text::kUploading), {title()}));
    progress_.Create(&frame().window());
    progress_.SetCaption(title());
    if (const std::optional<Status> prepared = PrepareUpload()) {
      status = *prepared;
      if (!Failed(status)) {
        status = AfterQuery(
            WritePhonebook(services().engine, book_, this,
                           selected_only ? std::optional<std::span<const int>>(selection) : std::nullopt));
        if (!Failed(status) && !selected_only) changed_ = false;
      }
    }
    progress_.Close();
  }
  list().Redraw(-1);
  ReportFailure(status);
}

// None when the user stops it at the question.
std::optional<Status> AddressBookView::PrepareUpload() {
  progress_.SetLine(LoadString(text::kInitialization));
  Status status = services().engine.DetectPhone();
  if (Failed(status)) return status;
  progress_.SetLine(LoadString(text::kStarting));
  status = QueryPhonebook(services().engine, book_);
  if (Failed(status)) return status;
  const int capacity = book_.memory().Capacity();
  if (capacity >= book_.count()) return book_.Resize(capacity);
  const std::u16string question =
      Format(LoadString(text::kTooManyItems), {book_.count(), capacity, capacity});
  if (!Ask(frame().window(), question, BoxIcon::kStop)) return std::nullopt;
  return S_OK;
}

void AddressBookView::ToggleItemAssignment() {
  if (!assignment_.active()) {
    assignment_.Enter();
    list().SetAssignmentStyle(true);
    list().Redraw(-1);
    return;
  }
  if (Ask(frame().window(), LoadString(text::kKeepAssignment), BoxIcon::kQuestion)) {
    std::vector<int> all(static_cast<std::size_t>(list().RowCount()));
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<int>(i);
    const std::vector<int> positions = Positions(all);
    list().Clear();
    const Status status = assignment_.LeaveKeeping(positions, *this);
    if (Failed(status)) {
      for (const int position : positions) list().AddRow(static_cast<std::size_t>(position));
      return ReportFailure(status);
    }
  } else {
    assignment_.LeaveDropping();
  }
  list().SetAssignmentStyle(false);
  list().Redraw(-1);
}

void AddressBookView::AssignRow(int row) {
  if (row < 0) return;
  if (assignment_.Assign(static_cast<int>(list().RecordAt(row)))) list().Redraw(row);
}

void AddressBookView::RowRead(int position) {
  if (!IsAttached()) return;
  const auto record = static_cast<std::size_t>(position);
  if (list().Shows(record)) {
    list().Redraw(-1);
  } else if (AddItem(record) >= 0 && frame().IsBusy()) {
    frame().ShowStatus(Format(LoadString(text::kReading), {title(), ++rows_read_}));
  }
}

void AddressBookView::Repaint() { list().UpdateNow(); }
void AddressBookView::SetProgressRange(int first, int last) { progress_.SetRange(first, last); }

void AddressBookView::ShowProgress(int current, int total) {
  progress_.SetLine(Format(LoadString(text::kProgress), {current, total}));
}

void AddressBookView::SetProgressPosition(int position) { progress_.SetPosition(position); }

}  // namespace celldesk
