#include "simulator/options.h"

#include <array>
#include <limits>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

/// Takes the value of an option; false when it does not fit.
using TakeValue = bool (*)(Options& options, const std::string& value);

bool TakeNumber(const std::string& value, int& number) {
  const auto parsed = ParseNumber(value);
  if (!parsed || *parsed < 0) return false;
  number = *parsed;
  return true;
}

bool TakePort(Options& options, const std::string& value) {
  options.port_name = value;
  return !value.empty() && value.find('/') == value.npos && !value.starts_with('.');
}

bool TakeState(Options& options, const std::string& value) {
  options.state_path = value;
  return !value.empty();
}

bool TakeProfile(Options& options, const std::string& value) {
  const auto profile = MakeProfile(value);
  if (profile) options.profile = *profile;
  return profile.has_value();
}

bool TakeBaud(Options& options, const std::string& value) { return TakeNumber(value, options.baud); }

bool TakeLatency(Options& options, const std::string& value) { return TakeNumber(value, options.latency_ms); }

bool TakeSeed(Options& options, const std::string& value) {
  int seed = 0;
  const bool fits = TakeNumber(value, seed);
  options.seed = static_cast<unsigned>(seed);
  return fits;
}

bool TakeFault(Options& options, const std::string& value) {
  const auto fault = ParseFault(value);
  if (fault) options.faults.push_back(*fault);
  return fault.has_value();
}

struct ValueOption {
  std::string_view name;
  TakeValue take;
};

constexpr std::array<ValueOption, 7> kValueOptions{{{"--port", TakePort},
                                                    {"--state", TakeState},
                                                    {"--profile", TakeProfile},
                                                    {"--baud", TakeBaud},
                                                    {"--latency", TakeLatency},
                                                    {"--seed", TakeSeed},
                                                    {"--fault", TakeFault}}};

struct FlagOption {
  std::string_view name;
  bool Options::*flag;
};

constexpr std::array<FlagOption, 4> kFlagOptions{{{"--filled", &Options::filled},
                                                  {"--verbose", &Options::verbose},
                                                  {"--help", &Options::show_help},
                                                  {"--list-profiles", &Options::show_profiles}}};

bool TakeFlag(Options& options, const std::string& argument) {
  for (const auto& [name, flag] : kFlagOptions) {
    if (name == argument) return options.*flag = true;
  }
  return false;
}

const ValueOption* FindValueOption(std::string_view name) {
  for (const ValueOption& option : kValueOptions) {
    if (option.name == name) return &option;
  }
  return nullptr;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size() && options.error.empty(); ++i) {
    if (TakeFlag(options, arguments[i])) continue;
    const ValueOption* option = FindValueOption(arguments[i]);
    if (!option) {
      options.error = "unknown option: " + arguments[i];
    } else if (i + 1 == arguments.size()) {
      options.error = arguments[i] + " needs a value";
    } else if (!option->take(options, arguments[i + 1])) {
      options.error = "bad value for " + arguments[i] + ": " + arguments[i + 1];
    } else {
      ++i;
    }
  }
  return options;
}

std::string HelpText() {
  return "celldesk-phone: a simulated GSM phone on a pseudo-terminal.\n"
         "The first line printed is the device to connect to.\n\n"
         "  --port NAME       name in the list of ports (\"Simulated phone\")\n"
         "  --state FILE      load the memory from FILE when it exists, keep it there\n"
         "  --filled          begin with a filled memory when there is no state file yet\n"
         "  --profile NAMES   habits of the phone, joined with commas (--list-profiles)\n"
         "  --baud N          no faster than N bits a second; 0, the default, is unpaced\n"
         "  --latency MS      wait so long before every reply\n"
         "  --fault STEP:KIND[:ARG]  what goes wrong at a step; may be given more than once\n"
         "                    STEP: n-th line, beginning of a line, beginning#n, or *\n"
         "                    KIND: " +
         Join(FaultKindNames(), " ") +
         "\n"
         "  --seed N          for the noise\n"
         "  --verbose         print what passes over the line on standard error\n"
         "  --list-profiles   print the profiles and end\n"
         "  --help            print this and end\n";
}

std::string ProfileListText() {
  std::string text;
  for (const ProfileInfo& profile : Profiles()) {
    std::string name(profile.name);
    name.resize(16, ' ');
    text += name + std::string(profile.description) + '\n';
  }
  return text;
}

}  // namespace celldesk::simulator
