#pragma once

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace celldesk {

/// Another process, for what one process cannot see by itself. Its body's result is the exit code. It is
/// killed, and waited for, when the object goes.
class ChildProcess {
 public:
  explicit ChildProcess(const std::function<int()>& body) : id_(::fork()) {
    if (id_ == 0) ::_exit(body());
  }
  ~ChildProcess() { Kill(); }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t id() const { return id_; }
  /// The body's result, or -1 when a signal ended it.
  int ExitCode() {
    int status = 0;
    ::waitpid(id_, &status, 0);
    id_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void Kill() {
    if (id_ <= 0) return;
    ::kill(id_, SIGKILL);
    (void)ExitCode();
  }

 private:
  pid_t id_;
};

/// In a child: drops root's rights, which pass every check of permissions.
inline void BecomeOrdinaryUser() {
  constexpr uid_t kNobody = 65534;
  if (::geteuid() != 0) return;
  if (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0) ::_exit(99);
}

}  // namespace celldesk
