#include "support/fake_thread.h"

#include <future>
#include <thread>
#include <utility>

namespace celldesk {
namespace {

class FakeThread : public Thread {
 public:
  explicit FakeThread(FakeThreadStarter& starter) : starter_(starter) {}
  void SetPriority(ThreadPriority priority) override { starter_.priorities.push_back(priority); }
  bool Join(std::chrono::milliseconds timeout) override {
    starter_.joins.push_back(timeout);
    if (!starter_.stuck) starter_.bodies.clear();
    return !starter_.stuck;
  }

 private:
  FakeThreadStarter& starter_;
};

class StdThread : public Thread {
 public:
  explicit StdThread(std::function<void()> body) {
    std::packaged_task<void()> task(std::move(body));
    ended_ = task.get_future();
    thread_ = std::thread(std::move(task));
  }
  ~StdThread() override {
    if (thread_.joinable()) thread_.detach();
  }
  StdThread(const StdThread&) = delete;
  StdThread& operator=(const StdThread&) = delete;

  void SetPriority(ThreadPriority) override {}
  bool Join(std::chrono::milliseconds timeout) override {
    if (ended_.wait_for(timeout) != std::future_status::ready) return false;
    if (thread_.joinable()) thread_.join();
    return true;
  }

 private:
  std::future<void> ended_;
  std::thread thread_;
};

}  // namespace

std::unique_ptr<Thread> FakeThreadStarter::Start(std::function<void()> body) {
  if (refuse) return nullptr;
  ++started;
  bodies.push_back(std::move(body));
  return std::make_unique<FakeThread>(*this);
}

std::unique_ptr<Thread> StdThreadStarter::Start(std::function<void()> body) {
  ++*running_;
  return std::make_unique<StdThread>([body = std::move(body), running = running_] {
    body();
    --*running;
  });
}

}  // namespace celldesk
