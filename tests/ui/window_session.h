#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/instance.h"
#include "platform/shell.h"
#include "support/fake_contacts_database.h"
#include "support/fake_file_system.h"
#include "support/fake_locale.h"
#include "support/fake_port_list.h"
#include "support/fake_registry.h"
#include "support/fake_thread.h"
#include "support/manual_waiter.h"
#include "support/simulated_line.h"
#include "ui/cell_desk_application.h"
#include "ui/framework/file_dialog.h"
#include "ui/framework/message_box.h"

namespace celldesk {

/// Folders by the place of their tabs.
inline constexpr int kSimTab = 0, kPhoneTab = 1, kInboxTab = 2, kOutboxTab = 3;

/// A shell that remembers what it was asked to open.
class FakeShell : public Shell {
 public:
  bool OpenHelp(std::u16string_view topic) override {
    opened.emplace_back(topic);
    return works;
  }
  std::u16string ProgramPath() const override { return program_path; }
  std::u16string DataFolder() const override { return data_folder; }
  bool RegistersFileTypes() const override { return registers_file_types; }

  std::vector<std::u16string> opened;
  std::u16string program_path = u"/usr/bin/celldesk";
  std::u16string data_folder = u"/home/user/.local/share/celldesk";
  bool works = true;
  bool registers_file_types = false;
};

/// The user's other windows as a test wants them.
class FakeInstanceGate : public InstanceGate {
 public:
  bool WakeOther() override {
    woken += another_runs ? 1 : 0;
    return another_runs;
  }
  void Announce(std::function<void()> show) override { show_ = std::move(show); }
  void Withdraw() override { show_ = {}; }
  /// What another start does; false when no window is announced.
  bool AnotherStart() {
    if (show_) show_();
    return static_cast<bool>(show_);
  }

  bool another_runs = false;
  int woken = 0;

 private:
  std::function<void()> show_;
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
  /// What the program runs on here.
  MachineServices Machine();
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
  FakeFileSystem files;
  FakeContactsDatabase contacts;
  FakeInstanceGate instances;
  FakeThreadStarter threads;
  ManualWaiter waiter;
  SimulatedLine line;
  MessageBoxScript boxes;
  FileDialogScript file_dialogs;
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
