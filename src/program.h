#pragma once

#include <memory>
#include <string_view>

namespace celldesk {

class CellDeskApplication;
class Shell;

/// The whole program with this machine's back ends: what main() runs, and what the tour and the end-to-end
/// tests drive.
class Program {
 public:
  /// `arguments` are borrowed for the whole run.
  Program(int& argument_count, char** arguments);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  CellDeskApplication& application();
  /// Runs until the window is closed; the exit code.
  int Run(std::u16string_view command_line);

 private:
  struct Machine;
  std::unique_ptr<Machine> machine_;
};

}  // namespace celldesk
