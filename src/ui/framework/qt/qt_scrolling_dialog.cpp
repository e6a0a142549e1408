#include <QGridLayout>
#include <QLayout>
#include <QScrollBar>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <optional>

#include "ui/framework/qt/native.h"
#include "ui/framework/scrolling_dialog.h"

namespace celldesk {
namespace {

constexpr int kLinesAPage = 30;

std::optional<ScrollAction> ActionOf(int slider_action) {
  switch (slider_action) {
    case QAbstractSlider::SliderSingleStepSub:
      return ScrollAction::kLineUp;
    case QAbstractSlider::SliderSingleStepAdd:
      return ScrollAction::kLineDown;
    case QAbstractSlider::SliderPageStepSub:
      return ScrollAction::kPageUp;
    case QAbstractSlider::SliderPageStepAdd:
      return ScrollAction::kPageDown;
    case QAbstractSlider::SliderToMinimum:
      return ScrollAction::kTop;
    case QAbstractSlider::SliderToMaximum:
      return ScrollAction::kBottom;
    case QAbstractSlider::SliderMove:
      return ScrollAction::kThumb;
    default:
      return std::nullopt;
  }
}

// The user's action becomes a scroll message; where the bar then stands is the dialog's decision.
QScrollBar* AddBar(Qt::Orientation orientation, QWidget* page, Window& dialog) {
  auto* bar = new QScrollBar(orientation, page);
  const Message message = orientation == Qt::Vertical ? Message::kVScroll : Message::kHScroll;
  QObject::connect(bar, &QScrollBar::actionTriggered, page, [bar, message, &dialog](int slider_action) {
    const std::optional<ScrollAction> action = ActionOf(slider_action);
    const int wanted = bar->sliderPosition();
    bar->setSliderPosition(bar->value());
    if (!action) return;
    dialog.Dispatch(message, static_cast<WordParameter>(*action) | static_cast<WordParameter>(wanted) << 16,
                    0);
  });
  return bar;
}

// Shows as much of the content as fits; the content is never smaller than it wants to be.
class ScrollView : public QWidget {
 public:
  explicit ScrollView(QWidget* page) : QWidget(page) {}
  std::function<void()> on_resize;

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override {
    if (on_resize) on_resize();
  }
};

void ShowBar(QScrollBar* bar, const ScrollExtent& extent) {
  if (bar == nullptr) return;
  bar->setPageStep(extent.page);
  bar->setSingleStep(extent.page / kLinesAPage);
  bar->setRange(0, std::max(extent.content - extent.page, 0));
  bar->setVisible(extent.content > extent.page);
}

}  // namespace

bool ScrollingDialog::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  QWidget* page = controls()->content;
  auto scroller = std::make_unique<NativeScroller>();
  auto* view = new ScrollView(page);
  scroller->view = view;
  scroller->content = new QWidget(view);
  scroller->content->setLayout(page->layout());
  auto* frame = new QGridLayout(page);
  frame->setContentsMargins(0, 0, 0, 0);
  frame->setSpacing(0);
  frame->addWidget(view, 0, 0);
  if (horizontal_enabled_) frame->addWidget(scroller->horizontal = AddBar(Qt::Horizontal, page, *this), 1, 0);
  if (vertical_enabled_) frame->addWidget(scroller->vertical = AddBar(Qt::Vertical, page, *this), 0, 1);
  controls()->scroller = std::move(scroller);
  view->on_resize = [this] { OnResize(); };
  return true;
}

ScrollExtent ScrollingDialog::Extent(bool is_vertical) const {
  if (controls() == nullptr || controls()->scroller == nullptr) return {};
  const QSize page = controls()->scroller->view->size();
  const QSize all = controls()->scroller->content->minimumSizeHint();
  return is_vertical ? ScrollExtent{page.height(), all.height()} : ScrollExtent{page.width(), all.width()};
}

void ScrollingDialog::LayOut() {
  if (controls() == nullptr || controls()->scroller == nullptr) return;
  const NativeScroller& scroller = *controls()->scroller;
  const ScrollExtent across = Extent(false), down = Extent(true);
  ShowBar(scroller.horizontal, across);
  ShowBar(scroller.vertical, down);
  scroller.content->resize(horizontal_enabled_ ? std::max(across.page, across.content) : across.page,
                           vertical_enabled_ ? std::max(down.page, down.content) : down.page);
}

void ScrollingDialog::MoveContent(bool is_vertical, int position) {
  const NativeScroller& scroller = *controls()->scroller;
  QScrollBar* bar = is_vertical ? scroller.vertical : scroller.horizontal;
  if (bar != nullptr) bar->setValue(position);
  const QPoint place = scroller.content->pos();
  scroller.content->move(is_vertical ? QPoint(place.x(), -position) : QPoint(-position, place.y()));
}

}  // namespace celldesk
