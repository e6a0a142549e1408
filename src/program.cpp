#include "program.h"

#include <cstdlib>

#include "link/line_trace.h"
#include "platform/posix/posix_port_inspector.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/posix_thread.h"
#include "platform/qt/qt_locale.h"
#include "platform/qt/qt_registry.h"
#include "platform/qt/qt_shell.h"
#include "ui/cell_desk_application.h"

namespace celldesk {

struct Program::Machine {
  Machine(int& argument_count, char** arguments)
      : ports(registry),
        opener(ports),
        application(argument_count, arguments,
                    MachineServices{opener, threads, registry, locale, shell, ports, inspector}) {
    const char* trace = std::getenv("CELLDESK_TRACE");
    if (trace != nullptr) application.link().set_trace(LineTrace::ToFile(trace));
  }

  QtRegistry registry;
  PosixPortList ports;
  PosixPortOpener opener;
  PosixPortInspector inspector;
  PosixThreadStarter threads;
  QtLocale locale;
  QtShell shell;
  CellDeskApplication application;
};

Program::Program(int& argument_count, char** arguments)
    : machine_(std::make_unique<Machine>(argument_count, arguments)) {}

Program::~Program() = default;

CellDeskApplication& Program::application() { return machine_->application; }

int Program::Run(std::u16string_view command_line) { return machine_->application.Main(command_line); }

}  // namespace celldesk
