#pragma once

#include <functional>
#include <string>

#include "platform/shell.h"

namespace celldesk {

/// The desktop services of the toolkit. File types come with the program's package, never from here.
///
/// A help page is looked for in $CELLDESK_HELP (a folder, or the page itself), in the places where the
/// program and its page are installed ("../share/celldesk/help" and "help" as seen from the program's
/// folder), and in the source tree that the program was built in.
class QtShell : public Shell {
 public:
  /// Shows the page at a URL; false when nothing could be started.
  using UrlOpener = std::function<bool(const std::u16string& url)>;

  /// Opens pages in the user's browser.
  QtShell();
  explicit QtShell(UrlOpener open) : open_(std::move(open)) {}

  bool OpenHelp(std::u16string_view topic) override;
  std::u16string ProgramPath() const override;
  /// "celldesk" in $XDG_DATA_HOME or what stands for it.
  std::u16string DataFolder() const override;
  bool RegistersFileTypes() const override { return false; }

 private:
  UrlOpener open_;
};

/// The file `page` of the help, or empty; `program` is the running program's full path.
std::u16string FindHelpPage(std::u16string_view page, std::u16string_view program);

}  // namespace celldesk
