#include "platform/posix/port_paths.h"

#include "platform/posix/runtime_folder.h"

namespace celldesk {

PortPaths PortPaths::OfThisMachine() {
  const RuntimeFolder runtime = RuntimeFolder::OfThisUser();
  return {"/sys", "/dev", runtime.path / "ports", runtime.in_shared_place};
}

}  // namespace celldesk
