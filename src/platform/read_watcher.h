#pragma once

#include <functional>

namespace celldesk {

/// Calls back on the interface thread, from the message loop, while a descriptor has something to read.
class ReadWatcher {
 public:
  virtual ~ReadWatcher() = default;
  /// One descriptor at a time; it stays the caller's, who keeps it open until Stop.
  virtual void Watch(int descriptor, std::function<void()> readable) = 0;
  virtual void Stop() = 0;
};

}  // namespace celldesk
