#pragma once

#include <optional>

#include "ui/address_books.h"
#include "ui/framework/dialog.h"

namespace celldesk {

class Locale;

/// Lists the entries of both address books and lets the user choose one.
class AddressChooser : public Dialog {
 public:
  /// Both are borrowed for the dialog's life.
  AddressChooser(const AddressBooks& books, const Locale& locale);

  /// Runs the dialog over `owner`; the chosen entry, or none.
  std::optional<AddressEntry> Choose(Window& owner);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  bool UpdateData(bool save) override;
  int Compare(std::size_t record1, std::size_t record2) override;
  std::vector<std::uint64_t> SortKeys(std::span<const std::uint32_t> records, bool descending) override;
  std::u16string_view ColumnText(std::size_t record, int column, std::u16string& buffer) override;

 private:
  ListView& list();
  const AddressBook& BookOf(std::size_t record) const;
  const AddressEntry& EntryOf(std::size_t record) const;
  int ChosenRow();

  const AddressBooks& books_;
  const Locale& locale_;
  std::optional<AddressEntry> chosen_;
};

}  // namespace celldesk
