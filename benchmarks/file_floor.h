#pragma once

#include <cstddef>
#include <string>

#include "platform/file.h"

namespace celldesk::bench {

/// Reads the file, copies its bytes and makes a character of each: the least that reading it takes. The
/// number of characters.
std::size_t ReadAndConvert(FileSystem& files, const std::u16string& path);

/// Makes a byte of each character and writes them all at once: the least that writing them takes.
[[nodiscard]] bool ConvertAndWrite(FileSystem& files, const std::u16string& path, const std::u16string& text);

/// The characters of a file.
std::u16string CharactersOf(FileSystem& files, const std::u16string& path);

}  // namespace celldesk::bench
