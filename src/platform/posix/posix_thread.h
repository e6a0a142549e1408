#pragma once

#include "platform/thread.h"

namespace celldesk {

/// Starts threads of the system. Priorities are nice values, where the user may set them.
class PosixThreadStarter : public ThreadStarter {
 public:
  std::unique_ptr<Thread> Start(std::function<void()> body) override;
};

}  // namespace celldesk
