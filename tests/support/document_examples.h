#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "support/paths.h"

namespace celldesk {

/// The example blocks of docs/formats/`name`, in order, with the line ends of a file: CR LF.
inline std::vector<std::string> DocumentExamples(const std::string& name) {
  std::ifstream stream(SourceFolder() + "/docs/formats/" + name);
  std::vector<std::string> examples;
  bool inside = false;
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with("```")) {
      inside = !inside;
      if (inside) examples.emplace_back();
    } else if (inside) {
      examples.back() += line + "\r\n";
    }
  }
  return examples;
}

}  // namespace celldesk
