#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "simulator/phone_program.h"
#include "support/paths.h"

namespace celldesk {

/// The built simulated phone in a process of its own. It lists itself as the port "Simulated phone" of the
/// runtime directory.
class PhoneProcess {
 public:
  explicit PhoneProcess(std::vector<std::string> arguments) : program_(Path(), Traced(std::move(arguments))) {
    device_ = program_.ReadLine();
    EXPECT_NE(device_, "") << "the phone does not start";
  }
  ~PhoneProcess() { End(); }
  PhoneProcess(const PhoneProcess&) = delete;
  PhoneProcess& operator=(const PhoneProcess&) = delete;

  const std::string& device() const { return device_; }

  /// Ends the phone. Every byte that it received; one that cannot be printed stands as "<0D>". Nothing
  /// the second time.
  std::string End() {
    if (has_ended_) return {};
    program_.Signal(SIGTERM);
    std::istringstream trace(program_.ReadAll());
    EXPECT_EQ(program_.Wait(), 0);
    has_ended_ = true;
    std::string received;
    for (std::string line; std::getline(trace, line);) {
      if (line.starts_with("> ")) received += line.substr(2);
    }
    return received;
  }

 private:
  static std::string Path() { return ProgramFolder() + "/celldesk-phone"; }
  static std::vector<std::string> Traced(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "--verbose");
    return arguments;
  }

  simulator::Program program_;
  std::string device_;
  bool has_ended_ = false;
};

}  // namespace celldesk
