// Nothing is cut off: every text has the room it needs, at every scale and in other countries' formats.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTabBar>

#include "ui/access/all_windows.h"
#include "ui/framework/qt/elided_label.h"

namespace celldesk {
namespace {

// Texts that may be longer than any screen are cut on purpose, and say all in a tool tip.
bool MayBeCut(const QWidget* control) {
  return dynamic_cast<const ElidedLabel*>(control) != nullptr || control->objectName() == "status";
}

// The toolkit's button for what a narrow bar does not show.
bool IsExtension(const QWidget* control) {
  return control->objectName() == QLatin1String("qt_toolbar_ext_button");
}

bool IsText(const QWidget* control) {
  return qobject_cast<const QLabel*>(control) != nullptr ||
         qobject_cast<const QAbstractButton*>(control) != nullptr ||
         qobject_cast<const QComboBox*>(control) != nullptr ||
         qobject_cast<const QDateTimeEdit*>(control) != nullptr;
}

void ExpectRoomForItsText(const std::string& window, const QWidget* control) {
  const auto* label = qobject_cast<const QLabel*>(control);
  if (label != nullptr && label->wordWrap()) {
    EXPECT_GE(control->height(), control->heightForWidth(control->width())) << window << Called(*control);
    return;
  }
  EXPECT_GE(control->width(), control->minimumSizeHint().width()) << window << Called(*control);
  EXPECT_GE(control->height(), control->minimumSizeHint().height()) << window << Called(*control);
}

void ExpectOnTheWindow(const std::string& name, const QWidget& window, const QWidget* control) {
  const QRect place(control->mapTo(&window, QPoint()), control->size());
  EXPECT_TRUE(window.rect().contains(place))
      << name << ": " << Called(*control) << " at " << place.x() << "," << place.y() << " " << place.width()
      << "x" << place.height() << " in " << window.width() << "x" << window.height();
}

void ExpectTabsWhole(const std::string& name, const QWidget& window) {
  for (const QTabBar* tabs : window.findChildren<QTabBar*>()) {
    if (!tabs->isVisible()) continue;
    for (int i = 0; i < tabs->count(); ++i) {
      EXPECT_TRUE(tabs->rect().contains(tabs->tabRect(i))) << name << ": tab " << i;
      EXPECT_GE(tabs->tabRect(i).width(), tabs->fontMetrics().horizontalAdvance(tabs->tabText(i))) << name;
    }
  }
}

int texts_seen = 0;

void ExpectWhole(const std::string& name, QWidget& window) {
  ExpectTabsWhole(name, window);
  for (const QWidget* control : window.findChildren<QWidget*>()) {
    if (!IsText(control) || !control->isVisible() || control->window() != &window) continue;
    if (MayBeCut(control) || IsExtension(control)) continue;
    ExpectOnTheWindow(name, window, control);
    ExpectRoomForItsText(name + ": ", control);
    ++texts_seen;
  }
}

// Two controls of one window never lie over each other.
void ExpectApart(const std::string& name, QWidget& window) {
  const std::vector<QWidget*> controls = ReachableControls(window);
  for (std::size_t i = 0; i < controls.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (controls[i]->isAncestorOf(controls[j]) || controls[j]->isAncestorOf(controls[i])) continue;
      const QRect one(controls[i]->mapTo(&window, QPoint()), controls[i]->size());
      const QRect other(controls[j]->mapTo(&window, QPoint()), controls[j]->size());
      EXPECT_FALSE(one.intersects(other)) << name << ": " << Called(*controls[i]) << Called(*controls[j]);
    }
  }
}

void ExpectReadable(const std::string& name, QWidget& window) {
  ExpectWhole(name, window);
  ExpectApart(name, window);
}

TEST(TextFit, HoldsInEveryWindow) {
  texts_seen = 0;
  VisitWindows(ExpectReadable);
  EXPECT_GT(texts_seen, 100);
}

TEST(TextFit, HoldsOnTheSmallestScreen) {
  VisitWindows([](const std::string& name, QWidget& window) {
    window.resize(640, 240);
    QApplication::processEvents();
    EXPECT_LE(window.width(), 640) << name;
    EXPECT_LE(window.height(), 240) << name;
    ExpectReadable(name, window);
  });
}

struct Surroundings {
  const char* scale;
  const char* locale;
};

// The same program once more, with another scale and another country's formats.
class TextFitElsewhere : public testing::TestWithParam<Surroundings> {};

TEST_P(TextFitElsewhere, HoldsInEveryWindow) {
  QProcess again;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_SCALE_FACTOR", GetParam().scale);
  environment.insert("LC_ALL", GetParam().locale);
  again.setProcessEnvironment(environment);
  again.setProcessChannelMode(QProcess::MergedChannels);
  again.start(QFileInfo("/proc/self/exe").symLinkTarget(), {"--gtest_filter=TextFit.*", "--gtest_brief=1"});
  ASSERT_TRUE(again.waitForFinished(300000));
  const std::string said = again.readAll().toStdString();
  EXPECT_EQ(again.exitCode(), 0) << said;
  EXPECT_NE(said.find("2 tests"), std::string::npos) << said;
}

INSTANTIATE_TEST_SUITE_P(Scales, TextFitElsewhere,
                         testing::Values(Surroundings{"1", "de_DE.UTF-8"}, Surroundings{"1.5", "cs_CZ.UTF-8"},
                                         Surroundings{"2", "de_DE.UTF-8"}));

// A pen hits the bar's buttons, the menus' titles and the tabs.
TEST(TouchTargets, AreLargeEnoughForAPen) {
  int buttons = 0;
  VisitWindows([&buttons](const std::string& name, QWidget& window) {
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || !button->objectName().startsWith(QLatin1String("button_"))) continue;
      ++buttons;
      EXPECT_GE(button->width(), 32) << name << Called(*button);
      EXPECT_GE(button->height(), 32) << name << Called(*button);
    }
  });
  EXPECT_GT(buttons, 60);
}

TEST(TouchTargets, OfMenusAndTabsAreHighEnoughForAPen) {
  int titles = 0, tabs = 0;
  VisitWindows([&](const std::string& name, QWidget& window) {
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
      for (QAction* title : bar->actions()) {
        ++titles;
        EXPECT_GE(bar->actionGeometry(title).height(), 32) << name << title->text().toStdString();
      }
    }
    for (const QTabBar* bar : window.findChildren<QTabBar*>()) {
      for (int tab = 0; tab < bar->count(); ++tab, ++tabs) EXPECT_GE(bar->tabRect(tab).height(), 32) << name;
    }
  });
  EXPECT_GT(titles, 16);
  EXPECT_GT(tabs, 32);
}

}  // namespace
}  // namespace celldesk
