#include "support/fake_serial_port.h"

namespace celldesk {

FakeSerialPort::~FakeSerialPort() {
  --line_.open_ports;
  line_.calls.emplace_back("close");
}

ReadResult FakeSerialPort::Read(std::span<std::uint8_t>) { return {E_FAIL, 0}; }

Status FakeSerialPort::Write(std::span<const std::uint8_t> bytes) {
  if (!Failed(line_.write_status) && line_.on_write) line_.on_write(bytes);
  return line_.write_status;
}

void FakeSerialPort::Purge() { line_.calls.emplace_back("purge"); }

std::optional<LineParameters> FakeSerialPort::Parameters() const {
  line_.calls.emplace_back("parameters");
  return line_.parameters;
}

Status FakeSerialPort::SetParameters(const LineParameters& parameters) {
  line_.calls.emplace_back("set parameters");
  line_.applied.push_back(parameters);
  return line_.set_parameters_status;
}

Status FakeSerialPort::SetReadInterval(std::chrono::milliseconds interval) {
  line_.calls.emplace_back("set read interval");
  line_.intervals.push_back(interval);
  return S_OK;
}

Status FakeSerialPort::ClearError() {
  line_.calls.emplace_back("clear error");
  return S_OK;
}

std::optional<std::uint32_t> FakeSerialPort::ProviderCapabilities() const {
  line_.calls.emplace_back("capabilities");
  return line_.capabilities;
}

std::unique_ptr<SerialPort> FakePortOpener::Open(std::u16string_view name, OpenProblem* problem) {
  line.opened.emplace_back(name);
  line.calls.emplace_back("open");
  if (problem != nullptr) *problem = line.open_problem;
  if (line.open_problem != OpenProblem::kNone) return nullptr;
  return std::make_unique<FakeSerialPort>(line);
}

}  // namespace celldesk
