#include "ui/framework/qt/qt_icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <algorithm>

#include "ui/framework/picture.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

QPointF ToQt(PicturePoint point) { return {point.x, point.y}; }

QPainterPath PathOf(const std::vector<PictureStep>& outline) {
  QPainterPath path;
  for (const auto& [kind, points] : outline) {
    switch (kind) {
      case PictureStep::Kind::kMove:
        path.moveTo(ToQt(points[0]));
        break;
      case PictureStep::Kind::kLine:
        path.lineTo(ToQt(points[0]));
        break;
      case PictureStep::Kind::kCurve:
        path.cubicTo(ToQt(points[0]), ToQt(points[1]), ToQt(points[2]));
        break;
      case PictureStep::Kind::kClose:
        path.closeSubpath();
        break;
    }
  }
  return path;
}

QColor ColorOf(const PicturePaint& paint, const QColor& ink) {
  return paint.kind == PicturePaint::Kind::kInk ? ink : QColor(paint.rgb);
}

void Draw(const PictureShape& shape, const QColor& ink, QPainter& painter) {
  const bool has_fill = shape.fill.kind != PicturePaint::Kind::kNone;
  const bool has_stroke = shape.stroke.kind != PicturePaint::Kind::kNone;
  painter.setBrush(has_fill ? QBrush(ColorOf(shape.fill, ink)) : QBrush());
  painter.setPen(has_stroke ? QPen(ColorOf(shape.stroke, ink), shape.stroke_width, Qt::SolidLine,
                                   Qt::RoundCap, Qt::RoundJoin)
                            : QPen(Qt::NoPen));
  painter.drawPath(PathOf(shape.outline));
}

// As large as fits into the rectangle, and in its middle.
void Draw(const Picture& picture, const QColor& ink, QPainter& painter, const QRectF& rectangle) {
  const double scale = std::min(rectangle.width() / picture.width, rectangle.height() / picture.height);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(rectangle.center());
  painter.scale(scale, scale);
  painter.translate(-picture.width / 2, -picture.height / 2);
  for (const PictureShape& shape : picture.shapes) Draw(shape, ink, painter);
}

// Draws a picture whose ink is the palette's text colour, so that it suits light and dark alike. It is read
// when it is drawn: most icons of a window are never seen.
class PictureIconEngine : public QIconEngine {
 public:
  explicit PictureIconEngine(std::string_view svg) : svg_(svg) {}

  void paint(QPainter* painter, const QRect& rectangle, QIcon::Mode mode, QIcon::State /*state*/) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
    painter->save();
    if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * 0.5);
    Draw(ReadPicture(svg_), QApplication::palette().color(group, role), *painter, QRectF(rectangle));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new PictureIconEngine(svg_); }

 private:
  const std::string_view svg_;  // compiled in
};

}  // namespace

QIcon IconOf(std::string_view name) {
  const std::string_view svg = FindResource("icons/" + std::string(name) + ".svg");
  return svg.empty() ? QIcon() : QIcon(new PictureIconEngine(svg));
}

}  // namespace celldesk
