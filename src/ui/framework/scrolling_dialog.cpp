#include "ui/framework/scrolling_dialog.h"

#include <algorithm>

namespace celldesk {
namespace {

constexpr int kLinesAPage = 30;

}  // namespace

void ScrollState::SetUp(int page, int content) {
  page_ = page;
  range_ = std::max(content - page, 0);
  position_ = std::clamp(position_, 0, range_);
}

int ScrollState::Scroll(ScrollAction action, int thumb) {
  const int before = position_;
  switch (action) {
    case ScrollAction::kLineUp:
      position_ -= page_ / kLinesAPage;
      break;
    case ScrollAction::kLineDown:
      position_ += page_ / kLinesAPage;
      break;
    case ScrollAction::kPageUp:
      position_ -= page_;
      break;
    case ScrollAction::kPageDown:
      position_ += page_;
      break;
    case ScrollAction::kThumb:
      position_ = thumb;
      break;
    case ScrollAction::kTop:
      position_ = 0;
      break;
    case ScrollAction::kBottom:
      position_ = range_;
      break;
  }
  position_ = std::clamp(position_, 0, range_);
  return position_ - before;
}

ScrollingDialog::ScrollingDialog(int template_number, bool horizontal, bool vertical)
    : Dialog(template_number), horizontal_enabled_(horizontal), vertical_enabled_(vertical) {}

MessageResult ScrollingDialog::WindowProc(Message message, WordParameter word, LongParameter /*parameter*/) {
  if (message == Message::kHScroll && horizontal_enabled_) {
    Scroll(horizontal_, false, word);
    return 1;
  }
  if (message == Message::kVScroll && vertical_enabled_) {
    Scroll(vertical_, true, word);
    return 1;
  }
  return 0;
}

void ScrollingDialog::OnResize() {
  LayOut();
  for (const bool is_vertical : {false, true}) {
    ScrollState& state = is_vertical ? vertical_ : horizontal_;
    if (!state.is_set_up()) continue;
    const ScrollExtent extent = Extent(is_vertical);
    state.SetUp(extent.page, extent.content);
    MoveContent(is_vertical, state.position());
  }
}

// The low word is the action, the high word the thumb's position.
void ScrollingDialog::Scroll(ScrollState& state, bool is_vertical, WordParameter word) {
  const ScrollExtent extent = Extent(is_vertical);
  if (!state.is_set_up()) state.SetUp(extent.page, extent.content);
  const int delta = state.Scroll(static_cast<ScrollAction>(word & 0xFFFF), static_cast<int>(word >> 16));
  if (delta != 0) MoveContent(is_vertical, state.position());
}

}  // namespace celldesk
