#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace celldesk {

/// What a control of a dialog template is.
enum class ControlKind {
  kEdit,
  kCombo,
  kEditCombo,
  kDate,
  kText,
  kBrowse,
  kList,
  kMemo,
  kCheck,
  kRadio,
  kGroup,
  kLine,
  kImage,
  kBar,
  kQuiet,
  kColumn,
  kBand,
  kButton
};

/// One control of a dialog template; `text` is its label, or an image's name.
struct ControlTemplate {
  ControlKind kind = ControlKind::kLine;
  int id = 0;
  std::u16string text;
  bool beside = false;  ///< at the end of the row before
};

/// A dialog template: title and controls in tab order.
struct DialogTemplate {
  std::u16string title;
  std::vector<ControlTemplate> controls;
};

/// The dialog template of this number; no controls when there is none.
DialogTemplate LoadDialogTemplate(int number);

}  // namespace celldesk
