#pragma once

#include <QProcess>
#include <QString>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "program.h"
#include "ui/cell_desk_application.h"

namespace celldesk {

/// The program in its real window, off-screen, on the simulated phone in a process of its own. Every step is
/// clicks and keys in, and what the user would see out; each leaves a line in report.txt, and folders and
/// dialogs leave pictures.
class Tour {
 public:
  /// Everything is kept in `folder`: profile, the phone's state, report and pictures.
  Tour(int& argument_count, char** arguments, const QString& folder);
  ~Tour();

  /// Starts the phone program; false when it does not name its device in time.
  bool StartPhone(const QString& program);
  /// Stops the phone and reads what it kept of its memory.
  std::string PhoneState();

  /// One line of the report: "[ok] NAME" or "[FAILED] NAME".
  void Step(const char* name, const std::function<bool()>& step);
  bool all_passed() const { return failures_ == 0; }

  MainFrame& frame();
  CellDeskApplication& application() { return program_->application(); }

  /// Clicks a command-bar button, or chooses a menu item.
  void Click(int command);
  void Choose(int command);
  /// The same buttons, check boxes and fields in a dialog, by command or control number.
  void ClickIn(Dialog& dialog, int id);
  void TypeIn(Dialog& dialog, int id, std::u16string_view text);
  void PickIn(Dialog& dialog, int id, int choice);
  void ClickRow(ListView& list, int row);
  void DoubleClickRow(ListView& list, int row);
  void PressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void ShowFolder(int index);
  /// The next message box is photographed and answered; its text must hold `text`.
  void ExpectBox(const QString& text, int answer, const QString& picture = {});
  /// True when every expected box came.
  bool BoxesCame() const { return open_expectations_ == 0; }
  /// The next dialog is worked by `work` once it is on screen.
  void InNextDialog(std::function<void(Dialog&)> work);
  /// Waits until the condition holds, with the window alive; false after `patience` milliseconds.
  bool WaitUntil(const std::function<bool()>& condition, int patience = 20000);

  /// A picture of the top window: NAME.png. A picture that could not be taken is a failure; so says the end.
  bool Picture(const QString& name);
  bool Picture(const QString& name, QWidget& window);
  void Resize(int width, int height);
  void SetDark(bool dark);

 private:
  void Settle();

  QString folder_;
  std::ofstream report_;
  std::unique_ptr<Program> program_;
  QProcess phone_;
  int failures_ = 0;
  int open_expectations_ = 0;
};

/// A newcomer's first ten minutes, from the empty window to a message that is answered. Ends disconnected.
void TourNewcomer(Tour& tour);
/// The folders in turn.
void TourAddressBooks(Tour& tour);
void TourMessages(Tour& tour);
void TourWindow(Tour& tour);

}  // namespace celldesk
