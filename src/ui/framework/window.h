#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/framework/font.h"
#include "util/object.h"

namespace celldesk {

class MenuState;
struct NativeWindow;  // the toolkit's side of a window

/// Messages that reach a window's operations; numbers as the window manager has them.
enum class Message : std::uint32_t {
  kCreate = 0x0001,
  kDestroy = 0x0002,
  kActivate = 0x0006,
  kClose = 0x0010,
  kNotify = 0x004E,
  kHelp = 0x0053,
  kSaveSettings = 100,
  kLoadSettings = 101,
  kInitDialog = 0x0110,
  kCommand = 0x0111,
  kTimer = 0x0113,
  kHScroll = 0x0114,
  kVScroll = 0x0115,
  kInitMenuPopup = 0x0117,
  kShowYourself = 0x0400,
};

using WordParameter = std::uintptr_t;
using LongParameter = std::intptr_t;
using MessageResult = std::intptr_t;

/// What a control tells its window.
enum class NotifyCode {
  kClick,             ///< a row was clicked, or Space pressed on it
  kDoubleClick,       ///< a row was double clicked
  kReturn,            ///< Enter in a list
  kDeleteKey,         ///< Delete in a list
  kHeaderClick,       ///< a column header was clicked
  kSelectionChanged,  ///< rows or the focused row changed
  kChanged,           ///< an edit field's text, or a list's choice, was changed
  kPageChanged,       ///< a page host shows another page
  kContextMenu,       ///< a list is asked for its menu, by the right button, a pen held down or the menu key
};

/// A control's news: the row and column it is about, -1 where there is none.
struct Notification {
  NotifyCode code = NotifyCode::kClick;
  int row = -1;
  int column = -1;
};

/// Base of every window, dialog and page: the toolkit's messages become calls of its virtual operations. The
/// object is attached to its native window from creation to destruction. Interface thread only.
class Window : public Object {
 public:
  Window();
  ~Window() override;  // slot 0
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  // Virtual operations in slot order; the slots that are missing are not used.
  /// 1: the native window is there; false ends the creation.
  virtual bool OnCreate(LongParameter parameter);
  /// 2
  virtual void OnTimer(int timer_id);
  /// 3: list, header and page notifications.
  virtual MessageResult OnNotify(int control_id, const Notification& notification);
  /// 4: menu, accelerator, button and control commands.
  virtual void OnCommand(int command, LongParameter parameter);
  /// 5: enabling and checking of menu items before the menu opens.
  virtual void OnInitMenuPopup(MenuState& menu, int index);
  /// 6: every other message; for dialogs a non-zero result means handled.
  virtual MessageResult WindowProc(Message message, WordParameter word, LongParameter parameter);
  /// 9: a dialog's controls are there; true lets the toolkit set the focus.
  virtual bool OnInitDialog(int focus, LongParameter parameter);
  /// 10: order of two records by the view's sort column; negative, zero or positive.
  virtual int Compare(std::size_t record1, std::size_t record2);
  /// 13: a page becomes visible.
  virtual void OnShowPage();
  /// 14: a page is about to be left; false keeps it.
  virtual bool OnLeavePage();
  /// 15: copies between controls and data; `save` reads the controls. False when they hold something
  /// unusable.
  virtual bool UpdateData(bool save);
  /// 17: idle work; true asks for another call.
  virtual bool OnIdle(int count);
  /// 22: puts a model record into the list if it belongs there; the list index, or -1.
  virtual int AddItem(std::size_t record);
  /// 23
  virtual bool IsCommandDisabled(int command, std::size_t selection_count);
  /// 24: the text of one list cell; `buffer` may hold it, otherwise it is the model's own.
  virtual std::u16string_view ColumnText(std::size_t record, int column, std::u16string& buffer);
  /// 25: the font an item is drawn in.
  virtual FontRole ItemFont(std::size_t record);
  /// 26: the index of an item's image, -1 for none.
  virtual int ItemImage(std::size_t record);
  /// 27: true for a record that Compare finds equal to any other because it has nothing to compare by. Among
  /// records that are equal it stands last, in either direction: so sorting has one order to go by.
  virtual bool SortsLast(std::size_t record);
  /// 28: a key for each of `records` whose ascending order is that of Compare (negated when `descending`) and
  /// SortsLast; equal records have equal keys. None where sorting is to go by those two.
  virtual std::vector<std::uint64_t> SortKeys(std::span<const std::uint32_t> records, bool descending);

  /// Sends a message through the window procedure. A detached window only does the default: nothing.
  virtual MessageResult Dispatch(Message message, WordParameter word, LongParameter parameter);
  /// The same from the event loop, after everything that waits now; dropped when the window is gone by then.
  void Post(Message message, WordParameter word, LongParameter parameter);

  bool IsAttached() const { return native_ != nullptr; }
  NativeWindow* native() const { return native_.get(); }
  Window* parent() const { return parent_; }

  void SetTitle(std::u16string_view title);
  std::u16string Title() const;
  void Show(bool visible);
  /// Shows it and waits, for a moment at most, until it can be painted; the user's input waits along.
  void ShowNow();
  bool IsVisible() const;
  void SetFocus();
  /// Paints what is due at once.
  void UpdateNow();
  void StartTimer(int timer_id, int milliseconds);
  void StopTimer(int timer_id);
  /// Destroys the native window; the object stays, detached.
  void Destroy();

 protected:
  /// Called by the toolkit side when the native window is made.
  void Attach(std::unique_ptr<NativeWindow> native, Window* parent);
  /// Forgets the native window.
  void Detach();

 private:
  std::unique_ptr<NativeWindow> native_;
  Window* parent_ = nullptr;
};

}  // namespace celldesk
