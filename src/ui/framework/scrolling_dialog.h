#pragma once

#include "ui/framework/dialog.h"

namespace celldesk {

/// What the user does with a scroll bar; numbers as the window manager has them.
enum class ScrollAction { kLineUp, kLineDown, kPageUp, kPageDown, kThumb, kTop = 6, kBottom = 7 };

/// One direction of a scrolling dialog: a position within 0 ... range.
class ScrollState {
 public:
  /// `page` is the client size, `content` the size of what is shown; both in pixels.
  void SetUp(int page, int content);
  bool is_set_up() const { return page_ > 0; }
  /// How far the content moves (new position minus old). A line is a thirtieth of the page.
  int Scroll(ScrollAction action, int thumb);
  int position() const { return position_; }
  int range() const { return range_; }

 private:
  int page_ = 0;
  int range_ = 0;
  int position_ = 0;
};

/// Sizes of one direction in pixels: what is visible, and all there is.
struct ScrollExtent {
  int page = 0;
  int content = 0;
};

/// A dialog whose content is larger than its window, with scroll bars for the enabled directions.
class ScrollingDialog : public Dialog {
 public:
  ScrollingDialog(int template_number, bool horizontal, bool vertical);
  /// Puts the controls behind the scroll bars.
  bool OnInitDialog(int focus, LongParameter parameter) override;
  MessageResult WindowProc(Message message, WordParameter word, LongParameter parameter) override;

  const ScrollState& horizontal() const { return horizontal_; }
  const ScrollState& vertical() const { return vertical_; }

 private:
  ScrollExtent Extent(bool is_vertical) const;
  void MoveContent(bool is_vertical, int position);
  /// The window has another size: bars and content follow, positions stay within the new range.
  void OnResize();
  void LayOut();
  void Scroll(ScrollState& state, bool is_vertical, WordParameter word);

  bool horizontal_enabled_;
  bool vertical_enabled_;
  ScrollState horizontal_;
  ScrollState vertical_;
};

}  // namespace celldesk
