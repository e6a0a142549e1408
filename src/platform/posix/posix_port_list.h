#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/port_list.h"
#include "platform/posix/port_paths.h"
#include "platform/registry.h"

namespace celldesk {

/// The machine's serial ports. Which name belongs to which device is kept in the registry: under
/// "\Software\Corvane\CellDesk\Ports" of the current user the value "COM1:" holds the device's stable id.
///
/// A device that is absent keeps its name. A new device takes the lowest name that belongs to none; when all
/// nine belong to some, it takes the highest whose device is absent now; when all nine devices are there it
/// is left out.
class PosixPortList : public PortList {
 public:
  /// `registry` is borrowed.
  explicit PosixPortList(Registry& registry, PortPaths paths = PortPaths::OfThisMachine());

  std::vector<PortInfo> ActivePorts() override;

 private:
  void LoadNames();
  void StoreName(const std::u16string& name, const std::u16string& stable_id);

  Registry& registry_;
  const PortPaths paths_;
  /// Name to stable id; what could not be stored still holds for this run.
  std::map<std::u16string, std::u16string> owners_;
};

}  // namespace celldesk
