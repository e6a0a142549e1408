#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <functional>
#include <utility>
#include <vector>

#include "ui/framework/application.h"
#include "ui/framework/command_surface.h"
#include "ui/framework/dialog.h"
#include "ui/framework/frame_window.h"
#include "ui/framework/qt/desk_style.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_text.h"

namespace celldesk {
namespace {

Application* the_application = nullptr;

constexpr int kHelpKey = -1;
constexpr QEvent::Type kIdleEvent = QEvent::User;

// Letters that follow each other so soon, in milliseconds, belong together: a pen on a small keyboard is
// slow.
constexpr int kTypingInterval = 1000;

// While lines keep coming the window still gets its share of time this often.
constexpr qint64 kPumpInterval = 20;

}  // namespace

/// Sees every event first: accelerators act on the main frame, and input is noticed while a procedure waits.
struct NativeApplication : public QObject {
  NativeApplication(int& argument_count, char** arguments) : toolkit(argument_count, arguments) {
    toolkit.installEventFilter(this);
    QApplication::setStyle(new DeskStyle);
    // The desktop knows the window by the name of its entry, and shows its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("celldesk"));
    QApplication::setKeyboardInputInterval(kTypingInterval);
    pump_clock.start();
  }

  // Idle work follows every message, once nothing else waits: it is an event of low priority.
  void PostIdle() {
    if (idle_posted || waiting > 0) return;
    idle_posted = true;
    QCoreApplication::postEvent(this, new QEvent(kIdleEvent), Qt::LowEventPriority);
  }

  bool event(QEvent* event) override {
    if (event->type() != kIdleEvent) return QObject::event(event);
    idle_posted = false;
    if (waiting == 0) the_application->IdleLoop();
    return true;
  }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == kIdleEvent) return false;
    if (event->type() == QEvent::Paint && !after_paint.empty()) PostAfterPaintWork();
    PostIdle();
    message_seen = true;
    if (event->spontaneous()) input_seen = true;
    const bool is_key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!is_key) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    const int command = AcceleratorCommand(*key);
    if (command == 0 || !FrameTakesKeys()) return false;
    CommandSurface* surface = ActiveSurface();
    if (command != kHelpKey && !Takes(surface, command)) return false;
    event->accept();
    if (event->type() == QEvent::KeyPress) Accelerate(command, surface);
    return event->type() == QEvent::KeyPress;
  }

  // A timer's turn comes when the paint event has been handled and the picture handed over.
  void PostAfterPaintWork() {
    for (auto& work : std::exchange(after_paint, {})) QTimer::singleShot(0, this, std::move(work));
  }

  static int AcceleratorCommand(const QKeyEvent& key) {
    if (key.key() == Qt::Key_F1) return kHelpKey;
    const QKeySequence pressed(key.keyCombination());
    for (const Accelerator& accelerator : the_application->accelerators()) {
      if (QKeySequence(ToQt(accelerator.key)) == pressed) return accelerator.command;
    }
    return 0;
  }

  // Message boxes, file dialogs and menus keep their keys, whatever window they belong to; our own windows
  // give them to the main frame.
  static bool FrameTakesKeys() {
    if (the_application->main_frame() == nullptr || QApplication::activePopupWidget() != nullptr)
      return false;
    const QWidget* modal = QApplication::activeModalWidget();
    return modal == nullptr || dynamic_cast<Dialog*>(WindowOf(modal)) != nullptr;
  }

  // The menus that the user sees as active: those of the modal dialog, which may have none, or the frame's.
  static CommandSurface* ActiveSurface() {
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr) return &the_application->main_frame()->Surface();
    auto* dialog = dynamic_cast<Dialog*>(WindowOf(modal));
    return dialog->HasSurface() ? &dialog->Surface() : nullptr;
  }

  // The frame takes every key of its table, also those of commands that the folder's menu does not show; a
  // dialog takes the keys of what it shows.
  static bool Takes(const CommandSurface* surface, int command) {
    if (surface == nullptr) return false;
    return QApplication::activeModalWidget() == nullptr || surface->Offers(command);
  }

  // A command that the menu of the active window shows disabled is not given.
  static void Accelerate(int command, const CommandSurface* surface) {
    FrameWindow* frame = the_application->main_frame();
    if (command == kHelpKey) {
      frame->Dispatch(Message::kHelp, 0, 0);
    } else if (surface->QueryState().IsEnabled(command)) {
      frame->Dispatch(Message::kCommand, static_cast<WordParameter>(command), 1);
    }
  }

  // One round of the event loop that ends at the latest when `deadline` passes.
  void ProcessUntil(const QDeadlineTimer& deadline) {
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    timer.start(std::chrono::milliseconds(std::max<qint64>(deadline.remainingTime(), 0)));
    QEventLoop().processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    pump_clock.restart();
  }

  // True when there were messages. No idle work comes of them: the idle loop that asks goes on itself.
  bool HandleWaiting() {
    message_seen = false;
    ++waiting;
    QCoreApplication::processEvents(QEventLoop::AllEvents, kPumpInterval);
    --waiting;
    return message_seen;
  }

  QApplication toolkit;
  QElapsedTimer pump_clock;
  std::vector<std::function<void()>> after_paint;
  QEventLoop* loop = nullptr;
  int waiting = 0;
  int exit_code = 0;
  bool idle_posted = false;
  bool input_seen = false;
  bool message_seen = false;
  bool quit = false;
  bool wait_cursor = false;
};

