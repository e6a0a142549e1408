#include "ui/framework/qt/list_header.h"

#include <QStyleOptionHeader>

namespace celldesk {

// Room for the arrow too, of whichever section is sorted by.
QSize ListHeader::sectionSizeFromContents(int section) const {
  QStyleOptionHeader option;
  initStyleOption(&option);
  option.section = section;
  option.text = model()->headerData(section, Qt::Horizontal).toString();
  if (isSortIndicatorShown()) option.sortIndicator = QStyleOptionHeader::SortDown;
  return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
}

}  // namespace celldesk
