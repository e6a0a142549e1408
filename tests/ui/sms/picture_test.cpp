#include <QWidget>

#include "ui/framework/qt/native.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

constexpr QSize kSmallestScreen(640, 240);

// The window as it is opened, and its smallest size, both stay on the smallest screen.
void ExpectFits(Dialog& dialog, const QString& name) {
  QWidget* widget = WidgetOf(&dialog);
  EXPECT_LE(widget->width(), kSmallestScreen.width()) << name.toStdString();
  EXPECT_LE(widget->height(), kSmallestScreen.height()) << name.toStdString();
  EXPECT_LE(widget->minimumSizeHint().width(), kSmallestScreen.width()) << name.toStdString();
  EXPECT_LE(widget->minimumSizeHint().height(), kSmallestScreen.height()) << name.toStdString();
  Photograph(dialog, name + QStringLiteral("_opened"));
  widget->resize(kSmallestScreen);
  Photograph(dialog, name);
}

TEST(SmsDialog, ViewerFitsTheSmallestScreen) {
  SmsWindow window;
  window.LoadNames();
  window.Load();
  window.Select(window.inbox(), {2});
  window.InDialog(command::kOpen, [](Dialog& dialog) { ExpectFits(dialog, QStringLiteral("viewer")); });
  Photograph(window.frame(), QStringLiteral("inbox"));
}

TEST(SmsDialog, EditorFitsTheSmallestScreen) {
  SmsWindow window;
  window.LoadNames();
  window.Load();
  window.ShowFolder(kOutboxTab);
  window.Select(window.outbox(), {0});
  window.InDialog(command::kOpen, [](Dialog& dialog) {
    dialog.SetText(editor::kBody, std::u16string(155, u'\u00E9') + u"\u010D\u20AC");
    ExpectFits(dialog, QStringLiteral("editor"));
  });
  Photograph(window.frame(), QStringLiteral("outbox"));
}

TEST(SmsDialog, ChooserFitsTheSmallestScreen) {
  SmsWindow window;
  window.LoadNames();
  window.InDialog(command::kNew, [&](Dialog& dialog) {
    window.InDialog([&] { dialog.Dispatch(Message::kCommand, editor::kBrowse, 0); },
                    [](Dialog& inner) { ExpectFits(inner, QStringLiteral("chooser")); });
  });
}

}  // namespace
}  // namespace celldesk
