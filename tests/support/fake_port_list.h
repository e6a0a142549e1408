#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/port_list.h"
#include "platform/port_obstacle.h"

namespace celldesk {

/// A machine with the ports that a test plugs in.
class FakePortList : public PortList {
 public:
  std::vector<PortInfo> ActivePorts() override {
    ++asked;
    return ports;
  }

  /// Plugs a device in as the last port.
  void Add(std::u16string name, std::u16string display_text, std::u16string device) {
    const std::u16string id = device;
    ports.push_back({std::move(name), std::move(display_text), std::move(device), id});
  }

  std::vector<PortInfo> ports;
  int asked = 0;
};

/// Answers with the obstacle that a test put in a device's way; none without.
class FakePortInspector : public PortInspector {
 public:
  PortObstacle DescribeHolder(std::u16string_view device) override {
    const auto found = obstacles.find(std::u16string(device));
    return found == obstacles.end() ? PortObstacle() : found->second;
  }

  std::map<std::u16string, PortObstacle> obstacles;
};

}  // namespace celldesk
