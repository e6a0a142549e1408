#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace celldesk {

/// What the kernel knows of a USB device, from its attribute files.
struct UsbDevice {
  std::string vendor_id, product_id;  ///< four hexadecimal digits each
  std::string serial;                 ///< empty when the device has none
  std::string interface_number;       ///< two hexadecimal digits; tells apart the ports of one device
  std::string manufacturer, product;  ///< as the device spells them; may be empty
  std::filesystem::path interface;  ///< the interface's folder; tells the socket, whatever the port is called

  /// "usb:VENDOR:PRODUCT:SERIAL:INTERFACE", or empty without a serial number: then two devices of one model
  /// can only be told apart by their sockets.
  std::string StableId() const;
  /// The product with its maker in front, unless the product's name says that already.
  std::string Title() const;
};

/// The USB device that the device at `place` belongs to, or none. `top` bounds the search upwards.
std::optional<UsbDevice> FindUsbDevice(const std::filesystem::path& place, const std::filesystem::path& top);

/// First line of an attribute file, without blanks at its ends; empty when it cannot be read.
std::string ReadAttribute(const std::filesystem::path& file);

}  // namespace celldesk
