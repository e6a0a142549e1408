#pragma once

#include <string>
#include <string_view>

namespace celldesk {

/// What stands in the way of opening a device.
struct PortObstacle {
  enum class Kind {
    kNone,          ///< nothing that can be seen
    kGone,          ///< there is no such device (any more)
    kNoPermission,  ///< the user may not read and write it
    kHeld,          ///< another process has it
  };

  Kind kind = Kind::kNone;
  std::u16string group;    ///< kNoPermission: whose members may use the device; empty when nobody's are
  std::u16string process;  ///< kHeld: the program's name; empty when it cannot be seen
  int process_id = 0;      ///< kHeld: its id; 0 when it cannot be seen

  friend bool operator==(const PortObstacle&, const PortObstacle&) = default;
};

/// Finds out why a port could not be opened, for a message that helps.
class PortInspector {
 public:
  virtual ~PortInspector() = default;
  /// `device` as in PortInfo. Looks at the present; opens nothing.
  virtual PortObstacle DescribeHolder(std::u16string_view device) = 0;
};

}  // namespace celldesk
