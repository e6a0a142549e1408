#pragma once

#include <memory>

#include "link/at_engine.h"
#include "link/phone_link.h"
#include "services/sms_service.h"
#include "ui/framework/application.h"
#include "ui/main_frame.h"

namespace celldesk {

class ContactsDatabase;
class FileSystem;
class InstanceGate;
class Locale;
class PortInspector;
class PortList;
class Registry;
class SerialPortOpener;
class Shell;
class ThreadStarter;

/// What the machine offers the program; borrowed for the whole run.
struct MachineServices {
  SerialPortOpener& ports;
  ThreadStarter& threads;
  Registry& registry;
  const Locale& locale;
  Shell& shell;
  PortList& port_list;
  PortInspector& port_inspector;
  FileSystem& files;
  ContactsDatabase& contacts;
  /// Lets time pass in phone procedures; null is the application itself.
  Waiter* waiter = nullptr;
  /// The user's other windows of the program; null is none, ever.
  InstanceGate* instances = nullptr;
};

/// The program: one link to the phone, the services on it, and the main window.
class CellDeskApplication : public Application {
 public:
  CellDeskApplication(int& argument_count, char** arguments, const MachineServices& machine);
  ~CellDeskApplication() override;

  bool InitInstance(std::u16string_view command_line, bool show) override;
  int ExitInstance(int result) override;

  /// Null before InitInstance and after the end.
  MainFrame* frame() { return frame_.get(); }
  PhoneLink& link() { return link_; }

 private:
  bool WakeOther(std::u16string_view command_line);
  void Announce();

  MachineServices machine_;
  PhoneLink link_;
  AtEngine engine_;
  SmsService sms_;
  std::unique_ptr<MainFrame> frame_;
};

}  // namespace celldesk
