#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <utility>

#include "platform/port_obstacle.h"

namespace celldesk {

/// Looks for a device's holder in the kernel's table of locks, then among the open files of the processes
/// that the user may see. On a pseudo-terminal only a lock keeps others out: the program behind it has it
/// open anyway.
class PosixPortInspector : public PortInspector {
 public:
  /// `processes` is the kernel's process tree.
  explicit PosixPortInspector(std::filesystem::path processes = "/proc") : processes_(std::move(processes)) {}

  PortObstacle DescribeHolder(std::u16string_view device) override;

 private:
  int LockHolder(const struct stat& device) const;
  int OpenHolder(const struct stat& device) const;
  bool HasOpen(const std::filesystem::path& process, const struct stat& device) const;
  PortObstacle Held(int process_id) const;

  const std::filesystem::path processes_;
};

}  // namespace celldesk
