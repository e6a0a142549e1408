#include <QCloseEvent>
#include <QLabel>
#include <QMainWindow>
#include <QScreen>
#include <QStatusBar>

#include "ui/framework/application.h"
#include "ui/framework/frame_window.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_icons.h"
#include "ui/framework/qt/qt_text.h"

namespace celldesk {
namespace {

constexpr QSize kDefaultSize(640, 420);
constexpr int kStatusMargin = 4;

// The toolkit's close and activation become messages; closing is the program's own decision.
class NativeFrameWindow : public QMainWindow {
 public:
  explicit NativeFrameWindow(Window& frame) : frame_(frame) {
    resize(kDefaultSize.boundedTo(screen()->availableSize()));
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    frame_.Dispatch(Message::kClose, 0, 0);
  }

  void changeEvent(QEvent* event) override {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
      frame_.Dispatch(Message::kActivate, 1, 0);
  }

  // The menus say it all; nothing here hides the command bar.
  QMenu* createPopupMenu() override { return nullptr; }

 private:
  Window& frame_;
};

QLabel* AddStatusField(QMainWindow* window, const char* name, int stretch) {
  auto* label = new QLabel;
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setContentsMargins(kStatusMargin, 0, kStatusMargin, 0);
  window->statusBar()->addWidget(label, stretch);
  return label;
}

}  // namespace

FrameWindow::FrameWindow() = default;

FrameWindow::~FrameWindow() {
  surface_.reset();
  Detach();
  // Also one that was destroyed but not yet freed: it still refers to this object.
  if (frame_ != nullptr) delete frame_->window.data();
}

bool FrameWindow::Create(std::u16string_view caption, LongParameter parameter) {
  frame_ = std::make_unique<NativeFrame>();
  frame_->window = new NativeFrameWindow(*this);
  frame_->window->setWindowTitle(ToQt(caption));
  frame_->window->statusBar()->setSizeGripEnabled(false);
  frame_->status = AddStatusField(frame_->window, "status", 1);
  frame_->status_right = AddStatusField(frame_->window, "status_right", 0);
  Attach(std::make_unique<NativeWindow>(frame_->window), nullptr);
  surface_ = std::make_unique<CommandSurface>(*this);
  if (Dispatch(Message::kCreate, 0, parameter) < 0) {
    Destroy();
    return false;
  }
  frame_->window->show();
  return true;
}

void FrameWindow::SetStatus(std::u16string_view text) {
  if (IsAttached()) frame_->status->setText(ToQt(text));
}

std::u16string FrameWindow::StatusText() const {
  return IsAttached() ? FromQt(frame_->status->text()) : std::u16string();
}

void FrameWindow::SetStatusRight(std::u16string_view text) {
  if (IsAttached()) frame_->status_right->setText(ToQt(text));
}

void FrameWindow::SetIcon(std::string_view name) {
  if (IsAttached()) frame_->window->setWindowIcon(IconOf(name));
}

void FrameWindow::BringToFront() {
  if (!IsAttached()) return;
  QWidget& window = *frame_->window;
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace celldesk
