#include "platform/vdir/vcard_lines.h"

#include <algorithm>

#include "platform/vdir/vcard_parameters.h"

namespace celldesk {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char character) { return character == ' ' || character == '\t'; }

}  // namespace

VcardLines::VcardLines(std::string_view bytes) : bytes_(bytes) {
  if (bytes_.starts_with(kByteOrderMark)) position_ = kByteOrderMark.size();
}

std::optional<VcardLine> VcardLines::Next() {
  while (position_ < bytes_.size()) {
    ReadLogicalLine();
    FindColon();
    // A quote that nobody closed hides the colon.
    const std::size_t colon = colon_ ? *colon_ : line_.find(':');
    if (colon == std::string::npos) continue;
    const std::string_view line(line_);
    const std::string_view header = line.substr(0, colon);
    const std::size_t semicolon = std::min(header.find(';'), colon);
    const std::string_view name = header.substr(0, semicolon);
    const std::size_t group = name.rfind('.');
    return VcardLine{name.substr(group == std::string_view::npos ? 0 : group + 1),
                     header.substr(std::min(semicolon + 1, colon)), line.substr(colon + 1)};
  }
  return std::nullopt;
}

void VcardLines::ReadLogicalLine() {
  line_.clear();
  scanned_ = 0;
  quoted_ = false;
  colon_.reset();
  quoted_printable_.reset();
  Append(TakePhysicalLine());
  while (position_ < bytes_.size()) {
    if (EndsInSoftBreak()) {
      line_.resize(line_.rfind('='));
      Append(TakePhysicalLine());
    } else if (NextIsFolded()) {
      Append(TakePhysicalLine().substr(fold_keeps_blank_ ? 0 : 1));
    } else {
      return;
    }
  }
}

// CR CR LF, which text mode makes of CR LF, is one line end.
std::string_view VcardLines::TakePhysicalLine() {
  const std::size_t end = std::min(bytes_.find_first_of("\r\n", position_), bytes_.size());
  const std::string_view line = bytes_.substr(position_, end - position_);
  position_ = std::min(bytes_.find_first_not_of('\r', end), bytes_.size());
  if (position_ < bytes_.size() && bytes_[position_] == '\n') ++position_;
  return line;
}

void VcardLines::Append(std::string_view physical_line) {
  last_start_ = line_.size();
  line_ += physical_line;
}

void VcardLines::FindColon() {
  for (; !colon_ && scanned_ < line_.size(); ++scanned_) {
    if (line_[scanned_] == '"') quoted_ = !quoted_;
    if (line_[scanned_] == ':' && !quoted_) colon_ = scanned_;
  }
}

bool VcardLines::NextIsFolded() const { return IsBlank(bytes_[position_]); }

// Blanks after the "=" were added on the way. Only the last physical line is looked at, so that no byte is
// looked at twice.
bool VcardLines::EndsInSoftBreak() {
  const std::string_view last = std::string_view(line_).substr(last_start_);
  const std::size_t end = last.find_last_not_of(" \t");
  return end != std::string_view::npos && last[end] == '=' && IsQuotedPrintable();
}

bool VcardLines::IsQuotedPrintable() {
  FindColon();
  if (colon_ && !quoted_printable_) {
    const std::string_view header = std::string_view(line_).substr(0, *colon_);
    const std::size_t semicolon = header.find(';');
    quoted_printable_ = semicolon != std::string_view::npos &&
                        VcardParameters::Parse(header.substr(semicolon + 1)).quoted_printable;
  }
  return quoted_printable_.value_or(false);
}

}  // namespace celldesk
