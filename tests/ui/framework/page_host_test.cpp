#include "ui/framework/page_host.h"

#include <QListWidget>
#include <QStackedWidget>
#include <QTabBar>
#include <QTest>

#include "ui/framework/framework_fixture.h"
#include "ui/user_actions.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Page : public Dialog {
 public:
  explicit Page(std::string name, std::vector<std::string>& calls)
      : Dialog(200), name_(std::move(name)), calls_(calls) {}

  bool OnInitDialog(int, LongParameter) override {
    calls_.push_back(name_ + " made");
    return true;
  }
  void OnShowPage() override { calls_.push_back(name_ + " shown"); }
  bool OnLeavePage() override {
    calls_.push_back(name_ + (may_leave ? " left" : " kept"));
    return may_leave;
  }

  bool may_leave = true;

 private:
  std::string name_;
  std::vector<std::string>& calls_;
};

class HostFrame : public FrameWindow {
 public:
  MessageResult OnNotify(int control_id, const Notification& notification) override {
    if (notification.code == NotifyCode::kPageChanged) changes.push_back(control_id * 10 + notification.row);
    return 0;
  }
  std::vector<int> changes;
};

class PageHostTest : public FrameworkTest {
 protected:
  void Make(PageHostStyle style) {
    ASSERT_TRUE(frame_.Create(u"Host"));
    host_ = std::make_unique<PageHost>(frame_, 1, style);
    host_->AddPage(u"First", "inbox", first_);
    host_->AddPage(u"Second", "outbox", second_);
    host_->AddPage(u"Third", "outbox", third_);
    host_->Start();
    application().PumpMessages();
  }
  ~PageHostTest() override { host_.reset(); }

  std::vector<std::string> TakeCalls() { return std::exchange(calls_, {}); }

  std::vector<std::string> calls_;
  HostFrame frame_;
  Page first_{"first", calls_};
  Page second_{"second", calls_};
  Page third_{"third", calls_};
  std::unique_ptr<PageHost> host_;
};

TEST_F(PageHostTest, ShowsNothingUntilToldOrStyled) {
  Make({.icon_list = false, .select_first_page = false});
  EXPECT_EQ(host_->Current(), -1);
  EXPECT_EQ(host_->CurrentPage(), nullptr);
  EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(PageHostTest, ShowsTheFirstPageByStyle) {
  Make({.icon_list = false, .select_first_page = true});
  EXPECT_EQ(host_->Current(), 0);
  EXPECT_THAT(TakeCalls(), ElementsAre("first made", "first shown"));
  EXPECT_THAT(frame_.changes, ElementsAre(10));
}

TEST_F(PageHostTest, MakesAPageWhenItIsShownFirst) {
  Make({.icon_list = false, .select_first_page = true});
  TakeCalls();
  ClickTab(frame_, 1);
  EXPECT_THAT(TakeCalls(), ElementsAre("first left", "second made", "second shown"));
  ClickTab(frame_, 0);
  ClickTab(frame_, 1);
  EXPECT_THAT(TakeCalls(), ElementsAre("second left", "first shown", "first left", "second shown"));
  EXPECT_FALSE(third_.IsAttached());
  EXPECT_EQ(host_->CurrentPage(), &second_);
}

TEST_F(PageHostTest, HasTheLabelsOnItsTabs) {
  Make({.icon_list = false, .select_first_page = true});
  const auto* tabs = static_cast<QTabBar*>(ControlOf(frame_, QStringLiteral("tabs_1")));
  EXPECT_EQ(tabs->count(), 3);
  EXPECT_EQ(tabs->tabText(2).toStdString(), "Third");
}

TEST_F(PageHostTest, FillsItsOwnerWithThePage) {
  Make({.icon_list = false, .select_first_page = true});
  const QWidget* page = WidgetOf(&first_);
  EXPECT_TRUE(page->isVisible());
  EXPECT_EQ(page->size(), page->parentWidget()->size());
  EXPECT_GT(page->width(), 500);
}

TEST_F(PageHostTest, KeepsTheTabWhenThePageRefusesToBeLeft) {
  Make({.icon_list = false, .select_first_page = true});
  TakeCalls();
  first_.may_leave = false;
  ClickTab(frame_, 2);
  EXPECT_THAT(TakeCalls(), ElementsAre("first kept"));
  EXPECT_EQ(host_->Current(), 0);
  EXPECT_EQ(static_cast<QTabBar*>(ControlOf(frame_, QStringLiteral("tabs_1")))->currentIndex(), 0);
  EXPECT_TRUE(first_.IsVisible());
  EXPECT_FALSE(host_->Select(1));
}

TEST_F(PageHostTest, SelectsByCodeAndRefusesWhatIsNotThere) {
  Make({.icon_list = false, .select_first_page = true});
  EXPECT_TRUE(host_->Select(2));
  EXPECT_EQ(static_cast<QTabBar*>(ControlOf(frame_, QStringLiteral("tabs_1")))->currentIndex(), 2);
  EXPECT_FALSE(host_->Select(3));
  EXPECT_FALSE(host_->Select(-1));
  EXPECT_EQ(host_->Current(), 2);
}

TEST_F(PageHostTest, StepsThroughThePagesByKey) {
  Make({.icon_list = false, .select_first_page = true});
  WidgetOf(&frame_)->activateWindow();
  application().PumpMessages();
  PressKey(frame_, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(host_->Current(), 1);
  PressKey(frame_, Qt::Key_PageUp, Qt::ControlModifier);
  PressKey(frame_, Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(host_->Current(), 2) << "round to the last";
}

TEST_F(PageHostTest, ChoosesFromAListOfIconsByStyle) {
  Make({.icon_list = true, .select_first_page = true});
  auto* icons = static_cast<QListWidget*>(ControlOf(frame_, QStringLiteral("pages_1")));
  EXPECT_EQ(icons->count(), 3);
  TakeCalls();
  QTest::mouseClick(icons->viewport(), Qt::LeftButton, {}, icons->visualItemRect(icons->item(1)).center());
  EXPECT_THAT(TakeCalls(), ElementsAre("first left", "second made", "second shown"));
  second_.may_leave = false;
  QTest::mouseClick(icons->viewport(), Qt::LeftButton, {}, icons->visualItemRect(icons->item(2)).center());
  EXPECT_EQ(icons->currentRow(), 1);
  EXPECT_EQ(host_->Current(), 1);
}

TEST_F(PageHostTest, WithoutPagesTakesItsKeysCalmly) {
  ASSERT_TRUE(frame_.Create(u"Host"));
  host_ = std::make_unique<PageHost>(frame_, 1, PageHostStyle{.icon_list = false, .select_first_page = true});
  host_->Start();
  WidgetOf(&frame_)->activateWindow();
  application().PumpMessages();
  PressKey(frame_, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(host_->Current(), -1);
}

}  // namespace
}  // namespace celldesk
