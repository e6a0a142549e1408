#include <QDialog>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "ui/framework/application.h"
#include "ui/framework/command_surface.h"
#include "ui/framework/dialog.h"
#include "ui/framework/frame_window.h"
#include "ui/framework/page_host.h"
#include "ui/framework/qt/dialog_builder.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_text.h"

namespace celldesk {
namespace {

std::function<void(Dialog& dialog)> modal_hook;

// A dialog opens no larger than the smallest screen, as far as its controls allow.
constexpr QSize kSmallestScreen(640, 240);

// Escape and the window's close button are the Cancel command.
class NativeDialogWindow : public QDialog {
 public:
  NativeDialogWindow(QWidget* owner, Window& dialog) : QDialog(owner), dialog_(dialog) {
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  }

  void reject() override { dialog_.Dispatch(Message::kCommand, kIdCancel, 0); }

 private:
  Window& dialog_;
};

// A modal run's bookkeeping: the dialog is the current view meanwhile.
class CurrentViewScope {
 public:
  explicit CurrentViewScope(Window* view) : before_(Application::Get()->current_view()) {
    Application::Get()->set_current_view(view);
  }
  ~CurrentViewScope() {
    Application* application = Application::Get();
    application->set_current_view(before_);
    if (FrameWindow* frame = application->main_frame()) frame->Dispatch(Message::kActivate, 1, 0);
  }
  CurrentViewScope(const CurrentViewScope&) = delete;
  CurrentViewScope& operator=(const CurrentViewScope&) = delete;

 private:
  Window* before_;
};

}  // namespace

Dialog::Dialog(int template_number) : template_number_(template_number) {}

Dialog::~Dialog() {
  list_.reset();
  surface_.reset();
  if (IsAttached()) Window::Destroy();
}

void Dialog::SetModalHook(std::function<void(Dialog& dialog)> hook) { modal_hook = std::move(hook); }

namespace {

// Makes the controls in `widget`, which becomes the dialog's native window.
std::unique_ptr<NativeDialog> MakeControls(const DialogTemplate& form, QWidget* widget, Dialog& dialog) {
  auto native = std::make_unique<NativeDialog>();
  native->content = widget;
  native->dialog = qobject_cast<QDialog*>(widget);
  widget->setWindowTitle(ToQt(form.title));
  BuildControls(form, widget, dialog, *native);
  return native;
}

}  // namespace

int Dialog::RunModal(Window* owner, LongParameter parameter) {
  const DialogTemplate form = LoadDialogTemplate(template_number_);
  if (form.controls.empty()) return -1;
  NativeDialogWindow window(WidgetOf(owner), *this);
  CurrentViewScope current(this);
  Attach(std::make_unique<NativeWindow>(&window), owner);
  controls_ = MakeControls(form, &window, *this);
  Dispatch(Message::kInitDialog, 0, parameter);
  window.resize(window.sizeHint().boundedTo(kSmallestScreen));
  if (modal_hook)
    QMetaObject::invokeMethod(
        &window, [this, hook = modal_hook] { hook(*this); }, Qt::QueuedConnection);
  const std::optional<int> ended = controls_->result;
  const int result = ended ? *ended : window.exec();
  Dispatch(Message::kDestroy, 0, 0);
  list_.reset();
  surface_.reset();
  return result;
}

bool Dialog::CreateModeless(Window* owner, LongParameter parameter) {
  const DialogTemplate form = LoadDialogTemplate(template_number_);
  if (form.controls.empty()) return false;
  auto* window = new NativeDialogWindow(WidgetOf(owner), *this);
  Attach(std::make_unique<NativeWindow>(window), owner);
  controls_ = MakeControls(form, window, *this);
  Application::Get()->set_modeless_dialog(this);
  Dispatch(Message::kInitDialog, 0, parameter);
  window->resize(window->sizeHint().boundedTo(kSmallestScreen));
  return true;
}

bool Dialog::CreatePage(PageHost& host) {
  const DialogTemplate form = LoadDialogTemplate(template_number_);
  if (form.controls.empty()) return false;
  auto* page = new QWidget(host.native()->stack);
  Attach(std::make_unique<NativeWindow>(page), &host.owner());
  controls_ = MakeControls(form, page, *this);
  host.native()->stack->addWidget(page);
  Dispatch(Message::kInitDialog, 0, 0);
  return true;
}

void Dialog::EndDialog(int result) {
  if (controls_ == nullptr || !controls_->dialog) return;
  if (!controls_->dialog->isVisible()) controls_->result = result;
  controls_->dialog->done(result);
}

// Every message goes to WindowProc first; a non-zero result ends the handling.
MessageResult Dialog::Dispatch(Message message, WordParameter word, LongParameter parameter) {
  if (!IsAttached()) return 0;
  if (message == Message::kInitDialog) return OnInitDialog(static_cast<int>(word), parameter) ? 1 : 0;
  if (message == Message::kDestroy) return OnDestroy(word, parameter);
  if (const MessageResult result = WindowProc(message, word, parameter)) return result;
  switch (message) {
    case Message::kCommand:
      OnCommand(static_cast<int>(word), parameter);
      return 1;
    case Message::kTimer:
      OnTimer(static_cast<int>(word));
      return 1;
    case Message::kInitMenuPopup:
      OnInitMenuPopup(*reinterpret_cast<MenuState*>(word), static_cast<int>(parameter & 0xFFFF));
      return 1;
    case Message::kNotify:
      OnNotify(static_cast<int>(word), *reinterpret_cast<const Notification*>(parameter));
      return 1;
    default:
      return 0;
  }
}

// The controls go with the native window: from here on they read as empty.
MessageResult Dialog::OnDestroy(WordParameter word, LongParameter parameter) {
  const MessageResult result = Window::Dispatch(Message::kDestroy, word, parameter);
  controls_.reset();
  Application* application = Application::Get();
  if (application != nullptr && application->modeless_dialog() == this)
    application->set_modeless_dialog(nullptr);
  return result;
}

void Dialog::OnCommand(int command, LongParameter /*parameter*/) {
  if (command == kIdCancel) {
    EndDialog(kIdCancel);
  } else if (command == kIdOk && UpdateData(true)) {
    EndDialog(kIdOk);
  }
}

ListView& Dialog::List(int id) {
  if (list_ == nullptr) list_ = std::make_unique<ListView>(*this, id);
  return *list_;
}

CommandSurface& Dialog::Surface() {
  if (surface_ == nullptr) surface_ = std::make_unique<CommandSurface>(*this);
  return *surface_;
}

}  // namespace celldesk
