#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

#include "platform/serial_port.h"

namespace celldesk {

/// The far end of a fake port whose reads really block, for tests with a real reader thread. Any thread.
class BlockingLine {
 public:
  static constexpr std::chrono::seconds kDeadline{60};

  /// Bytes that one read brings (two reads or more when the buffer is smaller).
  void Arrive(std::string_view bytes);
  /// The same bytes again and again, without end, until a purge.
  void Flood(std::string_view bytes);
  /// `count` reads fail at once, with junk in their buffers.
  void FailReads(int count);
  /// Purging ends no read from now on, until LetGo.
  void Stick();
  void LetGo();
  /// True when a reader stands blocked in a read; false when the deadline passes first.
  bool WaitUntilBlocked();
  /// True when every port is destroyed.
  bool WaitUntilClosed();
  bool closed();
  /// Size of the latest read's buffer, and how often errors were cleared.
  std::size_t read_size();
  int errors_cleared();
  bool WaitUntilReadsFailed();

  // The port's side.
  ReadResult Read(std::span<std::uint8_t> buffer);
  void Purge();
  void ClearError();
  void PortOpened();
  void PortClosed();

 private:
  template <typename Condition>
  bool WaitUntil(Condition condition) {
    std::unique_lock guard(lock_);
    return changed_.wait_for(guard, kDeadline, condition);
  }

  std::mutex lock_;
  std::condition_variable changed_;
  std::deque<std::string> arrived_;
  std::string flood_;
  std::uint64_t purges_ = 0;
  int blocked_ = 0;
  int failing_ = 0;
  int open_ports_ = 0;
  int errors_cleared_ = 0;
  std::size_t read_size_ = 0;
  bool stuck_ = false;
};

/// Opens blocking ports on one line, which they keep alive.
class BlockingPortOpener : public SerialPortOpener {
 public:
  std::unique_ptr<SerialPort> Open(std::u16string_view name, OpenProblem* problem) override;

  std::shared_ptr<BlockingLine> line = std::make_shared<BlockingLine>();
};

}  // namespace celldesk
