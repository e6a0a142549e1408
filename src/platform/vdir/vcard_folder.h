#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace celldesk {

/// The end of the name of a vCard file.
inline constexpr const char* kVcardExtension = ".vcf";

/// The names of the vCard files of `folder`, sorted by their bytes: regular files that end in ".vcf" in
/// either case and do not begin with "." (files that a program is still writing do). None when the folder is
/// not there or may not be read.
std::optional<std::vector<std::string>> VcardFileNames(const std::filesystem::path& folder);

/// The contacts folder of a user who has chosen none: the first of "contacts" in the user's data folder
/// ($XDG_DATA_HOME, else ~/.local/share) and "~/.contacts" that holds vCards, itself or in a sub-folder
/// (synchronisers keep one for each collection; the first by name). Without vCards anywhere it is "contacts"
/// in the data folder, which is made for the user alone when it is absent. Empty when there is no home or the
/// folder cannot be made.
std::u16string DefaultContactsFolder();

}  // namespace celldesk
