#include "ui/user_actions.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTest>

#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"

namespace celldesk {
namespace {

template <typename Control>
Control* Find(const Window& window, const QString& name) {
  QWidget* widget = WidgetOf(&window);
  Control* control = widget == nullptr ? nullptr : widget->findChild<Control*>(name);
  if (control == nullptr) ADD_FAILURE() << "no control " << name.toStdString();
  return control;
}

QTableView* TableOf(ListView& list) { return list.native()->table; }

QPoint PlaceOf(ListView& list, int row) {
  QTableView* table = TableOf(list);
  table->scrollTo(table->model()->index(row, 0));
  return table->visualRect(table->model()->index(row, 0)).center();
}

}  // namespace

QWidget* ControlOf(const Window& window, const QString& name) { return Find<QWidget>(window, name); }

void ClickRow(ListView& list, int row, Qt::KeyboardModifiers keys) {
  QTest::mouseClick(TableOf(list)->viewport(), Qt::LeftButton, keys, PlaceOf(list, row));
}

void DoubleClickRow(ListView& list, int row) {
  const QPoint place = PlaceOf(list, row);
  QTest::mouseClick(TableOf(list)->viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(TableOf(list)->viewport(), Qt::LeftButton, {}, place);
}

void ClickHeader(ListView& list, int column) {
  QHeaderView* header = TableOf(list)->horizontalHeader();
  const QPoint place(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                     header->height() / 2);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
}

void PressKey(ListView& list, Qt::Key key, Qt::KeyboardModifiers keys) {
  QTest::keyClick(TableOf(list), key, keys);
}

void PressKey(const Window& window, Qt::Key key, Qt::KeyboardModifiers keys) {
  QWidget* widget = WidgetOf(&window);
  QWidget* focus = widget->focusWidget();
  QTest::keyClick(focus != nullptr ? focus : widget, key, keys);
}

void ClickTab(const Window& window, int index) {
  auto* tabs = Find<QTabBar>(window, {});
  if (tabs != nullptr) QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
}

void ClickBarButton(const Window& window, int command) {
  auto* button = Find<QWidget>(window, QStringLiteral("button_%1").arg(command));
  if (button != nullptr) QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
}

void PickMenuItem(const Window& window, int command) {
  auto* bar = Find<QMenuBar>(window, {});
  auto* action = Find<QAction>(window, QStringLiteral("menu_%1").arg(command));
  if (bar == nullptr || action == nullptr) return;
  for (QAction* title : bar->actions()) {
    QMenu* popup = title->menu();
    if (popup == nullptr || !popup->actions().contains(action)) continue;
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
    if (QApplication::activePopupWidget() != popup) ADD_FAILURE() << "the menu does not open";
    QTest::mouseClick(popup, Qt::LeftButton, {}, popup->actionGeometry(action).center());
    popup->close();
    return;
  }
}

void ClickDialogButton(const Window& dialog, int id) {
  auto* button = Find<QAbstractButton>(dialog, QStringLiteral("control_%1").arg(id));
  if (button != nullptr) QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
}

void TypeInto(const Window& dialog, int id, const QString& text) {
  auto* field = Find<QLineEdit>(dialog, QStringLiteral("control_%1").arg(id));
  if (field == nullptr) return;
  field->selectAll();
  QTest::keyClick(field, Qt::Key_Backspace);
  QTest::keyClicks(field, text);
}

std::string HeaderText(ListView& list, int column) {
  const QHeaderView* header = TableOf(list)->horizontalHeader();
  std::string text = header->model()->headerData(column, Qt::Horizontal).toString().toStdString();
  if (header->isSortIndicatorShown() && header->sortIndicatorSection() == column)
    text += header->sortIndicatorOrder() == Qt::DescendingOrder ? 'v' : '^';
  return text;
}

}  // namespace celldesk
