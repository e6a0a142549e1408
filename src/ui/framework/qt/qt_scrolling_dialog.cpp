#include <QWidget>

#include "ui/framework/qt/native.h"
#include "ui/framework/scrolling_dialog.h"

namespace celldesk {

ScrollExtent ScrollingDialog::Extent(bool is_vertical) const {
  if (controls() == nullptr) return {};
  const QWidget* content = controls()->content;
  const QSize all = content->sizeHint().expandedTo(content->childrenRect().size());
  return is_vertical ? ScrollExtent{content->height(), all.height()}
                     : ScrollExtent{content->width(), all.width()};
}

void ScrollingDialog::MoveContent(bool is_vertical, int position) {
  QWidget* content = controls()->content;
  const QPoint shown = content->property("celldesk_scrolled").toPoint();
  const QPoint wanted = is_vertical ? QPoint(shown.x(), position) : QPoint(position, shown.y());
  content->scroll(shown.x() - wanted.x(), shown.y() - wanted.y());
  content->setProperty("celldesk_scrolled", wanted);
}

}  // namespace celldesk
