#include "simulator/posix/pty_phone.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace celldesk::simulator {

PtyPhone::PtyPhone(SimulatedPhone phone, PtyOptions options)
    : phone_(std::move(phone)),
      known_memory_(phone_.memory()),
      options_(std::move(options)),
      wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

bool PtyPhone::Open() {
  const std::lock_guard lock(mutex_);
  if (!line_.Open()) return false;
  return options_.port_name.empty() || entry_.Place(options_.port_name, line_.device());
}

bool PtyPhone::Start() {
  stopping_ = false;
  if (!Open()) return false;
  thread_ = std::thread([this] { Serve(); });
  return true;
}

void PtyPhone::RequestStop() {
  stopping_ = true;
  const std::uint64_t one = 1;
  static_cast<void>(!write(wake_.get(), &one, sizeof one));
}

void PtyPhone::Stop() {
  RequestStop();
  if (thread_.joinable()) thread_.join();
  const std::lock_guard lock(mutex_);
  ForgetClient();
  entry_.Remove();
  line_.Close();
}

std::string PtyPhone::device() const {
  const std::lock_guard lock(mutex_);
  return line_.open() ? line_.device() : std::string();
}

void PtyPhone::ChangePhone(const std::function<std::vector<Emission>(SimulatedPhone&)>& change) {
  {
    const std::lock_guard lock(mutex_);
    Queue(change(phone_), 0);
    NoteChange();
  }
  const std::uint64_t one = 1;
  static_cast<void>(!write(wake_.get(), &one, sizeof one));
}

bool PtyPhone::WaitFor(const std::function<bool(SimulatedPhone&)>& condition,
                       std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, patience, [&] { return condition(phone_); });
}

bool PtyPhone::WaitUntilQuiet(std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, patience, [this] { return due_.empty(); });
}

void PtyPhone::Serve() {
  while (!stopping_) {
    std::array<pollfd, 3> sources{{{wake_.get(), POLLIN, 0},
                                   {line_.watch_descriptor(), POLLIN, 0},
                                   {line_.bytes_descriptor(), POLLIN, 0}}};
    if (blocked_) sources[2].events |= POLLOUT;
    poll(sources.data(), sources.size(), PollTimeout());
    std::uint64_t wakes = 0;
    static_cast<void>(!read(wake_.get(), &wakes, sizeof wakes));
    const std::lock_guard lock(mutex_);
    if (line_.open()) ReadLine();
    if (line_.open() && line_.LastClientLeft()) ForgetClient();
    has_client_ = line_.open() && line_.has_client();
    WriteDue();
    changed_.notify_all();
  }
}

void PtyPhone::ForgetClient() {
  phone_.ResetLine();
  due_.clear();
}

int PtyPhone::PollTimeout() const {
  const std::lock_guard lock(mutex_);
  if (due_.empty() || blocked_) return -1;
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(due_.front().time - Clock::now());
  return static_cast<int>(std::clamp<long long>(wait.count(), 0, 60000));
}

void PtyPhone::ReadLine() {
  const std::string bytes = line_.Read();
  if (bytes.empty()) return;
  if (options_.on_bytes) options_.on_bytes('>', bytes);
  Queue(phone_.Receive(bytes), bytes.size());
  NoteChange();
}

void PtyPhone::Queue(const std::vector<Emission>& emissions, std::size_t received) {
  Clock::time_point time = due_.empty() ? Clock::now() : std::max(Clock::now(), due_.back().time);
  for (Emission& emission : Pace(emissions, options_.baud, received)) {
    time += std::chrono::milliseconds(emission.delay_ms);
    due_.push_back({time, std::move(emission)});
  }
}

void PtyPhone::NoteChange() {
  if (!options_.on_change || phone_.memory() == known_memory_) return;
  known_memory_ = phone_.memory();
  options_.on_change(known_memory_);
}

void PtyPhone::WriteDue() {
  blocked_ = false;
  while (!due_.empty() && !blocked_ && due_.front().time <= Clock::now()) {
    if (!WriteFront()) return;
    const LineEvent event = due_.front().emission.event;
    due_.pop_front();
    if (event != LineEvent::kNone) HangUp(event == LineEvent::kHangUpBack);
  }
}

/// False while the client has no room for the rest. What nobody listens to is lost, as on a real line.
bool PtyPhone::WriteFront() {
  std::string& bytes = due_.front().emission.bytes;
  if (!line_.open() || !line_.has_client() || bytes.empty()) return true;
  const std::size_t written = line_.Write(bytes);
  if (options_.on_bytes && written > 0) options_.on_bytes('<', bytes.substr(0, written));
  bytes.erase(0, written);
  blocked_ = !bytes.empty();
  return !blocked_;
}

void PtyPhone::HangUp(bool comes_back) {
  ForgetClient();
  entry_.Remove();
  line_.Close();
  if (!comes_back || !line_.Open()) return;
  if (!options_.port_name.empty()) static_cast<void>(entry_.Place(options_.port_name, line_.device()));
  if (options_.on_device) options_.on_device(line_.device());
}

}  // namespace celldesk::simulator
