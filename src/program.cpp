#include "program.h"

#include <cstdlib>

#include "data/contacts_exchange.h"
#include "link/line_trace.h"
#include "platform/posix/posix_file.h"
#include "platform/posix/posix_file_adder.h"
#include "platform/posix/posix_instance.h"
#include "platform/posix/posix_port_inspector.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/posix_thread.h"
#include "platform/qt/qt_locale.h"
#include "platform/qt/qt_read_watcher.h"
#include "platform/qt/qt_registry.h"
#include "platform/qt/qt_shell.h"
#include "platform/vdir/vcard_folder.h"
#include "platform/vdir/vdir_contacts_database.h"
#include "ui/cell_desk_application.h"

namespace celldesk {

struct Program::Machine {
  Machine(int& argument_count, char** arguments)
      : ports(registry),
        opener(ports),
        application(argument_count, arguments,
                    MachineServices{opener, threads, registry, locale, shell, ports, inspector, files,
                                    contacts, nullptr, &instances}) {
    application.PostAfterPaint(
        [this] { static_cast<void>(OfferContactsDatabase(registry, DefaultContactsFolder)); });
    const char* trace = std::getenv("CELLDESK_TRACE");
    if (trace != nullptr) application.link().set_trace(LineTrace::ToFile(trace));
  }

  QtRegistry registry;
  PosixPortList ports;
  PosixPortOpener opener;
  PosixPortInspector inspector;
  PosixFileSystem files;
  PosixFileAdder adder;
  VdirContactsDatabase contacts{files, adder};
  PosixThreadStarter threads;
  QtLocale locale;
  QtShell shell;
  PosixInstanceGate instances{std::make_unique<QtReadWatcher>()};
  CellDeskApplication application;
};

Program::Program(int& argument_count, char** arguments)
    : machine_(std::make_unique<Machine>(argument_count, arguments)) {}

Program::~Program() = default;

CellDeskApplication& Program::application() { return machine_->application; }

int Program::Run(std::u16string_view command_line) { return machine_->application.Main(command_line); }

}  // namespace celldesk
