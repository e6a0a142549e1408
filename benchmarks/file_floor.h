#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "platform/file.h"

namespace celldesk::bench {

/// The characters of a file.
class Characters {
 public:
  /// Reads the file, copies its bytes and makes a character of each: the least that reading it takes.
  Characters(FileSystem& files, std::u16string_view path);

  std::u16string_view view() const { return {text_.get(), size_}; }

 private:
  std::unique_ptr<char16_t[]> text_;
  std::size_t size_ = 0;
};

/// Makes a byte of each character and writes them all at once: the least that writing them takes.
[[nodiscard]] bool ConvertAndWrite(FileSystem& files, std::u16string_view path, std::u16string_view text);

}  // namespace celldesk::bench
