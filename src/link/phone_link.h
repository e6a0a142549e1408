#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "link/line_queue.h"
#include "link/response_line.h"
#include "link/waiter.h"
#include "platform/registry.h"
#include "platform/serial_port.h"
#include "platform/thread.h"
#include "util/object.h"
#include "util/status.h"

namespace celldesk {

/// The one serial connection to the phone: opens the port, runs the reader thread and keeps the received
/// lines. All operations are the interface thread's; the reader thread sees only its ReaderState.
class PhoneLink : public Object {
 public:
  /// The services are borrowed for the link's life.
  PhoneLink(SerialPortOpener& ports, ThreadStarter& threads, Registry& registry, Waiter& waiter);
  ~PhoneLink() override;
  PhoneLink(const PhoneLink&) = delete;
  PhoneLink& operator=(const PhoneLink&) = delete;

  /// The device name for the next Open, e.g. "COM1:".
  void set_port_name(std::u16string_view name) { port_name_ = name; }
  const std::u16string& port_name() const { return port_name_; }

  /// Opens the port with its stored line parameters and starts the reader. On E_FAIL with the port itself
  /// open (no thread) the link stays open: see IsOpen.
  Status Open();
  /// Stops the reader and closes the port; always S_OK. Takes 200 ms; lets the window live meanwhile.
  Status Close();
  /// A port is open; the program then counts as connected.
  bool IsOpen() const;

  /// Deletes every queued line and empties the current response.
  void FlushLines();
  /// Moves the oldest complete line into `response`; E_FAIL when there is none.
  Status TakeLine(ResponseLine& response);
  /// Writes to the open port; E_FAIL when it is closed or the write fails.
  Status Write(std::span<const std::uint8_t> bytes);

  /// Set while a complete line waits at the head of the queue.
  Event& line_event();
  /// The line most recently taken by a procedure; after a failure still the phone's last word.
  ResponseLine& response() { return response_; }
  /// The open port, or null; borrowed until Close.
  SerialPort* port();
  /// Received chunks that completed at least one line, since Open.
  std::uint32_t completed_chunks() const;
  /// Why the last Open could not open the port.
  OpenProblem open_problem() const { return open_problem_; }

 private:
  struct ReaderState;
  static void ReadLoop(ReaderState& state);
  void ApplyLineParameters();
  bool StartReader();

  SerialPortOpener& ports_;
  ThreadStarter& threads_;
  Registry& registry_;
  Waiter& waiter_;
  std::shared_ptr<ReaderState> state_;
  std::unique_ptr<Thread> reader_;
  ResponseLine response_;
  std::u16string port_name_;
  OpenProblem open_problem_ = OpenProblem::kNone;
};

}  // namespace celldesk
