#include "ui/framework/dialog_template.h"

#include <array>
#include <utility>

#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::array<std::pair<std::string_view, ControlKind>, 18> kKinds = {{
    {"edit", ControlKind::kEdit},
    {"combo", ControlKind::kCombo},
    {"editcombo", ControlKind::kEditCombo},
    {"date", ControlKind::kDate},
    {"text", ControlKind::kText},
    {"browse", ControlKind::kBrowse},
    {"list", ControlKind::kList},
    {"memo", ControlKind::kMemo},
    {"check", ControlKind::kCheck},
    {"radio", ControlKind::kRadio},
    {"group", ControlKind::kGroup},
    {"line", ControlKind::kLine},
    {"image", ControlKind::kImage},
    {"bar", ControlKind::kBar},
    {"quiet", ControlKind::kQuiet},
    {"column", ControlKind::kColumn},
    {"band", ControlKind::kBand},
    {"button", ControlKind::kButton},
}};

ControlKind KindOf(std::string_view word) {
  for (const auto& [name, kind] : kKinds) {
    if (name == word) return kind;
  }
  return ControlKind::kLine;
}

// "field ID KIND LABEL", "beside ID KIND", "group TEXT", "column", "band", and "KIND ID TEXT" for all others.
ControlTemplate ParseControl(std::string_view line) {
  const std::string_view word = TakeWord(line);
  ControlTemplate control;
  control.beside = word == "beside";
  if (word == "field" || control.beside) {
    control.id = NumberOf(TakeWord(line));
    control.kind = KindOf(TakeWord(line));
  } else {
    control.kind = KindOf(word);
    if (control.kind != ControlKind::kGroup) control.id = NumberOf(TakeWord(line));
  }
  control.text = FromUtf8(line);
  return control;
}

}  // namespace

DialogTemplate LoadDialogTemplate(int number) {
  DialogTemplate found;
  bool inside = false;
  ForEachLine(FindResource("dialogs.txt"), [&](std::string_view line) {
    std::string_view rest = line;
    if (TakeWord(rest) == "dialog") {
      inside = NumberOf(TakeWord(rest)) == number;
      if (inside) found.title = FromUtf8(rest);
    } else if (inside) {
      found.controls.push_back(ParseControl(line));
    }
  });
  return found;
}

}  // namespace celldesk
