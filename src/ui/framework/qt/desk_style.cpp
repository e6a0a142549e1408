#include "ui/framework/qt/desk_style.h"

#include <QPainter>
#include <QStyleOption>

namespace celldesk {
namespace {

constexpr int kDark = 128;      // lightness from 0 to 255
constexpr int kBrighter = 150;  // percent

bool IsDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < kDark; }

// Half way from the window to its text; bright in the colour of selections for a field that has the focus.
QColor EdgeColour(QStyle::PrimitiveElement element, const QStyleOption& option) {
  const QPalette& palette = option.palette;
  if (element == QStyle::PE_FrameLineEdit && option.state.testFlag(QStyle::State_HasFocus)) {
    return palette.color(QPalette::Highlight).lighter(kBrighter);
  }
  const QColor window = palette.color(QPalette::Window), text = palette.color(QPalette::WindowText);
  return {(window.red() + text.red()) / 2, (window.green() + text.green()) / 2,
          (window.blue() + text.blue()) / 2};
}

bool HasOwnEdge(QStyle::PrimitiveElement element) {
  switch (element) {
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorRadioButton:
    case QStyle::PE_Frame:
    case QStyle::PE_FrameLineEdit:
      return true;
    default:
      return false;
  }
}

}  // namespace

void DeskStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  LateIconStyle::drawPrimitive(element, option, painter, widget);
  if (!HasOwnEdge(element) || !IsDark(option->palette)) return;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(EdgeColour(element, *option));
  painter->setBrush(Qt::NoBrush);
  const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (element == PE_IndicatorRadioButton) {
    painter->drawEllipse(edge);
  } else {
    painter->drawRoundedRect(edge, 1, 1);
  }
  painter->restore();
}

}  // namespace celldesk
