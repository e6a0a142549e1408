// One with only a keyboard: everything is reached, seen and ended by key.

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>
#include <algorithm>
#include <map>
#include <set>

#include "ui/access/all_windows.h"
#include "ui/framework/menu_template.h"

namespace celldesk {
namespace {

using Mnemonics = std::map<QString, std::vector<std::string>>;

// Two items of a menu that share a letter take turns at it; these are the letters of the menus as they are.
const std::set<std::string> kTakingTurns = {"&Edit/&Exit", "Upload &selected item/&Settings...",
                                            "&Request delivery report/&Reply path", "&New/Show &Names"};

void Add(Mnemonics& found, const QString& text) {
  const QKeySequence key = QKeySequence::mnemonic(text);
  if (!key.isEmpty()) found[key.toString()].push_back(text.section(u'\t', 0, 0).toStdString());
}

void ExpectNoClash(const Mnemonics& found, const std::string& where) {
  for (const auto& [key, texts] : found) {
    for (std::size_t i = 1; i < texts.size(); ++i) {
      const std::string pair = texts[0] + "/" + texts[i];
      EXPECT_TRUE(kTakingTurns.contains(pair)) << where << ": " << key.toStdString() << " " << pair;
    }
  }
}

Mnemonics OfMenu(const QMenu& menu) {
  Mnemonics found;
  for (const QAction* action : menu.actions()) Add(found, action->text());
  return found;
}

// What the Alt key reaches in a window: its menus, labels and buttons.
Mnemonics OfWindow(const QWidget& window) {
  Mnemonics found;
  for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
    for (const QAction* action : bar->actions()) Add(found, action->text());
  }
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (label->isVisible() && label->buddy() != nullptr) Add(found, label->text());
  }
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    if (button->isVisible()) Add(found, button->text());
  }
  return found;
}

TEST(Mnemonics, DoNotClashInAWindow) {
  std::size_t count = 0;
  VisitWindows([&](const std::string& name, QWidget& window) {
    const Mnemonics found = OfWindow(window);
    count += found.size();
    ExpectNoClash(found, name);
  });
  EXPECT_GT(count, 40u);
}

TEST(Mnemonics, DoNotClashInAMenu) {
  std::size_t count = 0;
  VisitWindows([&](const std::string& name, QWidget& window) {
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
      for (const QAction* title : bar->actions()) {
        const Mnemonics found = OfMenu(*title->menu());
        count += found.size();
        ExpectNoClash(found, name + ", " + title->text().toStdString());
      }
    }
  });
  EXPECT_GT(count, 60u);
}

// A folder's tab strip and the buttons above it are reached by Ctrl+PgDn and the menus.
bool IsTabStop(const QWidget* control) { return qobject_cast<const QRadioButton*>(control) == nullptr; }

std::set<QWidget*> VisitedByTab(QWidget& window) {
  std::set<QWidget*> visited;
  for (int steps = 0; steps < 60; ++steps) {
    QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr || !visited.insert(focus).second) break;
    QTest::keyClick(focus, Qt::Key_Tab);
    window.activateWindow();
  }
  return visited;
}

TEST(TabOrder, ReachesEveryEnabledControl) {
  VisitWindows([](const std::string& name, QWidget& window) {
    if (ReachableControls(window).empty()) return;
    ASSERT_NE(QApplication::focusWidget(), nullptr) << name << " opens without a focus";
    const std::set<QWidget*> visited = VisitedByTab(window);
    for (QWidget* control : ReachableControls(window)) {
      if (!IsTabStop(control)) continue;
      EXPECT_TRUE(visited.contains(control)) << name << ": " << Called(*control);
    }
  });
}

