#pragma once

#include <QLabel>

namespace celldesk {

/// One line of plain text that may be narrower than its text: the end is cut then, and the tool tip shows
/// all.
class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(const QString& text = {});

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QString ShownText() const;
};

}  // namespace celldesk
