#pragma once

#include <string>
#include <string_view>

namespace celldesk {

/// The desktop around the program.
class Shell {
 public:
  virtual ~Shell() = default;
  /// Opens the help page at `topic` ("file:CellDesk.htm#main_contents"); false when no viewer could be
  /// started.
  virtual bool OpenHelp(std::u16string_view topic) = 0;
  /// Full path of the running program; empty when it cannot be found.
  virtual std::u16string ProgramPath() const = 0;
  /// Where the program keeps the user's own files; not made yet at first.
  virtual std::u16string DataFolder() const = 0;
  /// True where file types are registered by the program at each start rather than by its package.
  virtual bool RegistersFileTypes() const = 0;
};

}  // namespace celldesk
