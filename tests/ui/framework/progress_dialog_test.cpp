#include "ui/framework/progress_dialog.h"

#include <QEvent>
#include <QProgressBar>
#include <utility>

#include "ui/framework/framework_fixture.h"
#include "ui/user_actions.h"

namespace celldesk {
namespace {

class ProgressDialogTest : public FrameworkTest {};

TEST(ProgressState, ShowsThePercentageOfTheRange) {
  ProgressState state;
  state.SetRange(1, 5);
  for (const auto& [position, percentage] : {std::pair{1, 0}, {2, 25}, {3, 50}, {5, 100}}) {
    state.SetPosition(position);
    EXPECT_EQ(state.Percentage(), percentage);
  }
}

TEST(ProgressState, RoundsDown) {
  ProgressState state;
  state.SetRange(0, 3);
  state.SetPosition(2);
  EXPECT_EQ(state.Percentage(), 66);
}

TEST(ProgressState, StepsOnANegativePositionAndWrapsAfterTheLast) {
  ProgressState state;
  state.SetRange(0, 3);
  std::vector<int> positions;
  for (int step = 0; step < 5; ++step) {
    state.SetPosition(-1);
    positions.push_back(state.position());
  }
  EXPECT_THAT(positions, testing::ElementsAre(1, 2, 0, 1, 2));
}

TEST(ProgressState, LeavesTheBarAloneForAnEmptyRange) {
  ProgressState state;
  state.SetRange(4, 4);
  state.SetPosition(4);
  EXPECT_EQ(state.Percentage(), std::nullopt);
  state.SetPosition(-1);
  EXPECT_EQ(state.position(), 4);
}

TEST(ProgressState, HoldsTheLargestRange) {
  ProgressState state;
  state.SetRange(0, 2147483647);
  state.SetPosition(2147483647);
  EXPECT_EQ(state.Percentage(), 100);
  state.SetPosition(-1);
  EXPECT_EQ(state.position(), 1) << "one further, modulo the steps";
  state.SetRange(-2147483647 - 1, 2147483647);
  EXPECT_EQ(state.Percentage(), 50);
}

TEST(ProgressState, GoesBeyondTheEndsWithAPositionOutsideOfTheRange) {
  ProgressState state;
  state.SetRange(100, 200);
  state.SetPosition(99);
  EXPECT_EQ(state.Percentage(), -1);
  state.SetPosition(0);
  EXPECT_EQ(state.Percentage(), -100);
  state.SetPosition(300);
  EXPECT_EQ(state.Percentage(), 200);
}

/// Counts the paint events of a widget.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    painted += event->type() == QEvent::Paint;
    return false;
  }
  int painted = 0;
};

TEST_F(ProgressDialogTest, ShowsCaptionLineAndBar) {
  ProgressDialog dialog;
  ASSERT_TRUE(dialog.Create(nullptr));
  EXPECT_TRUE(dialog.IsVisible());
  dialog.SetCaption(u"Caption");
  dialog.SetLine(u"Progress 1 of 2...");
  dialog.SetRange(0, 2);
  dialog.SetPosition(1);
  EXPECT_EQ(dialog.Title(), u"Caption");
  EXPECT_EQ(dialog.Text(1001), u"Progress 1 of 2...");
  auto* bar = qobject_cast<QProgressBar*>(ControlOf(dialog, QStringLiteral("control_1002")));
  EXPECT_EQ(bar->value(), 50);
  dialog.SetRange(3, 3);
  dialog.SetPosition(3);
  EXPECT_EQ(bar->value(), 50) << "an empty range leaves it alone";
}

TEST_F(ProgressDialogTest, IsAsLargeAsItsLineAndBar) {
  ProgressDialog dialog;
  ASSERT_TRUE(dialog.Create(nullptr));
  EXPECT_GE(ControlOf(dialog, QStringLiteral("control_1002"))->width(), 300);
  EXPECT_EQ(WidgetOf(&dialog)->height(), WidgetOf(&dialog)->sizeHint().height());
}

TEST_F(ProgressDialogTest, ShowsTheNearerEndForAPositionOutsideOfTheRange) {
  ProgressDialog dialog;
  ASSERT_TRUE(dialog.Create(nullptr));
  const auto* bar = qobject_cast<QProgressBar*>(ControlOf(dialog, QStringLiteral("control_1002")));
  dialog.SetRange(5, 9);
  dialog.SetPosition(8);
  EXPECT_EQ(bar->value(), 75);
  dialog.SetPosition(-1);
  EXPECT_EQ(bar->value(), 0) << "the step wrapped below the range";
  dialog.SetPosition(100);
  EXPECT_EQ(bar->value(), 100);
}

TEST_F(ProgressDialogTest, PaintsEveryChangeAtOnce) {
  ProgressDialog dialog;
  ASSERT_TRUE(dialog.Create(nullptr));
  PaintCounter paints(WidgetOf(&dialog));
  int before = 0;
  const auto painted = [&] { return std::exchange(before, paints.painted) < paints.painted; };
  dialog.SetLine(u"Starting communication...");
  EXPECT_TRUE(painted());
  dialog.SetRange(0, 10);
  dialog.SetPosition(3);
  EXPECT_TRUE(painted());
  dialog.SetCaption(u"Caption");
  EXPECT_TRUE(painted());
  EXPECT_FALSE(painted());
}

TEST_F(ProgressDialogTest, IsEndedByItsOwnerOnly) {
  ProgressDialog dialog;
  ASSERT_TRUE(dialog.Create(nullptr));
  PressKey(dialog, Qt::Key_Escape);
  WidgetOf(&dialog)->close();
  EXPECT_TRUE(dialog.IsVisible());
  dialog.Close();
  EXPECT_FALSE(dialog.IsAttached());
  dialog.SetLine(u"late");
  dialog.SetPosition(1);
  ASSERT_TRUE(dialog.Create(nullptr)) << "and can be opened again";
  EXPECT_EQ(dialog.Text(1001), u"");
}

}  // namespace
}  // namespace celldesk
