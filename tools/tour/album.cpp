#include "album.h"

#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QScreen>
#include <QTimer>

#include "ui/commands.h"
#include "ui/framework/qt/native.h"

namespace celldesk {
namespace {

constexpr int kFolders = 4;
constexpr const char* kNames[kFolders] = {"folder_address_sim", "folder_address_mt", "folder_inbox",
                                          "folder_outbox"};
constexpr const char* kEmptyNames[kFolders] = {"folder_address_sim_empty", "folder_address_mt_empty",
                                               "folder_inbox_empty", "folder_outbox_empty"};

bool IsPlain(const QImage& image) {
  const QRgb first = image.pixel(0, 0);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixel(x, y) != first) return false;
    }
  }
  return true;
}

QWidget& TopWindow(Tour& tour) {
  QWidget* top = QApplication::activeModalWidget();
  return top == nullptr ? *WidgetOf(&tour.frame()) : *top;
}

}  // namespace

void Album::Add(const char* name, const std::function<void()>& show) {
  name_ = QString("%1_%2%3").arg(QLatin1String(name), variant_, QLatin1String(dark_ ? "_dark" : ""));
  taken_ = false;
  tour_.Step(name_.toUtf8().constData(), [&] {
    show();
    return taken_;
  });
}

void Album::Take() { Take(TopWindow(tour_)); }

void Album::Take(QWidget& window) {
  QCoreApplication::processEvents();
  const QSize screen = window.screen()->size();
  const bool fits = window.width() <= screen.width() && window.height() <= screen.height();
  const bool shows_something = !IsPlain(window.grab().toImage());
  QCoreApplication::processEvents();  // what was painted may ask for room
  taken_ = fits && shows_something && tour_.Picture(name_, window);
}

void Album::AddDialog(const char* name, int command, const std::function<void(Dialog&)>& arrange) {
  Add(name, [&] {
    tour_.InNextDialog([&](Dialog& dialog) {
      if (arrange) arrange(dialog);
      if (!taken_) Take();
      dialog.Dispatch(Message::kCommand, kIdCancel, 0);
    });
    tour_.Choose(command);
  });
}

void Album::AddToolkitWindow(const char* name, const std::function<void()>& open) {
  Add(name, [&] {
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isActiveWindow()) return;
      watch.stop();
      Take(*dialog);
      dialog->reject();
    });
    watch.start(10);
    open();
  });
}

void Album::Fill() {
  InBothThemes(&Album::TakeEmptyFolders);
  LoadEverything();
  InBothThemes(&Album::TakeAll);
}

void Album::InBothThemes(void (Album::*take)()) {
  for (const bool dark : {false, true}) {
    dark_ = dark;
    tour_.SetDark(dark);
    (this->*take)();
  }
  tour_.SetDark(false);
}

void Album::TakeEmptyFolders() {
  for (int folder = 0; folder < kFolders; ++folder) {
    Add(kEmptyNames[folder], [&] {
      tour_.ShowFolder(folder);
      Take();
    });
  }
}

void Album::LoadEverything() {
  tour_.Step("Everything is loaded", [&] {
    tour_.ShowFolder(0);
    tour_.Choose(command::kConnect);
    for (const int folder : {0, 1, 2}) {
      tour_.ShowFolder(folder);
      tour_.Choose(command::kLoadData);
    }
    MainFrame& frame = tour_.frame();
    return frame.sim_view().list().RowCount() > 0 && frame.phone_view().list().RowCount() > 0 &&
           frame.inbox().list().RowCount() > 0;
  });
}

void Album::TakeFolders() {
  for (int folder = 0; folder < kFolders; ++folder) {
    Add(kNames[folder], [&] {
      tour_.ShowFolder(folder);
      tour_.ClickRow(tour_.frame().current_folder().list(), 1);
      Take();
    });
  }
}

void Album::TakeAll() {
  TakeFolders();
  TakeMenus();
  TakeBookDialogs();
  TakeMessageDialogs();
  TakeSettings();
  TakeBoxes();
}

}  // namespace celldesk
