#pragma once

#include <termios.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>

#include "platform/port_list.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/wake_signal.h"
#include "platform/serial_port.h"

namespace celldesk {

/// A terminal device as a serial line. Exclusive: a second open of the same device fails while this one is
/// alive, in this process, in others that lock the device, and (but for pseudo-terminals) in any other that
/// is not root's. Destroying it gives the terminal back as it was found.
///
/// A purge that comes while no read is pending ends the next read, once, with S_OK and 0 bytes: a reader that
/// was just between two reads is caught too. A write is ended by a purge that comes while it runs.
class PosixSerialPort : public SerialPort {
 public:
  /// How long a read on a line that has gone waits before it fails.
  static constexpr std::chrono::milliseconds kGoneDelay{1000};

  /// The open device, or null; `problem` says why.
  static std::unique_ptr<PosixSerialPort> Open(const std::string& device,
                                               std::chrono::milliseconds gone_delay, OpenProblem& problem);
  ~PosixSerialPort() override;
  PosixSerialPort(const PosixSerialPort&) = delete;
  PosixSerialPort& operator=(const PosixSerialPort&) = delete;

  ReadResult Read(std::span<std::uint8_t> buffer) override;
  Status Write(std::span<const std::uint8_t> bytes) override;
  void Purge() override;
  /// What was set last, all 28 bytes of it; before that what the terminal was found with.
  std::optional<LineParameters> Parameters() const override { return parameters_; }
  Status SetParameters(const LineParameters& parameters) override;
  Status SetReadInterval(std::chrono::milliseconds interval) override;
  Status ClearError() override;
  std::optional<std::uint32_t> ProviderCapabilities() const override;

 private:
  enum class Wait { kReady, kTimeout, kPurged };

  PosixSerialPort(Descriptor line, const termios& found, std::chrono::milliseconds gone_delay);
  bool Prepare();
  Wait WaitFor(short events, WakeSignal& purge, std::chrono::milliseconds timeout) const;
  ReadResult ReadOnGoneLine();
  void DriveControlLines(const LineParameters& parameters) const;
  std::chrono::milliseconds WriteTime(std::size_t bytes) const;

  Descriptor line_;
  WakeSignal read_purge_;
  WakeSignal write_purge_;
  const termios found_;
  const std::chrono::milliseconds gone_delay_;
  LineParameters parameters_;
  std::atomic<std::chrono::milliseconds> interval_{std::chrono::milliseconds(0)};
};

/// Opens serial ports by the names of a port list; a name that begins with "/" is a device itself.
class PosixPortOpener : public SerialPortOpener {
 public:
  /// `ports` is borrowed.
  explicit PosixPortOpener(PortList& ports,
                           std::chrono::milliseconds gone_delay = PosixSerialPort::kGoneDelay)
      : ports_(ports), gone_delay_(gone_delay) {}

  std::unique_ptr<SerialPort> Open(std::u16string_view name, OpenProblem* problem) override;

 private:
  std::u16string DeviceOf(std::u16string_view name);

  PortList& ports_;
  const std::chrono::milliseconds gone_delay_;
};

}  // namespace celldesk
