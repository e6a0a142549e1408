#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QWidget>

#include "ui/framework/qt/native.h"
#include "ui/settings/settings_window.h"

namespace celldesk {
namespace {

constexpr QSize kSmallestScreen(640, 240);

// Keeps a picture when the environment names a folder for them.
void Photograph(QWidget* widget, const QString& name) {
  const QString folder = qEnvironmentVariable("CELLDESK_SCREENSHOTS");
  if (folder.isEmpty()) return;
  EXPECT_TRUE(widget->grab().save(folder + QStringLiteral("/settings_") + name + QStringLiteral(".png")));
}

bool MayWrap(const QWidget* widget) {
  const auto* label = qobject_cast<const QLabel*>(widget);
  return label != nullptr && label->wordWrap();
}

// Every control that is seen lies inside the window and has the room its text needs.
void ExpectWhole(QWidget* window) {
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    const bool is_control = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                            qobject_cast<QLabel*>(widget) != nullptr ||
                            qobject_cast<QComboBox*>(widget) != nullptr;
    if (!is_control || !widget->isVisible()) continue;
    const QRect place(widget->mapTo(window, QPoint()), widget->size());
    const std::string name = widget->objectName().toStdString();
    EXPECT_TRUE(window->rect().contains(place)) << name;
    EXPECT_GE(widget->height(),
              MayWrap(widget) ? widget->heightForWidth(widget->width()) : widget->minimumSizeHint().height())
        << name;
    if (!MayWrap(widget)) {
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << name;
    }
  }
}

void ExpectFits(Dialog& dialog, const QString& name) {
  QWidget* widget = WidgetOf(&dialog);
  EXPECT_LE(widget->width(), kSmallestScreen.width());
  EXPECT_LE(widget->height(), kSmallestScreen.height());
  ExpectWhole(widget);
  Photograph(widget, name);
  widget->resize(kSmallestScreen);
  EXPECT_EQ(widget->size(), kSmallestScreen);
  ExpectWhole(widget);
  Photograph(widget, name + QStringLiteral("_640"));
}

TEST(SettingsDialog, GeneralPageFitsTheSmallestScreen) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) { ExpectFits(dialog, QStringLiteral("general")); });
}

TEST(SettingsDialog, LongestPortStateFitsTheSmallestScreen) {
  SettingsWindow window;
  window.port_inspector.obstacles[u"/dev/ttyUSB0"] = {
      PortObstacle::Kind::kNoPermission, u"dialout-and-modem-users", {}, 0};
  window.Look([](SettingsDialog& dialog) { ExpectFits(dialog, QStringLiteral("general_obstacle")); });
}

TEST(SettingsDialog, OperatorPageFitsTheSmallestScreen) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    PickOperator(dialog, "Australia", "Optus Mobile");
    ExpectFits(dialog, QStringLiteral("operator"));
  });
}

TEST(SettingsDialog, SmsPageFitsTheSmallestScreen) {
  SettingsWindow window;
  window.Look([](SettingsDialog& dialog) {
    ClickTab(dialog, kSmsTab);
    ExpectFits(dialog, QStringLiteral("sms"));
  });
}

TEST(PortDialog, FitsTheSmallestScreen) {
  SettingsWindow window;
  window.Look([&](SettingsDialog& dialog) {
    window.EditPort(dialog, [](PortDialog& port) { ExpectFits(port, QStringLiteral("port")); });
  });
}

}  // namespace
}  // namespace celldesk
