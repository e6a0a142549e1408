#pragma once

#include "platform/posix/descriptor.h"

namespace celldesk {

/// A flag that a poll can wait for. Any thread may raise it; it stays up until Take.
class WakeSignal {
 public:
  WakeSignal();

  bool valid() const { return event_.valid(); }
  /// Readable (POLLIN) while the flag is up.
  int descriptor() const { return event_.get(); }
  void Raise();
  /// Lowers the flag; true when it was up.
  bool Take();

 private:
  Descriptor event_;
};

}  // namespace celldesk
