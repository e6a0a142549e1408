#pragma once

#include <QHeaderView>

namespace celldesk {

/// The header of a list. Its sections are measured in the font they are drawn in; the toolkit's own header
/// opens a bold font to measure them, for a highlight that lists do not have.
class ListHeader : public QHeaderView {
 public:
  explicit ListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

 protected:
  QSize sectionSizeFromContents(int section) const override;
};

}  // namespace celldesk
