#include "support/blocking_port.h"

#include <algorithm>
#include <utility>

namespace celldesk {
namespace {

class BlockingPort : public SerialPort {
 public:
  explicit BlockingPort(std::shared_ptr<BlockingLine> line) : line_(std::move(line)) { line_->PortOpened(); }
  ~BlockingPort() override { line_->PortClosed(); }
  BlockingPort(const BlockingPort&) = delete;
  BlockingPort& operator=(const BlockingPort&) = delete;

  ReadResult Read(std::span<std::uint8_t> buffer) override { return line_->Read(buffer); }
  Status Write(std::span<const std::uint8_t>) override { return S_OK; }
  void Purge() override { line_->Purge(); }
  std::optional<LineParameters> Parameters() const override { return LineParameters{}; }
  Status SetParameters(const LineParameters&) override { return S_OK; }
  Status SetReadInterval(std::chrono::milliseconds) override { return S_OK; }
  Status ClearError() override {
    line_->ClearError();
    return E_FAIL;
  }
  std::optional<std::uint32_t> ProviderCapabilities() const override { return 0; }

 private:
  std::shared_ptr<BlockingLine> line_;
};

}  // namespace

void BlockingLine::Arrive(std::string_view bytes) {
  std::lock_guard guard(lock_);
  arrived_.emplace_back(bytes);
  changed_.notify_all();
}

void BlockingLine::Flood(std::string_view bytes) {
  std::lock_guard guard(lock_);
  flood_ = bytes;
  arrived_.emplace_back(bytes);
  changed_.notify_all();
}

void BlockingLine::FailReads(int count) {
  std::lock_guard guard(lock_);
  failing_ = count;
  changed_.notify_all();
}

void BlockingLine::Stick() {
  std::lock_guard guard(lock_);
  stuck_ = true;
}

void BlockingLine::LetGo() {
  std::lock_guard guard(lock_);
  stuck_ = false;
  ++purges_;
  changed_.notify_all();
}

bool BlockingLine::WaitUntilBlocked() {
  return WaitUntil([this] { return blocked_ > 0 && arrived_.empty(); });
}

bool BlockingLine::WaitUntilClosed() {
  return WaitUntil([this] { return open_ports_ == 0; });
}

bool BlockingLine::WaitUntilReadsFailed() {
  return WaitUntil([this] { return failing_ == 0; });
}

bool BlockingLine::closed() {
  std::lock_guard guard(lock_);
  return open_ports_ == 0;
}

std::size_t BlockingLine::read_size() {
  std::lock_guard guard(lock_);
  return read_size_;
}

int BlockingLine::errors_cleared() {
  std::lock_guard guard(lock_);
  return errors_cleared_;
}

void BlockingLine::ClearError() {
  std::lock_guard guard(lock_);
  ++errors_cleared_;
}

ReadResult BlockingLine::Read(std::span<std::uint8_t> buffer) {
  std::unique_lock guard(lock_);
  const std::uint64_t purges = purges_;
  read_size_ = buffer.size();
  ++blocked_;
  changed_.notify_all();
  changed_.wait(guard, [&] { return !arrived_.empty() || failing_ > 0 || (purges_ != purges && !stuck_); });
  --blocked_;
  if (failing_ > 0) {
    if (--failing_ == 0) changed_.notify_all();
    std::ranges::fill(buffer, std::uint8_t{'x'});
    return {E_FAIL, buffer.size()};
  }
  if (arrived_.empty()) return {S_OK, 0};
  std::string& bytes = arrived_.front();
  const std::size_t count = std::min(bytes.size(), buffer.size());
  std::copy_n(bytes.begin(), count, buffer.begin());
  bytes.erase(0, count);
  if (bytes.empty()) arrived_.pop_front();
  if (arrived_.empty() && !flood_.empty()) arrived_.push_back(flood_);
  return {S_OK, count};
}

void BlockingLine::Purge() {
  std::lock_guard guard(lock_);
  ++purges_;
  changed_.notify_all();
}

void BlockingLine::PortOpened() {
  std::lock_guard guard(lock_);
  ++open_ports_;
}

void BlockingLine::PortClosed() {
  std::lock_guard guard(lock_);
  --open_ports_;
  changed_.notify_all();
}

std::unique_ptr<SerialPort> BlockingPortOpener::Open(std::u16string_view, OpenProblem* problem) {
  if (problem != nullptr) *problem = OpenProblem::kNone;
  return std::make_unique<BlockingPort>(line);
}

}  // namespace celldesk
