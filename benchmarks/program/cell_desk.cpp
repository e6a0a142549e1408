// The program as main() runs it. Without arguments it ends at its first paint; with --connect it connects by
// the command of its menu, says "connected", and goes on.
#include "first_paint.h"
#include "program.h"
#include "ui/cell_desk_application.h"
#include "ui/commands.h"

namespace {

void Connect(celldesk::CellDeskApplication& application) {
  application.frame()->OnCommand(celldesk::command::kConnect, 0);
  std::puts(application.frame()->IsConnected() ? "connected" : "failed");
  std::fflush(stdout);
}

}  // namespace

int main(int argument_count, char** arguments) {
  const bool connect = argument_count > 1 && QByteArray(arguments[1]) == "--connect";
  celldesk::Program program(argument_count, arguments);
  celldesk::CellDeskApplication& application = program.application();
  if (!connect) {
    const celldesk::bench::FirstPaint watch;
    return program.Run({});
  }
  if (!application.InitInstance({}, true)) return 1;
  application.Post([&application] { Connect(application); });
  return application.ExitInstance(application.Run(nullptr));
}
