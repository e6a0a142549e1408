#include "ui/framework/progress_dialog.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 189;
constexpr int kLine = 1001;
constexpr int kBar = 1002;

}  // namespace

void ProgressState::SetRange(int lowest, int highest) {
  lowest_ = lowest;
  highest_ = highest;
}

void ProgressState::SetPosition(int position) {
  if (position >= 0) {
    position_ = position;
    return;
  }
  const int steps = highest_ - lowest_;
  if (steps != 0) position_ = (position_ + 1) % steps;
}

int ProgressState::Percentage() const {
  const int steps = highest_ - lowest_;
  if (steps == 0) return -1;
  return static_cast<int>(static_cast<long long>(position_ - lowest_) * 100 / steps);
}

ProgressDialog::ProgressDialog() : Dialog(kTemplate) {}

bool ProgressDialog::Create(Window* parent) {
  if (!CreateModeless(parent)) return false;
  Show(true);
  UpdateNow();
  return true;
}

void ProgressDialog::SetCaption(std::u16string_view caption) {
  SetTitle(caption);
  UpdateNow();
}

void ProgressDialog::SetLine(std::u16string_view text) {
  SetText(kLine, text);
  UpdateNow();
}

void ProgressDialog::SetRange(int lowest, int highest) { state_.SetRange(lowest, highest); }

void ProgressDialog::SetPosition(int position) {
  state_.SetPosition(position);
  const int percentage = state_.Percentage();
  if (percentage >= 0) SetBar(kBar, percentage);
  UpdateNow();
}

void ProgressDialog::Close() { Destroy(); }

// The transfer ends the window, not the user.
void ProgressDialog::OnCommand(int /*command*/, LongParameter /*parameter*/) {}

}  // namespace celldesk
