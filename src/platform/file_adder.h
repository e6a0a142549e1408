#pragma once

#include <string_view>

#include "platform/system_error.h"

namespace celldesk {

/// Adds small files to folders that other programs use, too. Interface thread only.
class FileAdder {
 public:
  virtual ~FileAdder() = default;
  /// Makes a file that was not there, whole or not at all, at whatever moment the program or the machine
  /// stops: the content is on the medium before the name appears. kErrorFileExists, and nothing changed, when
  /// the name is taken. A program killed on the way may leave a file whose name begins with "." beside it.
  virtual SystemError Add(std::u16string_view path, std::string_view content) = 0;
};

}  // namespace celldesk
