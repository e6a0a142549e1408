#pragma once

#include "platform/file_adder.h"

namespace celldesk {

/// Writes under a hidden name in the same folder, then renames.
class PosixFileAdder : public FileAdder {
 public:
  SystemError Add(std::u16string_view path, std::string_view content) override;
};

}  // namespace celldesk
