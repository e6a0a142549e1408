#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "ui/framework/dialog_template.h"
#include "ui/framework/list_view.h"
#include "ui/framework/window.h"
#include "util/calendar_time.h"
#include "util/edit_filter.h"

namespace celldesk {

class CommandSurface;
class PageHost;
struct NativeDialog;

/// What ends a dialog.
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;

/// A dialog made from a template; its controls are reached by number. A number that the template does not
/// have is ignored, and reads as empty. Interface thread only.
class Dialog : public Window {
 public:
  explicit Dialog(int template_number);
  ~Dialog() override;

  /// Runs the dialog over `owner` until it ends; its result. The dialog is the current view meanwhile;
  /// afterwards the one before is restored and the main frame is activated. -1 when it cannot be made.
  int RunModal(Window* owner, LongParameter parameter = 0);
  /// Makes the dialog as a window of its own over `owner`; false when the template is missing.
  bool CreateModeless(Window* owner, LongParameter parameter = 0);
  /// Makes the dialog as a page that fills `host`; false when the template is missing.
  bool CreatePage(PageHost& host);
  /// Ends a modal run with this result.
  void EndDialog(int result);

  MessageResult Dispatch(Message message, WordParameter word, LongParameter parameter) override;
  /// OK ends with 1 after UpdateData(true) agrees; Cancel ends with 2.
  void OnCommand(int command, LongParameter parameter) override;

  std::u16string Text(int id) const;
  void SetText(int id, std::u16string_view text);
  /// Longest text that an edit field or a memo takes from the user.
  void SetLimit(int id, int characters);
  void SetFilter(int id, EditFilter filter);
  bool IsChecked(int id) const;
  void SetChecked(int id, bool checked);
  void Enable(int id, bool enabled);
  bool IsEnabled(int id) const;
  void ShowControl(int id, bool visible);
  void SetControlFont(int id, const FontSet& fonts, FontRole role);
  void FocusControl(int id);

  /// Date and time fields, in seconds. A date that does not exist, or lies outside the range, is not shown.
  CalendarTime Date(int id) const;
  void SetDate(int id, const CalendarTime& time);
  void SetDateRange(int id, const CalendarTime& first, const CalendarTime& last);

  /// Choice lists: entries with a number each. A list in the dialog's command bar is one of them.
  void AddChoice(int id, std::u16string_view text, LongParameter data);
  void ClearChoices(int id);
  int ChoiceCount(int id) const;
  std::u16string ChoiceText(int id, int index) const;
  LongParameter ChoiceData(int id, int index) const;
  int SelectedChoice(int id) const;
  void SelectChoice(int id, int index);

  /// Progress bar of the template: 0 to 100, what lies beyond shows as the nearer end.
  void SetBar(int id, int percent);

  /// The report list of control `id`; made on first use, lives with the dialog.
  ListView& List(int id);
  /// The dialog's own menu and command bar; made on first use.
  CommandSurface& Surface();
  bool HasSurface() const { return surface_ != nullptr; }

  int template_number() const { return template_number_; }
  NativeDialog* controls() const { return controls_.get(); }

  /// Called in every modal run once the dialog is on screen: tests and the tour work it from there. An empty
  /// function removes it.
  static void SetModalHook(std::function<void(Dialog& dialog)> hook);

 private:
  MessageResult OnDestroy(WordParameter word, LongParameter parameter);

  int template_number_;
  std::unique_ptr<NativeDialog> controls_;
  std::unique_ptr<ListView> list_;
  std::unique_ptr<CommandSurface> surface_;
};

}  // namespace celldesk