namespace {

/// While one of these lives messages are handled without idle work.
class PumpScope {
 public:
  explicit PumpScope(NativeApplication& native) : native_(native) { ++native_.waiting; }
  ~PumpScope() {
    if (--native_.waiting == 0) native_.PostIdle();
  }
  PumpScope(const PumpScope&) = delete;
  PumpScope& operator=(const PumpScope&) = delete;

 private:
  NativeApplication& native_;
};

}  // namespace

Application::Application(int& argument_count, char** arguments) {
  the_application = this;
  native_ = std::make_unique<NativeApplication>(argument_count, arguments);
}

Application::~Application() {
  free_later_.clear();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  native_.reset();
  the_application = nullptr;
}

Application* Application::Get() { return the_application; }

bool Application::InitInstance(std::u16string_view /*command_line*/, bool /*show*/) { return true; }
int Application::ExitInstance(int result) { return result; }
bool Application::RegisterWindowClass() { return true; }
void Application::UnregisterWindowClass() {}

int Application::Main(std::u16string_view command_line) {
  int result = 0;
  if (InitInstance(command_line, true)) result = Run(nullptr);
  return ExitInstance(result);
}

bool Application::WaitFor(Event& event, std::chrono::milliseconds timeout) {
  if (native_->pump_clock.elapsed() >= kPumpInterval) PumpMessages();
  if (event.IsSet()) return true;
  const PumpScope pumping(*native_);
  event.SetHook([] { QAbstractEventDispatcher::instance(qApp->thread())->wakeUp(); });
  QDeadlineTimer deadline(timeout, Qt::PreciseTimer);
  while (!event.IsSet() && !deadline.hasExpired()) {
    native_->input_seen = false;
    native_->ProcessUntil(deadline);
    if (native_->input_seen) deadline.setRemainingTime(timeout, Qt::PreciseTimer);
  }
  event.SetHook({});
  return event.IsSet();
}

void Application::Pause(std::chrono::milliseconds duration) {
  const PumpScope pumping(*native_);
  const QDeadlineTimer deadline(duration, Qt::PreciseTimer);
  while (!deadline.hasExpired()) native_->ProcessUntil(deadline);
}

void Application::PumpMessages() {
  const PumpScope pumping(*native_);
  QCoreApplication::processEvents(QEventLoop::AllEvents, kPumpInterval);
  native_->pump_clock.restart();
}

int Application::Run(const bool* go_on) {
  QEventLoop loop;
  QEventLoop* outer = native_->loop;
  native_->loop = &loop;
  native_->PostIdle();
  if (go_on == nullptr) {
    if (!native_->quit) loop.exec();
  } else {
    while (*go_on && !native_->quit)
      loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  native_->loop = outer;
  return native_->exit_code;
}

void Application::IdleLoop() {
  int count = 0;
  while (!native_->quit && OnIdle(count)) count = native_->HandleWaiting() ? 0 : count + 1;
}

bool Application::OnIdle(int count) {
  if (current_view_ != nullptr && current_view_->OnIdle(count)) return true;
  free_later_.clear();
  return false;
}

void Application::ShowWaitCursor(bool visible) {
  if (visible == native_->wait_cursor) return;
  native_->wait_cursor = visible;
  if (visible) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void Application::PostQuit(int code) {
  native_->exit_code = code;
  native_->quit = true;
  if (native_->loop != nullptr) native_->loop->quit();
}

void Application::Post(std::function<void()> work) {
  QMetaObject::invokeMethod(native_.get(), std::move(work), Qt::QueuedConnection);
}

void Application::PostAfterPaint(std::function<void()> work) {
  native_->after_paint.push_back(std::move(work));
}

void Application::Beep() {
  ++beeps_;
  QApplication::beep();
}

void Application::FreeLater(std::unique_ptr<Object> object) { free_later_.push_back(std::move(object)); }
void Application::SetAccelerators(std::vector<Accelerator> table) { accelerators_ = std::move(table); }

}  // namespace celldesk
