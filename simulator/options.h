#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simulator/fault.h"
#include "simulator/profile.h"

namespace celldesk::simulator {

/// What the command line of celldesk-phone asks for.
struct Options {
  std::string port_name = "Simulated phone";
  std::string state_path;
  Profile profile;
  int baud = 0;
  int latency_ms = 0;
  std::vector<Fault> faults;
  bool filled = false;
  unsigned seed = 1;
  bool verbose = false;
  bool show_help = false;
  bool show_profiles = false;
  std::string error;  // why the command line is wrong; empty when it is right
};

/// The arguments after the program's name.
Options ParseOptions(const std::vector<std::string>& arguments);

std::string HelpText();
std::string ProfileListText();

}  // namespace celldesk::simulator
