#pragma once

#include <functional>
#include <string_view>

namespace celldesk {

/// The program's windows of one user, as its other starts see them. Interface thread only.
class InstanceGate {
 public:
  virtual ~InstanceGate() = default;
  /// Asks a window that has announced itself to show itself; false when there is none.
  virtual bool WakeOther() = 0;
  /// From now on `show` is called, from the message loop, whenever another start asks for it. Where the
  /// window cannot be announced later starts do not find it, and nothing else happens.
  virtual void Announce(std::function<void()> show) = 0;
  /// The window is gone: no start finds it from now on.
  virtual void Withdraw() = 0;
};

}  // namespace celldesk
