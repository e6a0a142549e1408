#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/paths.h"

namespace celldesk {

/// What a finished program left.
struct ProgramRun {
  int exit_status = -1;
  std::string output;
  std::string errors;
};

inline std::string FileText(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

inline std::string ShellQuoted(const std::string& word) {
  std::string quoted = "'";
  for (const char character : word)
    quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
  return quoted + "'";
}

/// Runs a built program to its end with `input` as its standard input.
inline ProgramRun RunProgram(const std::string& name, const std::vector<std::string>& arguments,
                             const std::string& input = {}) {
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) / (std::string(test->test_suite_name()) + "." + test->name());
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "in", std::ios::binary) << input;
  std::string command = ShellQuoted(ProgramFolder() + "/" + name);
  for (const std::string& argument : arguments) command += " " + ShellQuoted(argument);
  command += " <" + ShellQuoted(folder / "in") + " >" + ShellQuoted(folder / "out") + " 2>" +
             ShellQuoted(folder / "errors");
  const int status = std::system(command.c_str());
  ProgramRun run{(status >> 8) & 0xFF, FileText(folder / "out"), FileText(folder / "errors")};
  std::filesystem::remove_all(folder);
  return run;
}

}  // namespace celldesk
