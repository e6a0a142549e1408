#pragma once

#include <cstddef>

namespace celldesk {

/// A file of this folder as the build compiled it in.
struct EmbeddedFile {
  const char* name;  ///< relative to this folder: "strings.txt", "icons/new.svg"
  const unsigned char* bytes;
  std::size_t size;
};

extern const EmbeddedFile kEmbeddedFiles[];
extern const std::size_t kEmbeddedFileCount;

}  // namespace celldesk
