#include "ui/framework/qt/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace celldesk {
namespace {

constexpr int kFewestCharacters = 7;

}  // namespace

ElidedLabel::ElidedLabel(const QString& text) : QLabel(text) { setTextFormat(Qt::PlainText); }

QSize ElidedLabel::minimumSizeHint() const {
  const QSize whole = QLabel::sizeHint();
  return {std::min(whole.width(), kFewestCharacters * fontMetrics().averageCharWidth()), whole.height()};
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const QString tip = ShownText() == text() ? QString() : text();
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
  return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                        ShownText(), foregroundRole());
}

QString ElidedLabel::ShownText() const {
  return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

}  // namespace celldesk
