#pragma once

namespace celldesk {

/// What an operation on a book or a folder tells the list that shows it. Called on the interface thread.
class RowObserver {
 public:
  virtual ~RowObserver() = default;
  /// The item at `position` of the array was filled or changed; it may need a row, or its row a new look.
  virtual void RowRead(int position) = 0;
  /// Draw at once what has changed so far.
  virtual void Repaint() = 0;
};

}  // namespace celldesk
