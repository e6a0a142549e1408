#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/serial_port.h"
#include "simulator/simulated_phone.h"
#include "support/manual_waiter.h"

namespace celldesk {

/// The simulated phone at the end of a line without threads and without time: it answers by the waiter's
/// clock. Ports opened on it write to the phone; what the phone says goes to the sink.
class SimulatedLine : public SerialPortOpener, public ClockedSource {
 public:
  SimulatedLine(ManualWaiter& waiter, simulator::SimulatedPhone phone);

  std::unique_ptr<SerialPort> Open(std::u16string_view name, OpenProblem* problem) override;
  std::optional<std::chrono::milliseconds> NextDue() const override;
  void RunDue(std::chrono::milliseconds now) override;

  /// Where the phone's bytes go.
  void DeliverTo(std::function<void(std::span<const std::uint8_t>)> sink) { sink_ = std::move(sink); }
  simulator::SimulatedPhone& phone() { return phone_; }
  /// Puts emissions of the phone on the line.
  void Emit(const std::vector<simulator::Emission>& emissions);
  /// The line goes away, or is there again for the next Open.
  void HangUp() { ++generation_, present_ = false; }
  void Return() { present_ = true; }
  /// What stands in the way of the next Open.
  void set_problem(OpenProblem problem) { problem_ = problem; }
  /// A phone that does not see the port being closed: what it still has to say comes in the next session.
  void KeepAnswersOverClose() { keeps_answers_ = true; }
  /// Answer to new line parameters; a failure leaves them as they were.
  void set_parameters_status(Status status) { parameters_status_ = status; }
  int open_ports() const { return open_ports_; }

 private:
  friend class SimulatedPort;
  Status Write(std::span<const std::uint8_t> bytes, int generation);

  ManualWaiter& waiter_;
  simulator::SimulatedPhone phone_;
  std::function<void(std::span<const std::uint8_t>)> sink_;
  std::multimap<std::chrono::milliseconds, simulator::Emission> under_way_;
  std::chrono::milliseconds line_free_at_{};
  OpenProblem problem_ = OpenProblem::kNone;
  Status parameters_status_ = S_OK;
  bool present_ = true;
  bool keeps_answers_ = false;
  int generation_ = 0;
  int open_ports_ = 0;
};

}  // namespace celldesk
