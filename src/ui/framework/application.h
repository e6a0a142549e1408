#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "link/waiter.h"
#include "ui/framework/menu_template.h"
#include "util/object.h"

namespace celldesk {

class Dialog;
class FrameWindow;
class Window;
struct NativeApplication;

/// The program's one application object: start-up, message loop, idle work, and waiting while messages are
/// pumped. Also keeps what is process-wide: the current view, the active modeless dialog and the main frame.
class Application : public Object, public Waiter {
 public:
  /// `arguments` are the program's own, for the toolkit; borrowed for the whole run.
  Application(int& argument_count, char** arguments);
  ~Application() override;  // slot 0

  // Virtual operations in slot order.
  /// 1: start-up; false ends the program at once.
  virtual bool InitInstance(std::u16string_view command_line, bool show);
  /// 2: clean-up; its result is the exit code.
  virtual int ExitInstance(int result);
  /// 3: waits for the event with messages pumped; each message handled starts the time-out anew.
  bool WaitFor(Event& event, std::chrono::milliseconds timeout) override;
  /// 4: handles every waiting message, without idle work.
  virtual void PumpMessages();
  /// 5: the message loop until the quit message, or until `*go_on` turns false.
  virtual int Run(const bool* go_on);
  /// 6: OnIdle with 0, 1, ... until it returns false. The message loop runs it whenever no message waits; one
  /// that comes meanwhile is handled between two calls, and they begin with 0 again.
  virtual void IdleLoop();
  /// 7: asks the current view; when it wants no more, frees what was collected since.
  virtual bool OnIdle(int count);
  /// 8, 9: the window class; true when it is registered.
  virtual bool RegisterWindowClass();
  virtual void UnregisterWindowClass();

  void Pause(std::chrono::milliseconds duration) override;
  void ShowWaitCursor(bool visible) override;

  /// InitInstance, Run when it agreed, ExitInstance.
  int Main(std::u16string_view command_line);
  /// Ends the message loop with this code.
  void PostQuit(int code);
  /// Runs `work` from the message loop, after everything that waits now.
  void Post(std::function<void()> work);
  /// Runs `work` from the message loop, once a window has been painted and is on the screen: for what a start
  /// need not wait for.
  void PostAfterPaint(std::function<void()> work);
  void Beep();
  /// How often it sounded; for tests.
  int beeps() const { return beeps_; }
  /// Keeps `object` until the next idle time, for what must outlive the call that gives it up.
  void FreeLater(std::unique_ptr<Object> object);

  /// The accelerators act on the main frame.
  void SetAccelerators(std::vector<Accelerator> table);
  const std::vector<Accelerator>& accelerators() const { return accelerators_; }

  Window* current_view() const { return current_view_; }
  void set_current_view(Window* view) { current_view_ = view; }
  Dialog* modeless_dialog() const { return modeless_dialog_; }
  void set_modeless_dialog(Dialog* dialog) { modeless_dialog_ = dialog; }
  FrameWindow* main_frame() const { return main_frame_; }
  void set_main_frame(FrameWindow* frame) { main_frame_ = frame; }

  /// The one application; null before it is made.
  static Application* Get();

  NativeApplication* native() const { return native_.get(); }

 private:
  std::unique_ptr<NativeApplication> native_;
  std::vector<Accelerator> accelerators_;
  int beeps_ = 0;
  std::vector<std::unique_ptr<Object>> free_later_;
  Window* current_view_ = nullptr;
  Dialog* modeless_dialog_ = nullptr;
  FrameWindow* main_frame_ = nullptr;
};

}  // namespace celldesk
