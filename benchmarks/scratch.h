#pragma once

#include <filesystem>
#include <string>

namespace celldesk::bench {

/// A folder that goes when the object goes, and in it the profile that every program started from here
/// finds: settings, runtime folder, off-screen platform.
class Scratch {
 public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  /// A path in the folder of the one object there is.
  static std::filesystem::path Path(const std::string& name);
  /// An empty profile for the programs started from now on.
  static void NewProfile();
  /// One with settings of yesterday, in which the simulated phone is the first port.
  static void UsedProfile();
};

}  // namespace celldesk::bench
