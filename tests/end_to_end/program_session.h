#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "program.h"
#include "support/temporary_folder.h"
#include "ui/cell_desk_application.h"
#include "ui/framework/message_box.h"

namespace celldesk {

/// A home without a trace of the program: its settings, the runtime directory and what a test keeps.
class FreshHome {
 public:
  FreshHome();
  std::string File(const std::string& name) const { return (folder_.path() / name).string(); }

 private:
  TemporaryFolder folder_;
};

/// What a user writes in the editor.
struct Writing {
  std::string number;
  std::u16string text;
  int validity = 3;  ///< place in the list: 1 hour, 12 hours, 1 day, 1 week, maximum
  bool report = false;
  bool reply_path = false;
  int save_to = 0;  ///< place in the list: do not save, SIM memory, phone memory
};

/// The whole program with this machine's own back ends, its window off-screen. Everything is done by
/// commands, keys and clicks; message boxes are answered with No or OK.
class ProgramSession {
 public:
  ProgramSession();
  ~ProgramSession();
  ProgramSession(const ProgramSession&) = delete;
  ProgramSession& operator=(const ProgramSession&) = delete;

  MainFrame& frame() { return *program_->application().frame(); }
  /// Gives a command the way a menu does; it is done when this returns.
  void Command(int command);
  void ShowFolder(int index);
  /// Gives the command and works the dialog that it opens; the test fails when none opens.
  void InDialog(int command, const std::function<void(Dialog& dialog)>& work);
  /// Turns the adapter on in the settings dialog.
  void UseAdapter();
  /// Writes a new message and ends the editor with Send.
  void Write(const Writing& writing);
  /// The texts of all message boxes so far, UTF-8.
  std::vector<std::string> Asked() const;

 private:
  void Pump();

  int argument_count_ = 1;
  char name_[9] = "celldesk";
  char* arguments_[2] = {name_, nullptr};
  std::unique_ptr<Program> program_;
  MessageBoxScript boxes_;
};

}  // namespace celldesk
