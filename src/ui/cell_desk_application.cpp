#include "ui/cell_desk_application.h"

#include "platform/instance.h"
#include "ui/commands.h"
#include "ui/file_opening.h"
#include "ui/file_types.h"
#include "ui/framework/menu_template.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kAccelerators = 190;

}  // namespace

CellDeskApplication::CellDeskApplication(int& argument_count, char** arguments,
                                         const MachineServices& machine)
    : Application(argument_count, arguments),
      machine_(machine),
      link_(machine.ports, machine.threads, machine.registry,
            machine.waiter != nullptr ? *machine.waiter : *this),
      engine_(link_, machine.waiter != nullptr ? *machine.waiter : *this),
      sms_(engine_) {}

CellDeskApplication::~CellDeskApplication() = default;

// The command bar's tool tips and menus show the keys, so the table comes before the frame.
bool CellDeskApplication::InitInstance(std::u16string_view command_line, bool /*show*/) {
  if (WakeOther(command_line) || !RegisterWindowClass()) return false;
  RegisterFileTypes(machine_.registry, machine_.shell);
  SetAccelerators(LoadAccelerators(kAccelerators));
  frame_ = std::make_unique<MainFrame>(
      ProgramServices{link_, engine_, sms_, machine_.registry, machine_.locale, machine_.shell,
                      machine_.port_list, machine_.port_inspector, machine_.files, machine_.contacts});
  if (!frame_->Create(LoadString(text::kCaption))) return false;
  Announce();
  OpenFile(*frame_, machine_.files, command_line);
  return true;
}

// A start with a file to open goes on in full, beside a window that runs already.
bool CellDeskApplication::WakeOther(std::u16string_view command_line) {
  return command_line.empty() && machine_.instances != nullptr && machine_.instances->WakeOther();
}

void CellDeskApplication::Announce() {
  if (machine_.instances == nullptr) return;
  machine_.instances->Announce([this] { frame_->Dispatch(Message::kShowYourself, 0, 0); });
}

int CellDeskApplication::ExitInstance(int result) {
  if (machine_.instances != nullptr) machine_.instances->Withdraw();
  frame_.reset();
  UnregisterWindowClass();
  return result;
}

}  // namespace celldesk
