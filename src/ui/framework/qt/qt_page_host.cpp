#include <QListWidget>
#include <QMainWindow>
#include <QProxyStyle>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "ui/framework/dialog.h"
#include "ui/framework/page_host.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_icons.h"
#include "ui/framework/qt/qt_text.h"
#include "ui/framework/qt/touch_target.h"
#include "ui/framework/window.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kPagesName = 372;

// Tabs as high as the command bar's buttons, for a pen.
class TabStyle : public QProxyStyle {
 public:
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override {
    const QSize usual = QProxyStyle::sizeFromContents(type, option, size, widget);
    return type == CT_TabBarTab ? usual.expandedTo({0, kTouchTarget}) : usual;
  }
};

QWidget* PlaceFor(Window& owner, int id) {
  auto* dialog = dynamic_cast<Dialog*>(&owner);
  if (dialog != nullptr && dialog->controls() != nullptr) return dialog->controls()->controls.value(id);
  auto* main_window = qobject_cast<QMainWindow*>(WidgetOf(&owner));
  if (main_window == nullptr) return WidgetOf(&owner);
  auto* client = new QWidget(main_window);
  main_window->setCentralWidget(client);
  return client;
}

template <typename Layout>
void FillPlace(QWidget* place, QWidget* selector, QStackedWidget* stack) {
  delete place->layout();
  auto* layout = new Layout(place);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(selector);
  layout->addWidget(stack, 1);
}

}  // namespace

PageHost::PageHost(Window& owner, int id, PageHostStyle style)
    : owner_(owner), id_(id), style_(style), native_(std::make_unique<NativeHost>()) {
  QWidget* place = PlaceFor(owner, id);
  native_->stack = new QStackedWidget(place);
  if (style.icon_list) {
    native_->icons = new QListWidget(place);
    native_->icons->setMaximumWidth(120);
    native_->icons->setAccessibleName(ToQt(LoadString(kPagesName)));
    native_->icons->setObjectName(QStringLiteral("pages_%1").arg(id));
    FillPlace<QHBoxLayout>(place, native_->icons, native_->stack);
    QObject::connect(native_->icons, &QListWidget::currentRowChanged, place,
                     [this](int row) { OnTabClicked(row); });
  } else {
    native_->tabs = new QTabBar(place);
    auto* tab_style = new TabStyle;
    tab_style->setParent(native_->tabs);
    native_->tabs->setStyle(tab_style);
    native_->tabs->setAccessibleName(ToQt(LoadString(kPagesName)));
    native_->tabs->setDocumentMode(true);
    native_->tabs->setExpanding(false);
    native_->tabs->setIconSize({16, 16});
    native_->tabs->setObjectName(QStringLiteral("tabs_%1").arg(id));
    FillPlace<QVBoxLayout>(place, native_->tabs, native_->stack);
    QObject::connect(native_->tabs, &QTabBar::currentChanged, place, [this](int row) { OnTabClicked(row); });
  }
  const auto step = [this](int by) {
    if (PageCount() > 0) Select((current_ + by + PageCount()) % PageCount());
  };
  QObject::connect(new QShortcut(QKeySequence(QStringLiteral("Ctrl+PgDown")), place), &QShortcut::activated,
                   place, [step] { step(1); });
  QObject::connect(new QShortcut(QKeySequence(QStringLiteral("Ctrl+PgUp")), place), &QShortcut::activated,
                   place, [step] { step(-1); });
}

PageHost::~PageHost() {
  if (native_->tabs) native_->tabs->disconnect();
  if (native_->icons) native_->icons->disconnect();
}

void PageHost::AddPage(std::u16string_view label, std::string_view icon, Dialog& page) {
  pages_.push_back(&page);
  if (native_->tabs) {
    const QSignalBlocker quiet(native_->tabs);
    native_->tabs->addTab(IconOf(icon), ToQt(label));
  } else {
    const QSignalBlocker quiet(native_->icons);
    native_->icons->addItem(new QListWidgetItem(IconOf(icon), ToQt(label)));
  }
}

void PageHost::Start() {
  if (style_.select_first_page && !pages_.empty()) Select(0);
}

void PageHost::CreatePages() {
  for (Dialog* page : pages_) {
    if (!page->IsAttached()) static_cast<void>(page->CreatePage(*this));
  }
}

int PageHost::PageCount() const { return static_cast<int>(pages_.size()); }
int PageHost::Current() const { return current_; }
Dialog* PageHost::CurrentPage() const { return PageAt(current_); }

Dialog* PageHost::PageAt(int index) const {
  return index < 0 || index >= PageCount() ? nullptr : pages_[static_cast<std::size_t>(index)];
}

bool PageHost::Select(int index) {
  Dialog* page = PageAt(index);
  if (page == nullptr) return false;
  Dialog* before = CurrentPage();
  if (before != nullptr && index != current_ && !before->OnLeavePage()) return false;
  if (!page->IsAttached() && !page->CreatePage(*this)) return false;
  current_ = index;
  if (native_->tabs) {
    const QSignalBlocker quiet(native_->tabs);
    native_->tabs->setCurrentIndex(index);
  } else {
    const QSignalBlocker quiet(native_->icons);
    native_->icons->setCurrentRow(index);
  }
  native_->stack->setCurrentWidget(WidgetOf(page));
  page->OnShowPage();
  const Notification notification{NotifyCode::kPageChanged, index, -1};
  owner_.Dispatch(Message::kNotify, static_cast<WordParameter>(id_),
                  reinterpret_cast<LongParameter>(&notification));
  return true;
}

void PageHost::OnTabClicked(int index) {
  if (index == current_ || Select(index)) return;
  if (native_->tabs) {
    const QSignalBlocker quiet(native_->tabs);
    native_->tabs->setCurrentIndex(current_);
  } else {
    const QSignalBlocker quiet(native_->icons);
    native_->icons->setCurrentRow(current_);
  }
}

}  // namespace celldesk
