#include "ui/framework/qt/list_search.h"

#include <QApplication>
#include <algorithm>

namespace celldesk {
namespace {

int RowThatBegins(const QAbstractItemModel& model, int column, int first, const QString& wanted) {
  const int rows = model.rowCount();
  for (int step = 0; step < rows; ++step) {
    const int row = (first + step) % rows;
    if (model.index(row, column).data().toString().startsWith(wanted, Qt::CaseInsensitive)) return row;
  }
  return -1;
}

}  // namespace

bool ListSearch::IsUnderWay() const {
  return !text_.isEmpty() && since_.isValid() && since_.elapsed() < QApplication::keyboardInputInterval();
}

int ListSearch::Find(const QAbstractItemModel& model, int column, int current, const QString& letters) {
  if (letters.isEmpty()) return -1;
  if (!IsUnderWay()) text_.clear();
  text_ += letters;
  since_.start();
  const bool repeated = text_.count(text_.front(), Qt::CaseInsensitive) == text_.size();
  const int first = repeated ? current + 1 : std::max(current, 0);
  const int row = RowThatBegins(model, column, first, repeated ? text_.left(1) : text_);
  if (row < 0 && letters == QLatin1String(" ")) text_.chop(1);
  return row;
}

}  // namespace celldesk
