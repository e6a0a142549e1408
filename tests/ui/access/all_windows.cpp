#include "ui/access/all_windows.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "ui/framework/progress_dialog.h"
#include "ui/framework/qt/native.h"
#include "ui/settings_dialog.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

constexpr const char* kFolders[] = {"Address-SIM", "Address-MT", "Inbox", "Outbox"};

// The window is worked once it has the keyboard.
void Show(const std::string& name, QWidget& window, const Visit& visit) {
  window.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; }, 30000)) << name;
  visit(name, window);
}

void Show(const std::string& name, const Window& window, const Visit& visit) {
  Show(name, *WidgetOf(&window), visit);
}

void VisitEachFolder(WindowSession& session, const std::string& state, const Visit& visit) {
  for (int folder = 0; folder < 4; ++folder) {
    session.ShowFolder(folder);
    Show(kFolders[folder] + state, session.frame(), visit);
  }
}

// What a command of a folder opens.
void VisitCommand(SmsWindow& window, const std::string& name, int command, const Visit& visit) {
  window.InDialog(command, [&](Dialog& dialog) { Show(name, dialog, visit); });
}

void VisitBookDialogs(SmsWindow& window, const Visit& visit) {
  window.ShowFolder(kSimTab);
  WindowSession::SelectRows(window.sim(), {0});
  VisitCommand(window, "Edit item", command::kOpen, visit);
  VisitCommand(window, "New item", command::kNew, visit);
  VisitCommand(window, "Import", command::kImport, visit);
  VisitCommand(window, "Export", command::kExport, visit);
  VisitCommand(window, "About", command::kAbout, visit);
}

void VisitMessageDialogs(SmsWindow& window, const Visit& visit) {
  window.ShowFolder(kInboxTab);
  window.Load();
  window.Select(window.inbox(), {0});
  VisitCommand(window, "Viewer", command::kOpen, visit);
  window.ShowFolder(kOutboxTab);
  VisitCommand(window, "Editor", command::kNew, visit);
  window.InDialog(command::kNew, [&](Dialog& outer) {
    window.InDialog([&] { outer.Dispatch(Message::kCommand, editor::kBrowse, 0); },
                    [&](Dialog& inner) { Show("Chooser", inner, visit); });
  });
  window.Select(window.outbox(), {0});
  VisitCommand(window, "Editor of a stored message", command::kOpen, visit);
}

void VisitSettings(SmsWindow& window, const Visit& visit) {
  window.port_list.Add(u"COM1:", u"Data cable", u"/dev/ttyUSB0");
  for (int page = 0; page < 3; ++page) {
    window.InDialog(command::kSettings, [&](Dialog& dialog) {
      ClickTab(dialog, page);
      Show("Settings page " + std::to_string(page), dialog, visit);
    });
  }
  window.InDialog(command::kSettings, [&](Dialog& dialog) {
    auto& settings = dynamic_cast<SettingsDialog&>(dialog);
    window.InDialog([&] { ClickDialogButton(settings.general(), GeneralPage::kPortSettings); },
                    [&](Dialog& port) { Show("Port", port, visit); });
  });
}

void VisitProgress(const Visit& visit) {
  SmsWindow window;
  ProgressDialog progress;
  progress.Create(&window.frame());
  progress.SetCaption(u"Address-SIM");
  progress.SetLine(u"Progress 10 of 250...");
  Show("Progress", progress, visit);
  progress.Close();
}

void VisitBox(const std::string& name, BoxButtons buttons, const Visit& visit) {
  int count = 1;
  char program[] = "celldesk";
  char* arguments[] = {program, nullptr};
  const Application application(count, arguments);
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    timer.stop();
    Show(name, *box, visit);
    if (box->isVisible()) box->reject();
  });
  timer.start(1);
  ShowMessageBox(
      nullptr, {u"You changed SMS message(s). Do you want to exit?", {}, buttons, BoxIcon::kQuestion, false});
}

bool IsReachable(const QWidget& control, const QWidget& window) {
  return control.window() == &window && control.isVisible() && control.isEnabled() &&
         (control.focusPolicy() & Qt::TabFocus) != 0 && control.focusProxy() == nullptr;
}

}  // namespace

void VisitFolders(const Visit& visit) {
  {
    WindowSession session;
    ASSERT_TRUE(session.Start());
    VisitEachFolder(session, ", empty", visit);
  }
  SmsWindow window;
  window.LoadNames();
  window.Load();
  VisitEachFolder(window, "", visit);
}

void VisitDialogs(const Visit& visit) {
  {
    SmsWindow window;
    window.LoadNames();
    VisitBookDialogs(window, visit);
    VisitMessageDialogs(window, visit);
    VisitSettings(window, visit);
  }
  VisitProgress(visit);
  VisitBox("Question", BoxButtons::kYesNo, visit);
  VisitBox("Question with Cancel", BoxButtons::kYesNoCancel, visit);
  VisitBox("Message", BoxButtons::kOk, visit);
}

void VisitWindows(const Visit& visit) {
  VisitFolders(visit);
  VisitDialogs(visit);
}

std::vector<QWidget*> ReachableControls(QWidget& window) {
  std::vector<QWidget*> controls;
  for (QWidget* control : window.findChildren<QWidget*>()) {
    if (IsReachable(*control, window)) controls.push_back(control);
  }
  return controls;
}

std::string Called(const QWidget& control) {
  return std::string(control.metaObject()->className()) + " " + control.objectName().toStdString() + " \"" +
         control.accessibleName().toStdString() + "\"";
}

}  // namespace celldesk
