#pragma once

#include <optional>
#include <span>
#include <vector>

#include "data/address_book.h"
#include "data/item_assignment.h"
#include "services/phonebook_transfer.h"
#include "ui/folder_view.h"
#include "ui/framework/progress_dialog.h"

namespace celldesk {

/// Which phonebook memory an address book folder shows.
struct BookTraits {
  std::u16string_view memory;
  bool ignore_select_errors;
  int display_name;  ///< string resource
};

/// One of the two address book folders: owns its book and decides every step of editing and synchronisation.
class AddressBookView : public FolderView, public PhonebookObserver {
 public:
  AddressBookView(FrameServices& frame, const ProgramServices& services, const BookTraits& traits,
                  std::u16string_view title);

  AddressBook& book() { return book_; }
  const AddressBook& book() const { return book_; }
  /// The memory's name for the user.
  std::u16string DisplayName() const;
  bool HasUnsavedChanges() const override { return changed_ || book_.IsModified(); }

  // For import and export.
  /// The other address book folder; borrowed for the view's life.
  void SetPartner(AddressBookView& partner) { partner_ = &partner; }
  /// Positions of the selected rows in display order; none while the page does not exist.
  std::vector<int> SelectedPositions();
  /// Clears every entry and drops the rows.
  void EmptyBook();
  /// The book counts as changed until the next load or upload, even where no entry is.
  void MarkChanged() { changed_ = true; }

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  void OnInitMenuPopup(MenuState& menu, int index) override;
  int Compare(std::size_t record1, std::size_t record2) override;
  std::vector<std::uint64_t> SortKeys(std::span<const std::uint32_t> records, bool descending) override;
  int AddItem(std::size_t record) override;
  bool IsCommandDisabled(int command, std::size_t selection_count) override;
  std::u16string_view ColumnText(std::size_t record, int column, std::u16string& buffer) override;
  int ItemImage(std::size_t record) override;
  std::u16string Hint() const override;
  bool MayLackRows() const override { return lacks_rows_; }

  void RowRead(int position) override;
  void Repaint() override;
  void SetProgressRange(int first, int last) override;
  void ShowProgress(int current, int total) override;
  void SetProgressPosition(int position) override;

 protected:
  std::u16string EmptyText() const override;

 private:
  void Edit();
  void New();
  void EditAt(int position, const AddressEntry& start, int title);
  void Delete();
  void DeleteAll();
  void SendSms();
  void LoadData();
  void Upload(bool selected_only);
  void ToggleItemAssignment();
  void AssignRow(int row);

  Status Initialise();
  Status Download();
  std::optional<Status> PrepareUpload();
  void ReportFailure(Status status);
  std::vector<int> Positions(const std::vector<int>& rows);
  void DropRowsWithoutEntry();
  void ShowAt(int row, int position);

  BookTraits traits_;
  AddressBook book_;
  ItemAssignment assignment_;
  ProgressDialog progress_;
  AddressBookView* partner_ = nullptr;
  bool changed_ = false;
  bool lacks_rows_ = false;
  int rows_read_ = 0;
};

}  // namespace celldesk
