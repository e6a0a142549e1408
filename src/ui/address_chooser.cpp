#include "ui/address_chooser.h"

#include <algorithm>
#include <vector>

#include "data/entry_order.h"
#include "ui/commands.h"
#include "ui/framework/sort_key.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 209;
constexpr int kListId = 1001;
constexpr int kMemoryColumn = 0, kNameColumn = 2;

// A record's number: the book, and the position in it.
constexpr std::size_t kBookStep = AddressBook::kLimit;

}  // namespace

AddressChooser::AddressChooser(const AddressBooks& books, const Locale& locale)
    : Dialog(kTemplate), books_(books), locale_(locale) {}

std::optional<AddressEntry> AddressChooser::Choose(Window& owner) {
  chosen_.reset();
  return RunModal(&owner) == kIdOk ? chosen_ : std::nullopt;
}

bool AddressChooser::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  list().BuildColumns(text::kChooserColumns);
  list().SetSearchColumn(kNameColumn);
  list().EnableSorting(true);
  list().SetEmptyText(LoadString(text::kNoAddresses));
  std::vector<std::uint32_t> records;
  for (int book = 0; book < AddressBooks::kCount; ++book) {
    const auto first = static_cast<std::size_t>(book) * kBookStep;
    const auto& entries = books_.At(book).entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i].is_occupied()) records.push_back(static_cast<std::uint32_t>(first + i));
    }
  }
  list().SetRows(records);
  if (list().RowCount() > 0) {
    list().Select(0, true);
    list().SetFocusedRow(0);
  }
  Enable(kIdOk, ChosenRow() >= 0);
  list().SetFocus();
  return false;
}

void AddressChooser::OnCommand(int command, LongParameter parameter) {
  Dialog::OnCommand(command == command::kOpen ? kIdOk : command, parameter);
}

MessageResult AddressChooser::OnNotify(int /*control_id*/, const Notification& notification) {
  if (notification.code == NotifyCode::kSelectionChanged) Enable(kIdOk, ChosenRow() >= 0);
  return 0;
}

bool AddressChooser::UpdateData(bool save) {
  const int row = ChosenRow();
  if (!save || row < 0) return false;
  chosen_ = EntryOf(list().RecordAt(row));
  return true;
}

int AddressChooser::Compare(std::size_t record1, std::size_t record2) {
  if (list().sort_column() == kMemoryColumn) {
    return locale_.Compare(BookOf(record1).memory().name, BookOf(record2).memory().name);
  }
  const auto column = static_cast<AddressColumn>(list().sort_column() - 1);
  return CompareEntries(EntryOf(record1), EntryOf(record2), column, false, locale_);
}

std::vector<std::uint64_t> AddressChooser::SortKeys(std::span<const std::uint32_t> records, bool descending) {
  if (list().sort_column() == kMemoryColumn) {
    const auto memory = [&](std::size_t i, std::u16string&) -> std::u16string_view {
      return BookOf(records[i]).memory().name;
    };
    return PackedKeys(locale_.Ranks(records.size(), memory), descending);
  }
  std::vector<const AddressEntry*> entries(records.size());
  std::transform(records.begin(), records.end(), entries.begin(),
                 [this](std::uint32_t record) { return &EntryOf(record); });
  const auto column = static_cast<AddressColumn>(list().sort_column() - 1);
  return PackedKeys(EntryPlaces(entries, column, locale_), descending);
}

std::u16string_view AddressChooser::ColumnText(std::size_t record, int column, std::u16string& /*buffer*/) {
  if (column == kMemoryColumn) return BookOf(record).memory().name;
  return EntryText(EntryOf(record), static_cast<AddressColumn>(column - 1));
}

ListView& AddressChooser::list() { return List(kListId); }

const AddressBook& AddressChooser::BookOf(std::size_t record) const {
  return books_.At(static_cast<int>(record / kBookStep));
}

const AddressEntry& AddressChooser::EntryOf(std::size_t record) const {
  return BookOf(record).entries()[record % kBookStep];
}

int AddressChooser::ChosenRow() {
  const std::vector<int> rows = list().SelectedRows();
  return rows.empty() ? -1 : rows.front();
}

}  // namespace celldesk
