#include "support/simulated_line.h"

#include <algorithm>

namespace celldesk {

class SimulatedPort : public SerialPort {
 public:
  explicit SimulatedPort(SimulatedLine& line) : line_(line), generation_(line.generation_) {
    ++line_.open_ports_;
  }
  ~SimulatedPort() override { --line_.open_ports_; }
  SimulatedPort(const SimulatedPort&) = delete;
  SimulatedPort& operator=(const SimulatedPort&) = delete;

  ReadResult Read(std::span<std::uint8_t> /*buffer*/) override { return {}; }
  Status Write(std::span<const std::uint8_t> bytes) override { return line_.Write(bytes, generation_); }
  void Purge() override {}
  std::optional<LineParameters> Parameters() const override { return parameters_; }
  Status SetParameters(const LineParameters& parameters) override {
    if (!Failed(line_.parameters_status_)) parameters_ = parameters;
    return line_.parameters_status_;
  }
  Status SetReadInterval(std::chrono::milliseconds /*interval*/) override { return S_OK; }
  Status ClearError() override { return S_OK; }
  std::optional<std::uint32_t> ProviderCapabilities() const override { return 1; }

 private:
  SimulatedLine& line_;
  int generation_;
  LineParameters parameters_;
};

SimulatedLine::SimulatedLine(ManualWaiter& waiter, simulator::SimulatedPhone phone)
    : waiter_(waiter), phone_(std::move(phone)) {
  waiter_.Attach(*this);
}

std::unique_ptr<SerialPort> SimulatedLine::Open(std::u16string_view /*name*/, OpenProblem* problem) {
  const OpenProblem found = present_ ? problem_ : OpenProblem::kNoSuchPort;
  if (problem != nullptr) *problem = found;
  if (found != OpenProblem::kNone) return nullptr;
  if (!keeps_answers_) {
    phone_.ResetLine();
    under_way_.clear();
  }
  return std::make_unique<SimulatedPort>(*this);
}

std::optional<std::chrono::milliseconds> SimulatedLine::NextDue() const {
  if (under_way_.empty()) return std::nullopt;
  return under_way_.begin()->first;
}

void SimulatedLine::RunDue(std::chrono::milliseconds now) {
  while (!under_way_.empty() && under_way_.begin()->first <= now) {
    const simulator::Emission emission = under_way_.begin()->second;
    under_way_.erase(under_way_.begin());
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(emission.bytes.data());
    if (sink_ && !emission.bytes.empty()) sink_({bytes, emission.bytes.size()});
    if (emission.event == simulator::LineEvent::kNone) continue;
    HangUp();
    under_way_.clear();
    if (emission.event == simulator::LineEvent::kHangUpBack) Return();
  }
}

void SimulatedLine::Emit(const std::vector<simulator::Emission>& emissions) {
  std::chrono::milliseconds at = std::max(waiter_.now(), line_free_at_);
  for (const simulator::Emission& emission : emissions) {
    at += std::chrono::milliseconds(emission.delay_ms);
    under_way_.emplace(at, emission);
  }
  line_free_at_ = at;
}

Status SimulatedLine::Write(std::span<const std::uint8_t> bytes, int generation) {
  if (!present_ || generation != generation_) return E_FAIL;
  Emit(phone_.Receive({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
  return S_OK;
}

}  // namespace celldesk
