#include "ui/framework/scrolling_dialog.h"

#include <QScrollBar>
#include <QTest>

#include "ui/framework/framework_fixture.h"
#include "ui/user_actions.h"

namespace celldesk {
namespace {

ScrollState Page300Of1000() {
  ScrollState state;
  state.SetUp(300, 1000);
  return state;
}

TEST(ScrollState, MovesALineByAThirtiethOfThePage) {
  ScrollState state = Page300Of1000();
  EXPECT_EQ(state.range(), 700);
  EXPECT_EQ(state.Scroll(ScrollAction::kLineDown, 0), 10);
  EXPECT_EQ(state.Scroll(ScrollAction::kLineDown, 0), 10);
  EXPECT_EQ(state.Scroll(ScrollAction::kLineUp, 0), -10);
  EXPECT_EQ(state.position(), 10);
}

TEST(ScrollState, MovesByPagesAndClampsAtTheEnds) {
  ScrollState state = Page300Of1000();
  EXPECT_EQ(state.Scroll(ScrollAction::kPageDown, 0), 300);
  EXPECT_EQ(state.Scroll(ScrollAction::kPageDown, 0), 300);
  EXPECT_EQ(state.Scroll(ScrollAction::kPageDown, 0), 100);
  EXPECT_EQ(state.Scroll(ScrollAction::kPageDown, 0), 0);
  EXPECT_EQ(state.Scroll(ScrollAction::kPageUp, 0), -300);
  EXPECT_EQ(state.position(), 400);
}

TEST(ScrollState, GoesToTheThumbAndToTheEnds) {
  ScrollState state = Page300Of1000();
  EXPECT_EQ(state.Scroll(ScrollAction::kThumb, 123), 123);
  EXPECT_EQ(state.Scroll(ScrollAction::kThumb, 5000), 577);
  EXPECT_EQ(state.Scroll(ScrollAction::kTop, 0), -700);
  EXPECT_EQ(state.Scroll(ScrollAction::kBottom, 0), 700);
  EXPECT_EQ(state.Scroll(ScrollAction::kThumb, -4), -700);
}

TEST(ScrollState, HasNowhereToGoWhenAllIsVisible) {
  ScrollState state;
  EXPECT_FALSE(state.is_set_up());
  state.SetUp(300, 200);
  EXPECT_TRUE(state.is_set_up());
  EXPECT_EQ(state.range(), 0);
  EXPECT_EQ(state.Scroll(ScrollAction::kPageDown, 0), 0);
  EXPECT_EQ(state.Scroll(ScrollAction::kBottom, 0), 0);
}

/// The edit dialog's controls in a window too small for them.
class ScrollingDialogTest : public FrameworkTest {
 protected:
  void Open(ScrollingDialog& dialog, QSize size) {
    ASSERT_TRUE(dialog.CreateModeless(nullptr));
    dialog.Show(true);
    WidgetOf(&dialog)->resize(size);
    application().PumpMessages();
  }
  static QScrollBar* Bar(const ScrollingDialog& dialog, Qt::Orientation orientation) {
    for (auto* bar : WidgetOf(&dialog)->findChildren<QScrollBar*>(QString(), Qt::FindDirectChildrenOnly))
      if (bar->orientation() == orientation) return bar;
    return nullptr;
  }
  static int TopOf(const ScrollingDialog& dialog) {
    QWidget* field = ControlOf(dialog, QStringLiteral("control_1001"));
    return field->mapTo(WidgetOf(&dialog), QPoint()).y();
  }
};

TEST_F(ScrollingDialogTest, MovesItsContentByTheDifference) {
  ScrollingDialog dialog(200, false, true);
  Open(dialog, {300, 60});
  const int top = TopOf(dialog);
  EXPECT_FALSE(dialog.vertical().is_set_up()) << "only the first scroll message sets it up";
  EXPECT_EQ(dialog.Dispatch(Message::kVScroll, static_cast<WordParameter>(ScrollAction::kLineDown), 0), 1);
  EXPECT_EQ(dialog.vertical().position(), 2) << "a thirtieth of the page";
  EXPECT_EQ(TopOf(dialog), top - 2);
  dialog.Dispatch(Message::kVScroll, static_cast<WordParameter>(ScrollAction::kBottom), 0);
  EXPECT_GT(dialog.vertical().range(), 0);
  EXPECT_EQ(TopOf(dialog), top - dialog.vertical().range());
  dialog.Dispatch(Message::kVScroll, static_cast<WordParameter>(ScrollAction::kThumb) | (7u << 16), 0);
  EXPECT_EQ(TopOf(dialog), top - 7);
}

TEST_F(ScrollingDialogTest, IsScrolledWithItsBar) {
  ScrollingDialog dialog(200, false, true);
  Open(dialog, {300, 60});
  QScrollBar* bar = Bar(dialog, Qt::Vertical);
  ASSERT_NE(bar, nullptr);
  EXPECT_TRUE(bar->isVisible());
  const int top = TopOf(dialog);
  QTest::keyClick(bar, Qt::Key_End);
  EXPECT_EQ(dialog.vertical().position(), dialog.vertical().range());
  EXPECT_EQ(bar->value(), dialog.vertical().position());
  EXPECT_LT(TopOf(dialog), top);
  QTest::keyClick(bar, Qt::Key_PageUp);
  EXPECT_EQ(dialog.vertical().position(), std::max(0, dialog.vertical().range() - bar->pageStep()));
  QTest::keyClick(bar, Qt::Key_Home);
  EXPECT_EQ(TopOf(dialog), top);
}

TEST_F(ScrollingDialogTest, IgnoresADirectionThatIsNotEnabled) {
  ScrollingDialog dialog(200, false, true);
  Open(dialog, {300, 60});
  EXPECT_EQ(dialog.Dispatch(Message::kHScroll, static_cast<WordParameter>(ScrollAction::kBottom), 0), 0);
  EXPECT_EQ(dialog.horizontal().position(), 0);
  EXPECT_EQ(Bar(dialog, Qt::Horizontal), nullptr);
}

TEST_F(ScrollingDialogTest, NeedsNoBarWhenAllIsVisible) {
  ScrollingDialog dialog(200, true, true);
  Open(dialog, {640, 400});
  EXPECT_FALSE(Bar(dialog, Qt::Vertical)->isVisible());
  EXPECT_FALSE(Bar(dialog, Qt::Horizontal)->isVisible());
}

TEST_F(ScrollingDialogTest, StaysWithinItsRangeWhenTheWindowGrows) {
  ScrollingDialog dialog(200, false, true);
  Open(dialog, {300, 60});
  const int top = TopOf(dialog);
  dialog.Dispatch(Message::kVScroll, static_cast<WordParameter>(ScrollAction::kBottom), 0);
  WidgetOf(&dialog)->resize(300, 500);
  application().PumpMessages();
  EXPECT_EQ(dialog.vertical().position(), 0);
  EXPECT_GE(TopOf(dialog), top);
}

}  // namespace
}  // namespace celldesk
