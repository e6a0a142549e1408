#include "ui/framework/file_dialog.h"

namespace celldesk {
namespace {

constexpr char16_t kSeparator = u'#';

FileDialogScript* current = nullptr;

/// Cuts the text up to the next separator off `filter`; none when there is no separator.
std::optional<std::u16string> TakePart(std::u16string_view& filter) {
  const std::size_t end = filter.find(kSeparator);
  if (end == filter.npos) return std::nullopt;
  std::u16string part(filter.substr(0, end));
  filter.remove_prefix(end + 1);
  return part;
}

}  // namespace

std::vector<FileFilter> ParseFileFilters(std::u16string_view filter) {
  std::vector<FileFilter> filters;
  while (auto caption = TakePart(filter)) {
    auto pattern = TakePart(filter);
    if (pattern) filters.push_back({std::move(*caption), std::move(*pattern)});
  }
  return filters;
}

FileDialogScript::FileDialogScript() : outer_(current) { current = this; }
FileDialogScript::~FileDialogScript() { current = outer_; }
FileDialogScript* FileDialogScript::Current() { return current; }

std::optional<std::u16string> FileDialogScript::Take(const FileQuestion& question) {
  asked_.push_back(question);
  if (answers_.empty()) return std::nullopt;
  std::optional<std::u16string> answer = std::move(answers_.front());
  answers_.pop_front();
  return answer;
}

}  // namespace celldesk
