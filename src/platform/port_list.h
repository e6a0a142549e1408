#pragma once

#include <string>
#include <vector>

namespace celldesk {

/// A serial port that the machine offers.
struct PortInfo {
  std::u16string name;          ///< "COM1:" to "COM9:"; stays with the device
  std::u16string display_text;  ///< what the user sees; the name when the device tells nothing better
  std::u16string device;        ///< the system's own name of the device, e.g. "/dev/ttyUSB0"
  std::u16string stable_id;     ///< the same whenever the same device is plugged in again
};

/// The active serial ports, in the order of their names.
class PortList {
 public:
  virtual ~PortList() = default;
  /// What is there now. A device seen for the first time takes the first free name; beyond nine it is left
  /// out.
  virtual std::vector<PortInfo> ActivePorts() = 0;
};

}  // namespace celldesk
