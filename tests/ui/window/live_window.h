#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "config/settings_store.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/posix_thread.h"
#include "simulator/posix/pty_phone.h"
#include "support/fake_port_list.h"
#include "ui/window_session.h"

namespace celldesk {

/// The real window with everything real under it but the phone's body: the machine's threads and serial port,
/// and a simulated phone on a pseudo-terminal. Procedures wait by pumping messages, as in the program.
class LiveWindow {
 public:
  explicit LiveWindow(simulator::PhoneMemory memory, int latency_ms = 0, simulator::PtyOptions options = {})
      : phone(MakePhone(std::move(memory), latency_ms), std::move(options)), opener_(ports) {
    EXPECT_TRUE(phone.Start());
    FollowPhone();
    Settings settings;
    settings.centre = u"+447700900000";
    SettingsStore(registry).Save(settings);
    application_ = std::make_unique<CellDeskApplication>(
        argument_count_, arguments_,
        MachineServices{opener_, threads_, registry, locale_, shell, ports, inspector_, files_, contacts_});
    EXPECT_TRUE(application_->InitInstance({}, true));
    application_->PumpMessages();
  }
  ~LiveWindow() {
    Dialog::SetModalHook({});
    application_->ExitInstance(0);
  }
  LiveWindow(const LiveWindow&) = delete;
  LiveWindow& operator=(const LiveWindow&) = delete;

  CellDeskApplication& application() { return *application_; }
  MainFrame& frame() { return *application_->frame(); }
  AddressBookView& sim() { return frame().sim_view(); }

  void Command(int command) {
    frame().Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
    application_->PumpMessages();
    application_->IdleLoop();
  }

  /// After a hang-up: the phone is plugged in again if it is not, and the port leads to where it is now.
  void FollowPhone() {
    if (phone.device().empty()) {
      phone.Stop();
      EXPECT_TRUE(phone.Start());
    }
    ports.ports = {{u"COM1:", u"Phone", FromUtf8(phone.device()), u"phone"}};
  }

  /// As soon as `condition` holds while a command runs, `act` is done from the message loop, once.
  void Once(std::function<bool()> condition, std::function<void()> act) {
    auto* timer = new QTimer(&acting_);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, condition, act] {
      if (!condition()) return;
      timer->stop();
      act();
    });
    timer->start(1);
  }

  simulator::PtyPhone phone;
  FakePortList ports;
  FakeRegistry registry;
  FakeShell shell;
  MessageBoxScript boxes;

 private:
  static simulator::SimulatedPhone MakePhone(simulator::PhoneMemory memory, int latency_ms) {
    simulator::SimulatedPhone made(std::move(memory));
    made.AddLatency(latency_ms);
    return made;
  }

  int argument_count_ = 1;
  char name_[9] = "celldesk";
  char* arguments_[2] = {name_, nullptr};
  FakePortInspector inspector_;
  PosixPortOpener opener_;
  PosixThreadStarter threads_;
  FakeLocale locale_;
  FakeFileSystem files_;
  FakeContactsDatabase contacts_;
  std::unique_ptr<CellDeskApplication> application_;
  QObject acting_;
};

}  // namespace celldesk
