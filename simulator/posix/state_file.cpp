#include "simulator/posix/state_file.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace celldesk::simulator {

std::optional<std::string> ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return file.bad() ? std::nullopt : std::optional(std::move(text));
}

bool ReplaceFile(const std::string& path, std::string_view text) {
  const std::string fresh = path + ".new" + std::to_string(getpid());
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  if (file && std::rename(fresh.c_str(), path.c_str()) == 0) return true;
  std::remove(fresh.c_str());
  return false;
}

}  // namespace celldesk::simulator
