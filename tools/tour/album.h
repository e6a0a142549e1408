#pragma once

#include <QSet>
#include <QSize>
#include <QString>
#include <functional>

#include "tour.h"

namespace celldesk {

/// Pictures of every window of the program on one screen, light and dark: WINDOW_VARIANT.png and
/// WINDOW_VARIANT_dark.png. A window without its picture, a picture of one colour and a window that is larger
/// than the screen are failed steps of the tour.
class Album {
 public:
  /// `variant` names the screen in the files' names.
  Album(Tour& tour, QString variant) : tour_(tour), variant_(std::move(variant)) {}

  /// The folders before anything was loaded, then everything. The phone must run and the window be open.
  void Fill();

  /// A picture of the top window, or of `window`, under the name of the present step.
  void Take();
  void Take(QWidget& window);

  /// One step: `show` brings the window up, takes it and closes it again.
  void Add(const char* name, const std::function<void()>& show);
  /// A step whose window a command opens.
  void AddDialog(const char* name, int command, const std::function<void(Dialog&)>& arrange = {});
  /// A step whose window is the toolkit's own; it comes up during `open`, and is closed once taken.
  void AddToolkitWindow(const char* name, const std::function<void()>& open);

  Tour& tour() { return tour_; }

 private:
  void InBothThemes(void (Album::*take)());
  void TakeEmptyFolders();
  void TakeFolders();
  void TakeMenus();
  void TakeBookDialogs();
  void TakeMessageDialogs();
  void TakeSettings();
  void TakeBoxes();
  void TakeAll();
  void LoadEverything();

  Tour& tour_;
  QString variant_;
  QString name_;
  bool dark_ = false;
  bool taken_ = false;
};

}  // namespace celldesk
