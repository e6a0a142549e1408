#pragma once

#include <optional>
#include <string_view>

#include "ui/framework/dialog.h"

namespace celldesk {

/// Position within a range, and the percentage that a bar shows.
class ProgressState {
 public:
  void SetRange(int lowest, int highest);
  /// A negative position is one step further; after the last step it starts again.
  void SetPosition(int position);
  int position() const { return position_; }
  /// (position - lowest) * 100 / (highest - lowest), which a position outside of the range takes beyond 0 to
  /// 100; none when the range is empty.
  std::optional<int> Percentage() const;

 private:
  int lowest_ = 0;
  int highest_ = 0;
  int position_ = 0;
};

/// Modeless progress window: a line of text and a bar, which an empty range leaves alone. Every change is
/// painted at once.
class ProgressDialog : public Dialog {
 public:
  ProgressDialog();
  /// Opens over `parent`.
  bool Create(Window* parent);
  void SetCaption(std::u16string_view caption);
  void SetLine(std::u16string_view text);
  void SetRange(int lowest, int highest);
  void SetPosition(int position);
  void Close();

  void OnCommand(int command, LongParameter parameter) override;

 private:
  ProgressState state_;
};

}  // namespace celldesk
