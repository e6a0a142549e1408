#include "ui/framework/progress_dialog.h"

#include <algorithm>
#include <cstdint>

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
  const std::int64_t steps = std::int64_t{highest_} - lowest_;
  if (steps != 0) position_ = static_cast<int>((std::int64_t{position_} + 1) % steps);
}

std::optional<int> ProgressState::Percentage() const {
  const std::int64_t steps = std::int64_t{highest_} - lowest_;
  if (steps == 0) return std::nullopt;
  const std::int64_t percentage = (std::int64_t{position_} - lowest_) * 100 / steps;
  return static_cast<int>(std::clamp<std::int64_t>(percentage, INT32_MIN, INT32_MAX));
}

ProgressDialog::ProgressDialog() : Dialog(kTemplate) {}

bool ProgressDialog::Create(Window* parent) {
  if (!CreateModeless(parent)) return false;
  ShowNow();
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
  if (const auto percentage = state_.Percentage()) SetBar(kBar, *percentage);
  UpdateNow();
}

void ProgressDialog::Close() { Destroy(); }

// The transfer ends the window, not the user.
void ProgressDialog::OnCommand(int /*command*/, LongParameter /*parameter*/) {}

}  // namespace celldesk
