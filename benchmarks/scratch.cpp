#include "scratch.h"

#include <unistd.h>

#include <chrono>
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

void Scratch::UsedProfile() {
  NewProfile();
  const fs::path settings = Path("config") / "celldesk" / "settings.ini";
  fs::create_directories(settings.parent_path());
  fs::copy_file(CELLDESK_FIRST_SETTINGS, settings);
  fs::last_write_time(settings, fs::file_time_type::clock::now() - std::chrono::hours(24));
}

}  // namespace celldesk::bench
