#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <QVariant>
#include <QWindow>

#include "ui/framework/application.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_text.h"
#include "ui/framework/window.h"

namespace celldesk {
namespace {

constexpr char kWindowProperty[] = "celldesk_window";
constexpr int kExposeTime = 250;  // milliseconds

}  // namespace

Window* WindowOf(const QWidget* widget) {
  if (widget == nullptr) return nullptr;
  const QVariant object = widget->property(kWindowProperty);
  return object.isValid() ? reinterpret_cast<Window*>(object.value<quintptr>()) : nullptr;
}

void SetWindowOf(QWidget* widget, Window* window) {
  widget->setProperty(kWindowProperty, window == nullptr
                                           ? QVariant()
                                           : QVariant::fromValue(reinterpret_cast<quintptr>(window)));
}

QWidget* WidgetOf(const Window* window) {
  return window == nullptr || window->native() == nullptr ? nullptr : window->native()->widget.data();
}

Window::Window() = default;

Window::~Window() {
  if (Application::Get() != nullptr && Application::Get()->current_view() == this) {
    Application::Get()->set_current_view(nullptr);
  }
  if (native_ != nullptr) Destroy();
}

void Window::Attach(std::unique_ptr<NativeWindow> native, Window* parent) {
  native_ = std::move(native);
  parent_ = parent;
  SetWindowOf(native_->widget, this);
}

void Window::Detach() {
  if (native_ == nullptr) return;
  if (native_->widget) {
    SetWindowOf(native_->widget, nullptr);
    qDeleteAll(native_->timers);
  }
  native_.reset();
}

void Window::Destroy() {
  const QPointer<QWidget> widget = WidgetOf(this);
  Dispatch(Message::kDestroy, 0, 0);
  Detach();
  if (widget.isNull()) return;
  widget->hide();
  widget->deleteLater();
}

void Window::Post(Message message, WordParameter word, LongParameter parameter) {
  QWidget* widget = WidgetOf(this);
  if (widget == nullptr) return;
  QMetaObject::invokeMethod(
      widget,
      [widget, message, word, parameter] {
        if (Window* window = WindowOf(widget)) window->Dispatch(message, word, parameter);
      },
      Qt::QueuedConnection);
}

void Window::SetTitle(std::u16string_view title) {
  if (QWidget* widget = WidgetOf(this)) widget->setWindowTitle(ToQt(title));
}

std::u16string Window::Title() const {
  const QWidget* widget = WidgetOf(this);
  return widget == nullptr ? std::u16string() : FromQt(widget->windowTitle());
}

void Window::Show(bool visible) {
  if (QWidget* widget = WidgetOf(this)) widget->setVisible(visible);
}

// The window system answers in its own time, and paints nothing before.
void Window::ShowNow() {
  Show(true);
  const QWidget* widget = WidgetOf(this);
  const QWindow* handle = widget == nullptr ? nullptr : widget->windowHandle();
  const QDeadlineTimer deadline(kExposeTime);
  while (handle != nullptr && !handle->isExposed() && !deadline.hasExpired())
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

bool Window::IsVisible() const {
  const QWidget* widget = WidgetOf(this);
  return widget != nullptr && widget->isVisible();
}

void Window::SetFocus() {
  if (QWidget* widget = WidgetOf(this)) widget->setFocus(Qt::OtherFocusReason);
}

void Window::UpdateNow() {
  if (QWidget* widget = WidgetOf(this)) widget->repaint();
}

void Window::StartTimer(int timer_id, int milliseconds) {
  if (native_ == nullptr) return;
  QTimer*& timer = native_->timers[timer_id];
  if (timer == nullptr) {
    timer = new QTimer(native_->widget);
    QObject::connect(timer, &QTimer::timeout, native_->widget, [this, timer_id] {
      Dispatch(Message::kTimer, static_cast<WordParameter>(timer_id), 0);
    });
  }
  timer->start(milliseconds);
}

void Window::StopTimer(int timer_id) {
  if (native_ == nullptr) return;
  delete native_->timers.take(timer_id);
}

}  // namespace celldesk
