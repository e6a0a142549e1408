#pragma once

#include <QElapsedTimer>
#include <QFont>
#include <QHash>
#include <QPointer>
#include <QWidget>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "ui/framework/font.h"
#include "ui/framework/window.h"

class QAction;
class QDialog;
class QLabel;
class QMainWindow;
class QMenuBar;
class QScrollBar;
class QStackedWidget;
class QTabBar;
class QListWidget;
class QToolBar;

namespace celldesk {

class ListModel;
class ListTable;
class CommandSurface;

/// The widget behind a window, with the timers that were started on it.
struct NativeWindow {
  explicit NativeWindow(QWidget* w) : widget(w) {}
  QPointer<QWidget> widget;
  QHash<int, QTimer*> timers;
};

/// What a scrolling dialog moves its controls with.
struct NativeScroller {
  QWidget* view = nullptr;     // what is visible
  QWidget* content = nullptr;  // all there is, within the view
  QScrollBar* horizontal = nullptr;
  QScrollBar* vertical = nullptr;
};

/// A dialog's controls by number.
struct NativeDialog {
  QHash<int, QWidget*> controls;
  QPointer<QDialog> dialog;  // null for a page
  QWidget* content = nullptr;
  std::optional<int> result;  // set when the dialog ended before it was on screen
  std::unique_ptr<NativeScroller> scroller;
};

/// The widths of a list's column, in pixels.
struct NativeColumn {
  std::uint16_t built = 0;  // by the column string
  std::uint16_t given = 0;  // at last, by the column string or the settings
  int needed = 0;           // by the texts that were seen, in a column that fits itself to them
  bool fits = false;

  /// As it is drawn until the user takes the header and pulls.
  int Drawn() const { return given == built && needed > given ? needed : given; }
};

struct NativeList {
  std::vector<NativeColumn> columns;
  ListModel* model = nullptr;  // owned by table
  QPointer<ListTable> table;   // owned by its dialog's widget
  QElapsedTimer painted;       // since UpdateNow painted last
  bool ready = false;          // before that the owner does not know the list and is told nothing

  /// A text of a column that is drawn needs this much room.
  void MakeRoom(int column, int width);
  /// What other columns take beyond the widths that they were given, the last column lacks.
  void YieldRoom();
};

struct NativeHost {
  QPointer<QTabBar> tabs;
  QPointer<QListWidget> icons;
  QStackedWidget* stack = nullptr;
};

struct NativeFrame {
  QPointer<QMainWindow> window;
  QLabel* status = nullptr;
  QLabel* status_right = nullptr;
};

struct NativeSurface {
  QPointer<QMenuBar> menu_bar;
  QPointer<QToolBar> tool_bar;
  QHash<int, QAction*> menu_actions;
  QHash<int, QAction*> bar_actions;
};

struct NativeFonts {
  std::array<QFont, 8> fonts;
};

/// The window object of this very widget, or null: none once the object is detached or gone.
Window* WindowOf(const QWidget* widget);
/// Ties a widget to its window object; null unties it.
void SetWindowOf(QWidget* widget, Window* window);
/// The widget of a window, or null.
QWidget* WidgetOf(const Window* window);
/// Shows these commands of a menu bar as a pop-up at a place on the screen; 0 is a separator.
void PopUpCommands(const CommandSurface& surface, std::span<const int> commands, const QPoint& place);
/// The font of a role; `base` for kNormal.
QFont FontOf(const FontSet* fonts, FontRole role, const QFont& base);

}  // namespace celldesk
