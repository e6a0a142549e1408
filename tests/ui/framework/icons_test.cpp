#include "ui/framework/qt/qt_icons.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <set>

#include "ui/framework/framework_fixture.h"

namespace celldesk {
namespace {

constexpr QSize kSize(96, 96);  // its lines cover whole pixels

class IconsTest : public FrameworkTest {
 protected:
  ~IconsTest() override { QApplication::setPalette(QPalette()); }

  static QImage Drawn(std::string_view name, QIcon::Mode mode = QIcon::Normal) {
    return IconOf(name).pixmap(kSize, mode).toImage();
  }

  // The colours of pixels that are covered whole.
  static std::set<QRgb> Colors(const QImage& image) {
    std::set<QRgb> colors;
    for (int i = 0; i < image.width() * image.height(); ++i) {
      const QRgb color = image.pixel(i % image.width(), i / image.width());
      if (qAlpha(color) == 255) colors.insert(color);
    }
    return colors;
  }

  static void SetInk(QColor ink) {
    QPalette palette;
    palette.setColor(QPalette::ButtonText, ink);
    QApplication::setPalette(palette);
  }
};

TEST_F(IconsTest, TakeTheColourOfTheTextAroundThem) {
  for (const QColor ink : {QColor(Qt::black), QColor(Qt::white), QColor(10, 20, 200)}) {
    SetInk(ink);
    EXPECT_TRUE(Colors(Drawn("settings")).contains(ink.rgb())) << ink.name().toStdString();
  }
}

TEST_F(IconsTest, KeepTheirOwnColours) {
  SetInk(Qt::white);
  EXPECT_TRUE(Colors(Drawn("app")).contains(qRgb(0x1F, 0x8A, 0x70)));
}

TEST_F(IconsTest, ArePaleWhenDisabled) {
  EXPECT_FALSE(Colors(Drawn("app")).empty());
  EXPECT_TRUE(Colors(Drawn("app", QIcon::Disabled)).empty());
}

TEST_F(IconsTest, StandInTheMiddleOfTheirRoom) {
  QImage wide(60, 20, QImage::Format_ARGB32_Premultiplied);
  wide.fill(Qt::transparent);
  QPainter painter(&wide);
  IconOf("app").paint(&painter, wide.rect());
  painter.end();
  EXPECT_EQ(qAlpha(wide.pixel(30, 10)), 255);
  for (int y = 0; y < wide.height(); ++y) {
    EXPECT_EQ(qAlpha(wide.pixel(15, y)), 0) << y;
    EXPECT_EQ(qAlpha(wide.pixel(45, y)), 0) << y;
  }
}

TEST_F(IconsTest, LeaveThePainterAsItWas) {
  QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  painter.setPen(Qt::red);
  IconOf("delete").paint(&painter, image.rect(), Qt::AlignCenter, QIcon::Disabled);
  EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
  EXPECT_EQ(painter.opacity(), 1.0);
  EXPECT_TRUE(painter.transform().isIdentity());
}

TEST_F(IconsTest, AreNoneForAnUnknownName) { EXPECT_TRUE(IconOf("no such icon").isNull()); }

}  // namespace
}  // namespace celldesk
