#pragma once

#include "data/row_observer.h"
#include "services/sms_service.h"
#include "ui/folder_view.h"
#include "ui/sms_columns.h"
#include "ui/sms_editor_state.h"

namespace celldesk {

/// The Inbox or the Outbox: a list over the messages of one model, which both folders share, and the commands
/// that change and synchronise it.
class SmsFolderView : public FolderView, public RowObserver {
 public:
  SmsFolderView(FrameServices& frame, const ProgramServices& services, SmsFolder folder,
                std::u16string_view title);

  /// The other folder of the model; borrowed for the view's life.
  void SetSibling(SmsFolderView& sibling) { sibling_ = &sibling; }
  bool HasUnsavedChanges() const override { return services().sms.messages().IsChanged(); }

  // For the dialogs that show the folder's messages.
  SmsService& sms() const { return services().sms; }
  const Locale& locale() const { return services().locale; }
  const AddressBooks& address_books() const { return frame().address_books(); }
  const FontSet& fonts() const { return frame().fonts(); }
  SmsFolder folder() const { return folder_; }
  /// The message in a row of the list.
  SmsMessage& MessageAt(int row);
  /// Toggles the deletion marks of the selected messages; new ones go at once. False, and nothing changed,
  /// when the user refuses that over `owner`.
  bool DeleteSelected(Window& owner);
  /// Gives a record that was just made a row in the folder that it belongs to, and selects it there.
  void ShowNewMessage(std::size_t record);
  /// Runs the editor for a new message. The folder's page need not exist.
  void Compose(const SmsDraft& draft);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;
  void OnInitMenuPopup(MenuState& menu, int index) override;
  void OnShowPage() override;
  int Compare(std::size_t record1, std::size_t record2) override;
  bool SortsLast(std::size_t record) override;
  std::vector<std::uint64_t> SortKeys(std::span<const std::uint32_t> records, bool descending) override;
  int AddItem(std::size_t record) override;
  bool IsCommandDisabled(int command, std::size_t selection_count) override;
  bool IsButtonDisabled(int command, std::size_t selection_count) override;
  std::u16string_view ColumnText(std::size_t record, int column, std::u16string& buffer) override;
  FontRole ItemFont(std::size_t record) override;
  int ItemImage(std::size_t record) override;
  bool MayLackRows() const override { return lacks_rows_; }

  void RowRead(int position) override;
  void Repaint() override;

 protected:
  std::u16string EmptyText() const override;

 private:
  void Open();
  void Answer(int command);
  void DeleteAll();
  void LoadData();
  void LoadData(int missed_before);
  void Upload();
  void ShowNames();

  bool is_inbox() const { return folder_ == SmsFolder::kInbox; }
  SmsStore& messages() const { return services().sms.messages(); }
  const SmsMessage* MessageOf(std::size_t record) const;
  int FirstSelected();
  bool MayRemoveNew(const std::vector<int>& rows, Window& owner);
  int Mark(int row, bool toggle);
  void Fill();
  void ForgetRows();
  void Follow(std::size_t record);
  UploadAnswer AskAboutSending(const SmsMessage& message);

  SmsFolder folder_;
  SmsColumns columns_;
  SmsFolderView* sibling_ = nullptr;
  bool names_ = true;
  bool filled_ = false;  // the list holds the model's records
  bool loaded_ = false;  // the model is what a phone held
  bool lacks_rows_ = false;
  int progress_text_ = 0;  // what the status line says of a procedure, with a count
  int progress_ = 0;
};

}  // namespace celldesk