// The checked one of a group takes the focus; arrow keys go to the others.
TEST(TabOrder, ReachesRadioButtonsByArrowKeys) {
  int groups = 0;
  VisitDialogs([&](const std::string& name, QWidget& window) {
    const auto buttons = window.findChildren<QRadioButton*>();
    const auto checked =
        std::find_if(buttons.begin(), buttons.end(), [](const auto* button) { return button->isChecked(); });
    if (checked == buttons.end() || !(*checked)->isVisible()) return;
    ++groups;
    QRadioButton* first = *checked;
    first->setFocus(Qt::TabFocusReason);
    QTest::keyClick(first, first == buttons.back() ? Qt::Key_Up : Qt::Key_Down);
    EXPECT_FALSE(first->isChecked()) << name;
    EXPECT_TRUE(QApplication::focusWidget() != first) << name;
  });
  EXPECT_GE(groups, 3);
}

// The menu bar takes the Alt key's letters.
TEST(Commands, OfTheBarHaveAMenuItemOrAKey) {
  std::set<QString> keys;
  for (const Accelerator& key : LoadAccelerators(190)) keys.insert(QString::number(key.command));
  int buttons = 0;
  VisitWindows([&](const std::string& name, QWidget& window) {
    std::set<QString> in_menus;
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
      for (const QAction* title : bar->actions()) {
        for (const QAction* action : title->menu()->actions()) in_menus.insert(action->objectName());
      }
    }
    for (const QAction* action : window.findChildren<QAction*>()) {
      const QString number = action->objectName().section(u'_', 1);
      if (!action->objectName().startsWith(QLatin1String("bar_"))) continue;
      ++buttons;
      // Connect and Disconnect are the toggle's two halves.
      const QString item = QLatin1String("menu_") + (number == QLatin1String("2044") ? "2009" : number);
      EXPECT_TRUE(in_menus.contains(item) || keys.contains(number)) << name << ": " << number.toStdString();
    }
  });
  EXPECT_GT(buttons, 40);
}

TEST(Escape, ClosesEveryDialog) {
  int dialogs = 0;
  VisitDialogs([&](const std::string& name, QWidget& window) {
    if (name == "Progress") return;  // the transfer ends it
    ++dialogs;
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus == nullptr ? &window : focus, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible()) << name;
  });
  EXPECT_GE(dialogs, 13);
}

TEST(Enter, EndsEveryDialogByItsDefaultButton) {
  int dialogs = 0;
  VisitDialogs([&](const std::string& name, QWidget& window) {
    QWidget* focus = QApplication::focusWidget();
    if (name == "Progress" || qobject_cast<QPlainTextEdit*>(focus) != nullptr) return;
    ++dialogs;
    QTest::keyClick(focus == nullptr ? &window : focus, Qt::Key_Return);
    EXPECT_FALSE(window.isVisible()) << name;
  });
  EXPECT_GE(dialogs, 11);
}

// A default button is marked without the focus too.
bool IsDefault(const QWidget* control) {
  const auto* button = qobject_cast<const QPushButton*>(control);
  return button != nullptr && button->isDefault();
}

// Each control looks otherwise while it has the focus.
TEST(Focus, IsSeen) {
  std::size_t seen = 0;
  VisitWindows([&seen](const std::string& name, QWidget& window) {
    if (ReachableControls(window).empty()) return;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    for (std::set<QWidget*> visited; visited.insert(QApplication::focusWidget()).second;) {
      QWidget* control = QApplication::focusWidget();
      if (auto* field = qobject_cast<QLineEdit*>(control)) field->deselect();
      const QImage with = control->grab().toImage();
      QTest::keyClick(control, Qt::Key_Tab);
      if (control->hasFocus() || IsDefault(control)) continue;
      if (auto* field = qobject_cast<QLineEdit*>(control)) field->deselect();
      EXPECT_NE(control->grab().toImage(), with) << name << ": " << Called(*control);
      ++seen;
    }
    EXPECT_TRUE(window.isVisible());
  });
  EXPECT_GT(seen, 60u);
}

}  // namespace
}  // namespace celldesk
