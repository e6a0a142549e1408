#include "ui/framework/qt/desk_style.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStyleOptionFrame>
#include <cmath>

#include "ui/framework/framework_fixture.h"

namespace celldesk {
namespace {

constexpr int kSide = 20;
constexpr double kSeen = 3.0;  // WCAG 2.1, 1.4.11: the contrast of what shows a control

double Linear(double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); }

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one) + 0.05, b = Luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

class DeskStyleTest : public FrameworkTest {
 protected:
  /// The best contrast to the window along the left part of the middle line, where the edge is.
  template <typename Option>
  double EdgeContrast(QStyle::PrimitiveElement element, const QPalette& palette,
                      QStyle::State state = QStyle::State_None) {
    QImage image(kSide, kSide, QImage::Format_RGB32);
    image.fill(palette.color(QPalette::Window));
    Option option;
    option.rect = image.rect();
    option.palette = palette;
    option.state = QStyle::State_Enabled | QStyle::State_Off | state;
    QPainter painter(&image);
    DeskStyle().drawPrimitive(element, &option, &painter);
    double best = 0;
    for (int x = 0; x < 3; ++x) {
      best = std::max(best, Contrast(image.pixelColor(x, kSide / 2), palette.color(QPalette::Window)));
    }
    return best;
  }
};

TEST_F(DeskStyleTest, ShowsTheEdgesOfSwitchesAndFieldsInDarkWindows) {
  QPalette dark(QColor(53, 53, 56), QColor(45, 45, 48));
  dark.setColor(QPalette::WindowText, Qt::white);
  dark.setColor(QPalette::Base, QColor(30, 30, 32));
  EXPECT_GE(EdgeContrast<QStyleOptionButton>(QStyle::PE_IndicatorCheckBox, dark), kSeen);
  EXPECT_GE(EdgeContrast<QStyleOptionButton>(QStyle::PE_IndicatorRadioButton, dark), kSeen);
  EXPECT_GE(EdgeContrast<QStyleOptionFrame>(QStyle::PE_FrameLineEdit, dark), kSeen);
  EXPECT_GE(EdgeContrast<QStyleOptionFrame>(QStyle::PE_Frame, dark), kSeen) << "of lists and memos";
  dark.setColor(QPalette::Highlight, QColor(31, 138, 112));
  EXPECT_GE(EdgeContrast<QStyleOptionFrame>(QStyle::PE_FrameLineEdit, dark, QStyle::State_HasFocus), kSeen);
}

TEST_F(DeskStyleTest, LeavesLightWindowsToTheToolkit) {
  QImage ours(kSide, kSide, QImage::Format_RGB32), usual(kSide, kSide, QImage::Format_RGB32);
  QStyleOptionButton option;
  option.rect = ours.rect();
  option.palette = QPalette(QColor(239, 239, 239));
  for (QImage* image : {&ours, &usual}) {
    image->fill(Qt::white);
    QPainter painter(image);
    if (image == &ours) DeskStyle().drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter);
    if (image == &usual) QProxyStyle().drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter);
  }
  EXPECT_EQ(ours, usual);
}

}  // namespace
}  // namespace celldesk
