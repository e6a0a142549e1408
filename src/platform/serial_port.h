#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/line_parameters.h"
#include "util/status.h"

namespace celldesk {

/// What a read brought: a status and the number of bytes. A purge ends a pending read with S_OK and 0 bytes.
struct ReadResult {
  Status status = S_OK;
  std::size_t count = 0;
};

/// An open serial line, exclusively ours until it is destroyed. One thread reads; another may write, purge
/// and change parameters meanwhile. The port outlives every pending call.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// Waits without limit for the first byte, then returns as soon as the read-interval time-out passes
  /// without a further byte, or when `buffer` is full. On a line that has gone it waits before it fails, so
  /// that a reader that tries again does not spin; Purge ends that wait too.
  virtual ReadResult Read(std::span<std::uint8_t> buffer) = 0;
  /// Writes all bytes, or fails; never waits longer than the line needs plus a few seconds.
  virtual Status Write(std::span<const std::uint8_t> bytes) = 0;
  /// Discards what waits in both directions and ends a pending Read and Write. A Read that starts later
  /// works.
  virtual void Purge() = 0;

  virtual std::optional<LineParameters> Parameters() const = 0;
  virtual Status SetParameters(const LineParameters& parameters) = 0;
  /// The gap that ends a read. Until it is set a read returns with whatever has arrived.
  virtual Status SetReadInterval(std::chrono::milliseconds interval) = 0;
  /// Clears line errors.
  virtual Status ClearError() = 0;
  /// Capability bits of the port's provider, 0 when it reports none; no value when they cannot be had.
  virtual std::optional<std::uint32_t> ProviderCapabilities() const = 0;
};

/// What stood in the way of opening a port.
enum class OpenProblem { kNone, kNoSuchPort, kNoPermission, kInUse, kOther };

/// Opens ports by name ("COM1:"). Borrowed by the link for the whole run.
class SerialPortOpener {
 public:
  virtual ~SerialPortOpener() = default;
  /// The open port, or null; `problem`, when given, says why.
  virtual std::unique_ptr<SerialPort> Open(std::u16string_view name, OpenProblem* problem) = 0;
};

}  // namespace celldesk
