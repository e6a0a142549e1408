#include "ui/import_options.h"

#include "ui/commands.h"
#include "ui/framework/token_list.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 210;
constexpr int kListId = 1001;

}  // namespace

ImportOptions::ImportOptions(std::u16string_view choices)
    : Dialog(kTemplate), choices_(ParseTokens(choices)) {}

std::optional<int> ImportOptions::Choose(Window& owner) {
  chosen_.reset();
  return RunModal(&owner) == kIdOk ? chosen_ : std::nullopt;
}

bool ImportOptions::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  list().BuildColumns(text::kChoiceColumns);
  list().SetChoiceStyle();
  for (std::size_t choice = 0; choice < choices_.size(); ++choice) list().AddRow(choice);
  list().Select(0, true);
  list().SetFocusedRow(0);
  list().SetFocus();
  return false;
}

void ImportOptions::OnCommand(int command, LongParameter parameter) {
  Dialog::OnCommand(command == command::kOpen ? kIdOk : command, parameter);
}

MessageResult ImportOptions::OnNotify(int /*control_id*/, const Notification& notification) {
  if (notification.code == NotifyCode::kSelectionChanged) Enable(kIdOk, list().SelectedCount() == 1);
  return 0;
}

bool ImportOptions::UpdateData(bool save) {
  const std::vector<int> rows = list().SelectedRows();
  if (!save || rows.size() != 1) return false;
  chosen_ = static_cast<int>(list().RecordAt(rows.front()));
  return true;
}

std::u16string_view ImportOptions::ColumnText(std::size_t record, int /*column*/,
                                              std::u16string& /*buffer*/) {
  return choices_[record];
}

ListView& ImportOptions::list() { return List(kListId); }

}  // namespace celldesk
