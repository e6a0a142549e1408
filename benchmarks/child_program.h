#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace celldesk::bench {

/// A program in a process of its own, its standard output in a pipe. It is ended, and waited for, when the
/// object goes.
class ChildProgram {
 public:
  /// `name` is one of the programs built beside this one.
  explicit ChildProgram(const std::string& name, const std::vector<std::string>& arguments = {});
  ~ChildProgram();
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  pid_t id() const { return id_; }
  /// The next line of the output, without its end; empty at the end of it.
  std::string ReadLine() const;

 private:
  pid_t id_ = -1;
  int output_ = -1;
};

}  // namespace celldesk::bench
