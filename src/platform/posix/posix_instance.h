#pragma once

#include <filesystem>
#include <memory>

#include "platform/instance.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/runtime_folder.h"
#include "platform/read_watcher.h"

namespace celldesk {

/// One socket per window in the folder "windows" of the user's runtime folder, named after its process. A
/// socket that its window left behind answers nobody and is removed by the next that looks.
class PosixInstanceGate : public InstanceGate {
 public:
  explicit PosixInstanceGate(std::unique_ptr<ReadWatcher> watcher,
                             const RuntimeFolder& folder = RuntimeFolder::OfThisUser());
  ~PosixInstanceGate() override;
  PosixInstanceGate(const PosixInstanceGate&) = delete;
  PosixInstanceGate& operator=(const PosixInstanceGate&) = delete;

  bool WakeOther() override;
  void Announce(std::function<void()> show) override;
  void Withdraw() override;

 private:
  bool MakeFolder() const;
  void Receive(const std::function<void()>& show) const;

  const RuntimeFolder folder_;
  std::filesystem::path own_;  // the announced socket; empty before
  Descriptor socket_;
  const std::unique_ptr<ReadWatcher> watcher_;
};

}  // namespace celldesk
