#include "scratch.h"

#include <unistd.h>

#include <cstdlib>

namespace celldesk::bench {
namespace {

namespace fs = std::filesystem;

fs::path& Root() {
  static fs::path root;
  return root;
}

}  // namespace

Scratch::Scratch() {
  Root() = fs::temp_directory_path() / ("celldesk-bench-" + std::to_string(::getpid()));
  fs::create_directories(Path("run"));
  fs::permissions(Path("run"), fs::perms::owner_all);
  ::setenv("XDG_RUNTIME_DIR", Path("run").c_str(), 1);
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  // The platform says for every window that it has no size hints.
  ::setenv("QT_LOGGING_RULES", "default.warning=false", 1);
  NewProfile();
}

Scratch::~Scratch() {
  std::error_code ignored;
  fs::remove_all(Root(), ignored);
}

fs::path Scratch::Path(const std::string& name) { return Root() / name; }

void Scratch::NewProfile() {
  const fs::path config = Path("config");
  fs::remove_all(config);
  fs::create_directories(config);
  ::setenv("XDG_CONFIG_HOME", config.c_str(), 1);
}

}  // namespace celldesk::bench
