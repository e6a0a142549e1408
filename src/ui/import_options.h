#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/framework/dialog.h"

namespace celldesk {

/// Asks which kind of import or export the user wants: one list of choices.
class ImportOptions : public Dialog {
 public:
  /// `choices` is a list of tokens, each ended by ";".
  explicit ImportOptions(std::u16string_view choices);

  /// Runs the dialog over `owner`; the index of the choice, or none.
  std::optional<int> Choose(Window& owner);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  bool UpdateData(bool save) override;
  std::u16string_view ColumnText(std::size_t record, int column, std::u16string& buffer) override;

 private:
  ListView& list();

  std::vector<std::u16string> choices_;
  std::optional<int> chosen_;
};

}  // namespace celldesk
