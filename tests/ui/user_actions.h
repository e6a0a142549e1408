#pragma once

#include <QString>
#include <Qt>
#include <string>

#include "ui/framework/list_view.h"
#include "ui/framework/message_box.h"
#include "ui/framework/window.h"

class QAbstractButton;
class QLineEdit;
class QWidget;

namespace celldesk {

/// What a user does with pen and keyboard, by real events at the place on the screen.

/// A control of `window` by its object name ("tabs_1", "button_2014", "control_1001"); the test fails when it
/// is not there.
QWidget* ControlOf(const Window& window, const QString& name);

/// Clicks into a row's first column.
void ClickRow(ListView& list, int row, Qt::KeyboardModifiers keys = Qt::NoModifier);
void DoubleClickRow(ListView& list, int row);
void ClickHeader(ListView& list, int column);
/// Presses a key in the list.
void PressKey(ListView& list, Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier);
/// Presses a key in whatever has the focus in `window`.
void PressKey(const Window& window, Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier);

/// Clicks the tab of a page host by its index.
void ClickTab(const Window& window, int index);
/// Clicks a command bar button. A disabled one takes the click and does nothing, as for a user.
void ClickBarButton(const Window& window, int command);
/// Opens the pop-up menu that has the command and clicks the item.
void PickMenuItem(const Window& window, int command);
/// Clicks a dialog's button by its control number.
void ClickDialogButton(const Window& dialog, int id);
/// Replaces a field's text by typing.
void TypeInto(const Window& dialog, int id, const QString& text);

/// Caption as the list shows it, with the arrow of the sorted column: "Name^" ascending, "Namev" descending.
std::string HeaderText(ListView& list, int column);

}  // namespace celldesk
