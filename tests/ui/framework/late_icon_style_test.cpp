#include "ui/framework/qt/late_icon_style.h"

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <memory>

#include "ui/framework/framework_fixture.h"

namespace celldesk {
namespace {

constexpr QSize kSize(16, 16);

QImage PictureOf(const QIcon& icon) { return icon.pixmap(kSize).toImage(); }

class LateIconStyleTest : public FrameworkTest {
 protected:
  QImage Late(QStyle::StandardPixmap which) const {
    return PictureOf(style_.standardIcon(which, nullptr, nullptr));
  }
  QImage Usual(QStyle::StandardPixmap which) const {
    return PictureOf(style_.baseStyle()->standardIcon(which));
  }

  LateIconStyle style_;
};

TEST_F(LateIconStyleTest, DrawsTheArrowOfTheToolkitsOwnStyle) {
  const QImage late = Late(QStyle::SP_ToolBarHorizontalExtensionButton);
  EXPECT_FALSE(late.isNull());
  EXPECT_EQ(late, Usual(QStyle::SP_ToolBarHorizontalExtensionButton));
}

TEST_F(LateIconStyleTest, PaintsTheArrowToo) {
  const auto painted = [](const QIcon& icon) {
    QImage image(kSize, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    return image;
  };
  constexpr auto kArrow = QStyle::SP_ToolBarHorizontalExtensionButton;
  const QImage late = painted(style_.standardIcon(kArrow, nullptr, nullptr));
  EXPECT_EQ(late, painted(style_.baseStyle()->standardIcon(kArrow)));
  QImage empty(kSize, QImage::Format_ARGB32);
  empty.fill(Qt::white);
  EXPECT_NE(late, empty);
}

TEST_F(LateIconStyleTest, LeavesEveryOtherIconAlone) {
  for (const auto which :
       {QStyle::SP_MessageBoxQuestion, QStyle::SP_DialogCloseButton, QStyle::SP_FileIcon}) {
    EXPECT_EQ(Late(which), Usual(which));
  }
}

TEST_F(LateIconStyleTest, ACopyOfTheIconDrawsNothingOnceTheStyleHasGone) {
  auto style = std::make_unique<LateIconStyle>();
  const QIcon icon = style->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, nullptr, nullptr);
  style.reset();
  EXPECT_TRUE(icon.pixmap(kSize).isNull());
}

TEST_F(LateIconStyleTest, IsTheStyleOfTheApplication) {
  static_cast<void>(application());
  EXPECT_NE(dynamic_cast<LateIconStyle*>(QApplication::style()), nullptr);
}

}  // namespace
}  // namespace celldesk
