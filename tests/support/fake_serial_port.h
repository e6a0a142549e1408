#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/serial_port.h"

namespace celldesk {

/// The line behind a fake port: what the port answers, and what was asked of it. Outlives the ports.
struct FakeLine {
  // What the port answers.
  OpenProblem open_problem = OpenProblem::kNone;  ///< anything else: the port does not open
  std::optional<LineParameters> parameters = LineParameters{};
  std::optional<std::uint32_t> capabilities = 0;
  Status write_status = S_OK;
  Status set_parameters_status = S_OK;
  std::function<void(std::span<const std::uint8_t>)> on_write;

  // What was asked.
  std::vector<std::u16string> opened;  ///< names, failed ones too
  std::vector<std::string> calls;      ///< operations by name, in order, without reads and writes
  std::vector<LineParameters> applied;
  std::vector<std::chrono::milliseconds> intervals;
  int open_ports = 0;
};

/// A port without a thread behind it: nothing reads from it.
class FakeSerialPort : public SerialPort {
 public:
  explicit FakeSerialPort(FakeLine& line) : line_(line) { ++line_.open_ports; }
  ~FakeSerialPort() override;
  FakeSerialPort(const FakeSerialPort&) = delete;
  FakeSerialPort& operator=(const FakeSerialPort&) = delete;

  ReadResult Read(std::span<std::uint8_t> buffer) override;
  Status Write(std::span<const std::uint8_t> bytes) override;
  void Purge() override;
  std::optional<LineParameters> Parameters() const override;
  Status SetParameters(const LineParameters& parameters) override;
  Status SetReadInterval(std::chrono::milliseconds interval) override;
  Status ClearError() override;
  std::optional<std::uint32_t> ProviderCapabilities() const override;

 private:
  FakeLine& line_;
};

/// Opens fake ports on one line, under any name.
class FakePortOpener : public SerialPortOpener {
 public:
  std::unique_ptr<SerialPort> Open(std::u16string_view name, OpenProblem* problem) override;

  FakeLine line;
};

}  // namespace celldesk
