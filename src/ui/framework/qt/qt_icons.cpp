#include "ui/framework/qt/qt_icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include "ui/resources/resources.h"

namespace celldesk {
namespace {

// Draws an SVG whose "currentColor" is the palette's text colour, so that it suits light and dark alike.
class SvgIconEngine : public QIconEngine {
 public:
  explicit SvgIconEngine(const QByteArray& svg) : svg_(svg) {}

  void paint(QPainter* painter, const QRect& rectangle, QIcon::Mode mode, QIcon::State /*state*/) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
    QByteArray svg = svg_;
    svg.replace("currentColor", QApplication::palette().color(group, role).name().toLatin1());
    QSvgRenderer renderer(svg);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    painter->save();
    if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * 0.5);
    renderer.render(painter, QRectF(rectangle));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new SvgIconEngine(svg_); }

 private:
  QByteArray svg_;
};

}  // namespace

QIcon IconOf(std::string_view name) {
  const std::string_view svg = FindResource("icons/" + std::string(name) + ".svg");
  if (svg.empty()) return {};
  return QIcon(new SvgIconEngine(QByteArray(svg.data(), static_cast<qsizetype>(svg.size()))));
}

}  // namespace celldesk
