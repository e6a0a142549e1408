#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace celldesk {

class Window;

enum class FileDialogKind {
  kOpen,  ///< path and file must exist
  kSave,  ///< the path must exist; an existing file is replaced only after a question
};

/// What a file dialog asks for.
struct FileQuestion {
  FileDialogKind kind = FileDialogKind::kOpen;
  std::u16string filter;             ///< captions and patterns in turn, each ended by "#"
  std::u16string default_extension;  ///< without dot; for a name that is typed without one
};

/// One entry of a dialog's list of file types.
struct FileFilter {
  std::u16string caption;
  std::u16string pattern;  ///< e.g. "*.adr"

  friend bool operator==(const FileFilter&, const FileFilter&) = default;
};

/// The entries of a filter string; a caption without a pattern is none.
std::vector<FileFilter> ParseFileFilters(std::u16string_view filter);

/// Shows the dialog over `owner`; the path of the chosen file, or none when the user cancels. It starts in
/// the folder that was used last in this run of the program.
std::optional<std::u16string> ChooseFile(Window* owner, const FileQuestion& question);

/// While one of these lives, file dialogs are answered from its list instead of being shown: cancelled once
/// the list is used up. Tests and the tour only.
class FileDialogScript {
 public:
  FileDialogScript();
  ~FileDialogScript();
  FileDialogScript(const FileDialogScript&) = delete;
  FileDialogScript& operator=(const FileDialogScript&) = delete;

  /// None cancels.
  void Answer(std::optional<std::u16string> path) { answers_.push_back(std::move(path)); }
  /// What was asked, in order.
  const std::vector<FileQuestion>& asked() const { return asked_; }
  std::size_t unused_answers() const { return answers_.size(); }

  /// The script in force, or null.
  static FileDialogScript* Current();
  std::optional<std::u16string> Take(const FileQuestion& question);

 private:
  FileDialogScript* outer_;
  std::deque<std::optional<std::u16string>> answers_;
  std::vector<FileQuestion> asked_;
};

}  // namespace celldesk
