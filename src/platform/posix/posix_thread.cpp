#include "platform/posix/posix_thread.h"

#include <sys/resource.h>
#include <unistd.h>

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

namespace celldesk {
namespace {

// From the caller's own, which the user may have made nicer; the system holds it at its limits.
int NiceValue(ThreadPriority priority) {
  const int own = ::getpriority(PRIO_PROCESS, 0);
  switch (priority) {
    case ThreadPriority::kAboveNormal:
      return own - 5;
    case ThreadPriority::kBelowNormal:
      return own + 5;
    default:
      return own;
  }
}

/// What a thread and its owner share; the last of them frees it.
class ThreadState {
 public:
  void Run(const std::function<void()>& body) {
    Announce(::gettid());
    body();
    Announce(kEnded);
  }

  // Under the lock the thread cannot end, so its id cannot belong to another one yet.
  void SetPriority(ThreadPriority priority) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return id_ != kStarting; });
    if (id_ != kEnded) (void)::setpriority(PRIO_PROCESS, static_cast<id_t>(id_), NiceValue(priority));
  }

  bool WaitForEnd(std::chrono::milliseconds timeout) {
    std::unique_lock guard(lock_);
    return changed_.wait_for(guard, timeout, [this] { return id_ == kEnded; });
  }

 private:
  static constexpr pid_t kStarting = 0, kEnded = -1;

  void Announce(pid_t id) {
    std::lock_guard guard(lock_);
    id_ = id;
    changed_.notify_all();
  }

  std::mutex lock_;
  std::condition_variable changed_;
  pid_t id_ = kStarting;
};

class PosixThread : public Thread {
 public:
  explicit PosixThread(std::function<void()> body)
      : state_(std::make_shared<ThreadState>()),
        thread_([state = state_, run = std::move(body)] { state->Run(run); }) {}
  ~PosixThread() override {
    if (thread_.joinable()) thread_.detach();
  }

  void SetPriority(ThreadPriority priority) override { state_->SetPriority(priority); }
  bool Join(std::chrono::milliseconds timeout) override {
    if (!state_->WaitForEnd(timeout)) return false;
    if (thread_.joinable()) thread_.join();
    return true;
  }

 private:
  std::shared_ptr<ThreadState> state_;
  std::thread thread_;
};

}  // namespace

std::unique_ptr<Thread> PosixThreadStarter::Start(std::function<void()> body) {
  try {
    return std::make_unique<PosixThread>(std::move(body));
  } catch (const std::exception&) {
    return nullptr;
  }
}

}  // namespace celldesk
