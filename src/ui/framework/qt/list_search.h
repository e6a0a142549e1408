#pragma once

#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QString>

namespace celldesk {

/// What a user types in a list to find a row: letters in quick succession are one text, the same letter again
/// and again means the next row that begins with it.
class ListSearch {
 public:
  /// Takes more letters; the row whose text in `column` begins so, looked for from `current` on and round, or
  /// -1. A blank that leads to no row is forgotten.
  int Find(const QAbstractItemModel& model, int column, int current, const QString& letters);
  /// True while more letters belong to what was typed before.
  bool IsUnderWay() const;

 private:
  QString text_;
  QElapsedTimer since_;
};

}  // namespace celldesk
