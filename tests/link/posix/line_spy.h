#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/serial_port.h"

namespace celldesk {

/// What the reads of a real port brought, so that a test can wait for it. Any thread.
class LineSpy {
 public:
  void Saw(const ReadResult& read, std::span<const std::uint8_t> bytes) {
    std::lock_guard guard(lock_);
    if (Failed(read.status)) ++failed_reads_;
    if (read.count > 0) chunks_.emplace_back(bytes.begin(), bytes.end());
    received_ += read.count;
    changed_.notify_all();
  }

  /// False when the deadline passes first.
  bool WaitForBytes(std::size_t count) {
    return Wait([&] { return received_ >= count; });
  }
  bool WaitForFailedReads(int count) {
    return Wait([&] { return failed_reads_ >= count; });
  }
  /// The chunks seen since the last call.
  std::vector<std::u16string> TakeChunks() {
    std::lock_guard guard(lock_);
    received_ = 0;
    return std::exchange(chunks_, {});
  }

 private:
  template <typename Condition>
  bool Wait(Condition condition) {
    std::unique_lock guard(lock_);
    return changed_.wait_for(guard, std::chrono::minutes(1), condition);
  }

  std::mutex lock_;
  std::condition_variable changed_;
  std::vector<std::u16string> chunks_;
  std::size_t received_ = 0;
  int failed_reads_ = 0;
};

/// A port that tells a spy about every read, once its bytes have been taken.
class SpiedPort : public SerialPort {
 public:
  SpiedPort(std::unique_ptr<SerialPort> port, LineSpy& spy) : port_(std::move(port)), spy_(spy) {}

  ReadResult Read(std::span<std::uint8_t> buffer) override {
    const ReadResult read = port_->Read(buffer);
    spy_.Saw(read, buffer.first(read.count));
    return read;
  }
  Status Write(std::span<const std::uint8_t> bytes) override { return port_->Write(bytes); }
  void Purge() override { port_->Purge(); }
  std::optional<LineParameters> Parameters() const override { return port_->Parameters(); }
  Status SetParameters(const LineParameters& parameters) override { return port_->SetParameters(parameters); }
  Status SetReadInterval(std::chrono::milliseconds interval) override {
    return port_->SetReadInterval(interval);
  }
  Status ClearError() override { return port_->ClearError(); }
  std::optional<std::uint32_t> ProviderCapabilities() const override { return port_->ProviderCapabilities(); }

 private:
  std::unique_ptr<SerialPort> port_;
  LineSpy& spy_;
};

class SpiedPortOpener : public SerialPortOpener {
 public:
  explicit SpiedPortOpener(SerialPortOpener& ports) : ports_(ports) {}
  std::unique_ptr<SerialPort> Open(std::u16string_view name, OpenProblem* problem) override {
    auto port = ports_.Open(name, problem);
    return port ? std::make_unique<SpiedPort>(std::move(port), spy) : nullptr;
  }

  LineSpy spy;

 private:
  SerialPortOpener& ports_;
};

}  // namespace celldesk
