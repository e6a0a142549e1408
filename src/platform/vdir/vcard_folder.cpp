#include "platform/vdir/vcard_folder.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include "platform/vdir/ascii.h"
#include "util/text.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;

bool IsHidden(const fs::path& name) { return name.string().starts_with('.'); }

bool IsVcardFile(const fs::directory_entry& entry) {
  const fs::path name = entry.path().filename();
  std::error_code error;
  return !IsHidden(name) && EqualAscii(name.extension().string(), kVcardExtension) &&
         entry.is_regular_file(error);
}

bool IsVisibleFolder(const fs::directory_entry& entry) {
  std::error_code error;
  return !IsHidden(entry.path().filename()) && entry.is_directory(error);
}

/// The sorted names of what `wanted` holds for; none when the folder cannot be listed to its end.
std::optional<std::vector<std::string>> Names(const fs::path& folder,
                                              bool (*wanted)(const fs::directory_entry&)) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (wanted(*entry)) names.push_back(entry->path().filename().string());
  }
  if (error) return std::nullopt;
  std::sort(names.begin(), names.end());
  return names;
}

bool HoldsVcards(const fs::path& folder) {
  const auto names = VcardFileNames(folder);
  return names && !names->empty();
}

/// `folder` or its first sub-folder that holds vCards; empty when none does.
fs::path WithVcards(const fs::path& folder) {
  if (HoldsVcards(folder)) return folder;
  for (const std::string& name : Names(folder, IsVisibleFolder).value_or(std::vector<std::string>())) {
    if (HoldsVcards(folder / name)) return folder / name;
  }
  return {};
}

/// A value that is no absolute path counts as unset, as the base directory standard has it.
fs::path FolderFromEnvironment(const char* variable) {
  const char* value = std::getenv(variable);
  const fs::path folder(value != nullptr ? value : "");
  return folder.is_absolute() ? folder : fs::path();
}

bool MakePrivate(const fs::path& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return true;
  if (!fs::create_directories(folder, error)) return false;
  fs::permissions(folder, fs::perms::owner_all, error);
  return true;
}

}  // namespace

std::optional<std::vector<std::string>> VcardFileNames(const fs::path& folder) {
  return Names(folder, IsVcardFile);
}

std::u16string DefaultContactsFolder() {
  const fs::path home = FolderFromEnvironment("HOME");
  fs::path data = FolderFromEnvironment("XDG_DATA_HOME");
  if (data.empty() && !home.empty()) data = home / ".local" / "share";
  if (data.empty()) return {};
  fs::path folder = WithVcards(data / "contacts");
  if (folder.empty() && !home.empty()) folder = WithVcards(home / ".contacts");
  if (folder.empty()) folder = data / "contacts";
  return MakePrivate(folder) ? FromUtf8(folder.string()) : std::u16string();
}

}  // namespace celldesk
