// What a screen reader is told: every control by its role and a name.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTabBar>
#include <set>

#include "ui/access/all_windows.h"

namespace celldesk {
namespace {

// What only holds others, or shows content that may be empty, needs no name.
const std::set<QAccessible::Role> kNameless = {
    QAccessible::Client,    QAccessible::ScrollBar,  QAccessible::Separator, QAccessible::LayeredPane,
    QAccessible::StatusBar, QAccessible::StaticText, QAccessible::Cell,      QAccessible::Pane,
    QAccessible::Grouping,  QAccessible::Splitter,   QAccessible::MenuBar,   QAccessible::Whitespace,
    QAccessible::Indicator, QAccessible::ListItem,   QAccessible::PopupMenu, QAccessible::RowHeader,
};

struct Walk {
  int named = 0;
  std::set<QAccessible::Role> roles;
};

std::string Path(QAccessibleInterface* control) {
  std::string path;
  for (; control != nullptr && control->role() != QAccessible::Application; control = control->parent()) {
    const QObject* object = control->object();
    const char* type = object == nullptr ? "part" : object->metaObject()->className();
    path = "/" + std::string(type) + "(" + std::to_string(control->role()) + ")" + path;
  }
  return path;
}

void Check(QAccessibleInterface& control, const std::string& window, Walk& walk) {
  if (control.state().invisible) return;
  EXPECT_NE(control.role(), QAccessible::NoRole) << window << Path(&control);
  if (!kNameless.contains(control.role())) {
    EXPECT_FALSE(control.text(QAccessible::Name).isEmpty()) << window << Path(&control);
    EXPECT_FALSE(control.text(QAccessible::Name).contains(u'&')) << window << Path(&control);
    ++walk.named;
  }
  walk.roles.insert(control.role());
  for (int child = 0; child < control.childCount(); ++child) {
    if (QAccessibleInterface* inner = control.child(child)) Check(*inner, window, walk);
  }
}

Walk WalkThrough(const std::function<void(const Visit&)>& windows) {
  Walk walk;
  windows([&walk](const std::string& name, QWidget& window) {
    QAccessibleInterface* top = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(top, nullptr) << name;
    Check(*top, name, walk);
  });
  return walk;
}

TEST(AccessibleTree, NamesEveryControlOfTheFolders) {
  const Walk walk = WalkThrough(VisitFolders);
  EXPECT_GT(walk.named, 90);
  for (const auto role : {QAccessible::Table, QAccessible::PageTab, QAccessible::PageTabList,
                          QAccessible::MenuItem, QAccessible::ColumnHeader}) {
    EXPECT_TRUE(walk.roles.contains(role)) << role;
  }
}

// The toolkit answers for a row of tabs with its current tab.
TEST(AccessibleTree, NamesRowsOfTabsThemselves) {
  int rows = 0;
  VisitWindows([&rows](const std::string& name, QWidget& window) {
    for (const QTabBar* tabs : window.findChildren<QTabBar*>()) {
      EXPECT_FALSE(tabs->accessibleName().isEmpty()) << name;
      ++rows;
    }
  });
  EXPECT_GT(rows, 8);
}

TEST(AccessibleTree, NamesEveryControlOfTheDialogs) {
  const Walk walk = WalkThrough(VisitDialogs);
  EXPECT_GT(walk.named, 110);
  for (const auto role : {QAccessible::EditableText, QAccessible::ComboBox, QAccessible::CheckBox,
                          QAccessible::RadioButton, QAccessible::Button, QAccessible::ProgressBar}) {
    EXPECT_TRUE(walk.roles.contains(role)) << role;
  }
}

}  // namespace
}  // namespace celldesk
