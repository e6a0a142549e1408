#include "ui/framework/qt/late_icon_style.h"

#include <QIconEngine>
#include <QPainter>
#include <QPointer>

namespace celldesk {
namespace {

/// An icon of a style, asked for when it is drawn. Nothing is drawn once the style has gone.
class LateIconEngine : public QIconEngine {
 public:
  LateIconEngine(const QStyle* style, QStyle::StandardPixmap which) : style_(style), which_(which) {}

  void paint(QPainter* painter, const QRect& rectangle, QIcon::Mode mode, QIcon::State state) override {
    Icon().paint(painter, rectangle, Qt::AlignCenter, mode, state);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Icon().pixmap(size, mode, state);
  }
  QIconEngine* clone() const override { return new LateIconEngine(style_, which_); }

 private:
  const QIcon& Icon() {
    if (icon_.isNull() && style_ != nullptr) icon_ = style_->standardIcon(which_);
    return icon_;
  }

  QPointer<const QStyle> style_;
  QStyle::StandardPixmap which_;
  QIcon icon_;
};

}  // namespace

QIcon LateIconStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                                  const QWidget* widget) const {
  if (which != SP_ToolBarHorizontalExtensionButton) return QProxyStyle::standardIcon(which, option, widget);
  return QIcon(new LateIconEngine(baseStyle(), which));
}

}  // namespace celldesk
