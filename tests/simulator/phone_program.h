#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace celldesk::simulator {

/// A program in a process of its own, its standard output (and error) in a pipe.
class Program {
 public:
  Program(const std::string& path, const std::vector<std::string>& arguments) {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    process_ = fork();
    if (process_ == 0) {
      dup2(ends[1], STDOUT_FILENO);
      dup2(ends[1], STDERR_FILENO);
      std::vector<char*> words{const_cast<char*>(path.c_str())};
      for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
      words.push_back(nullptr);
      execvp(path.c_str(), words.data());
      _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      static_cast<void>(Wait());
    }
    if (output_ >= 0) close(output_);
  }

  /// The next line of the output, without its end; empty at the end of it.
  std::string ReadLine() {
    std::string line;
    for (char byte; read(output_, &byte, 1) == 1 && byte != '\n';) line += byte;
    return line;
  }

  std::string ReadAll() {
    std::string text;
    for (char byte; read(output_, &byte, 1) == 1;) text += byte;
    return text;
  }

  void Signal(int number) { kill(process_, number); }

  /// The exit code; -1 when it ended otherwise.
  int Wait() {
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t process_ = -1;
  int output_ = -1;
};

}  // namespace celldesk::simulator
