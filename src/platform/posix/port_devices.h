#pragma once

#include <string>
#include <vector>

#include "platform/posix/port_paths.h"

namespace celldesk {

/// A serial device that is there now.
struct PortDevice {
  std::string device;        ///< "/dev/ttyUSB0"
  std::string stable_id;     ///< the same whenever this device is plugged in again
  std::string display_text;  ///< empty when the device tells nothing of itself
};

/// The ports of the link folder, which somebody put there on purpose, then the serial devices with real
/// hardware behind them, each in the order of their names. What the stable id is made of:
///   a USB device with a serial number  "usb:VENDOR:PRODUCT:SERIAL:INTERFACE"
///   any other device of the system     "path:" and its place in the device tree (the USB socket included)
///   (and a USB device whose serial number another one has, too)
///   a link                             "link:NAME"
/// Left out: consoles and pseudo-terminals, UARTs that the kernel found absent, links to nothing.
std::vector<PortDevice> FindPortDevices(const PortPaths& paths);

}  // namespace celldesk
