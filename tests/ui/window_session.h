#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/shell.h"
#include "support/fake_locale.h"
#include "support/fake_port_list.h"
#include "support/fake_registry.h"
#include "support/fake_thread.h"
#include "support/manual_waiter.h"
#include "support/simulated_line.h"
#include "ui/cell_desk_application.h"
#include "ui/framework/message_box.h"

namespace celldesk {

/// A shell that remembers what it was asked to open.
class FakeShell : public Shell {
 public:
  bool OpenHelp(std::u16string_view topic) override {
    opened.emplace_back(topic);
    return works;
  }
  std::u16string ProgramPath() const override { return u"/usr/bin/celldesk"; }
  bool RegistersFileTypes() const override { return false; }

  std::vector<std::u16string> opened;
  bool works = true;
};

/// The real window off-screen, on a simulated phone in the same process, without time: procedures run by the
/// waiter's clock. Message boxes are answered from `boxes`.
class WindowSession {
 public:
  explicit WindowSession(simulator::PhoneMemory memory = {}, simulator::Profile profile = {});
  ~WindowSession();
  WindowSession(const WindowSession&) = delete;
  WindowSession& operator=(const WindowSession&) = delete;

  /// Starts the program; false when the frame could not be made.
  bool Start();
  MainFrame& frame() { return *application->frame(); }
  AddressBookView& sim() { return frame().sim_view(); }
  AddressBookView& phone_book() { return frame().phone_view(); }
  simulator::SimulatedPhone& phone() { return line.phone(); }

  /// Gives a command the way a menu does, then handles what waits.
  void Command(int command);
  void Pump();
  /// Selects a folder by its index.
  void ShowFolder(int index);
  /// "id|name|number" of every row, in display order.
  static std::vector<std::string> Rows(AddressBookView& view);
  /// Texts of the boxes asked so far, then forgets them.
  std::vector<std::string> TakeAsked();
  /// The next modal dialog is worked by `work`.
  void InNextDialog(std::function<void(Dialog& dialog)> work);
  /// Selects the rows and only these.
  static void SelectRows(AddressBookView& view, const std::vector<int>& rows);

  FakeRegistry registry;
  FakeLocale locale;
  FakeShell shell;
  FakePortList port_list;
  FakePortInspector port_inspector;
  FakeThreadStarter threads;
  ManualWaiter waiter;
  SimulatedLine line;
  MessageBoxScript boxes;
  std::unique_ptr<CellDeskApplication> application;

 private:
  std::size_t asked_before_ = 0;
};

/// Strings of UTF-8 for what a test expects.
std::string Utf8(std::u16string_view text);

/// A phone with these entries in memory "SM": location, number, name.
struct TestEntry {
  int index;
  std::string number;
  std::u16string name;
};
simulator::PhoneMemory PhoneWith(const std::vector<TestEntry>& sim, int sim_last = 50,
                                 const std::vector<TestEntry>& phone = {}, int phone_last = 50);

}  // namespace celldesk
