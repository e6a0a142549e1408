#include "child_program.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace celldesk::bench {

ChildProgram::ChildProgram(const std::string& name, const std::vector<std::string>& arguments) {
  const std::string path = std::string(CELLDESK_BIN_DIR) + "/" + name;
  std::vector<char*> words{const_cast<char*>(path.c_str())};
  for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC) != 0) return;
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  if (::posix_spawn(&id_, path.c_str(), &actions, nullptr, words.data(), environ) != 0) id_ = -1;
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  output_ = ends[0];
}

ChildProgram::~ChildProgram() {
  if (id_ > 0) {
    ::kill(id_, SIGTERM);
    ::waitpid(id_, nullptr, 0);
  }
  if (output_ >= 0) ::close(output_);
}

std::string ChildProgram::ReadLine() const {
  std::string line;
  for (char byte; ::read(output_, &byte, 1) == 1 && byte != '\n';) line += byte;
  return line;
}

}  // namespace celldesk::bench
