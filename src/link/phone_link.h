#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "link/line_queue.h"
#include "link/line_trace.h"
#include "link/response_line.h"
#include "link/waiter.h"
#include "platform/registry.h"
#include "platform/serial_port.h"
#include "platform/thread.h"
#include "util/object.h"
#include "util/status.h"

namespace celldesk {

/// The one serial connection to the phone: opens the port, runs the reader thread and keeps the received
/// lines. It knows nothing of AT commands. All operations are the interface thread's, but for ReceiveChunk;
/// the reader thread sees only its ReaderState.
class PhoneLink : public Object {
 public:
  /// The services are borrowed for the link's life.
  PhoneLink(SerialPortOpener& ports, ThreadStarter& threads, Registry& registry, Waiter& waiter);
  /// Closes an open link.
  ~PhoneLink() override;
  PhoneLink(const PhoneLink&) = delete;
  PhoneLink& operator=(const PhoneLink&) = delete;

  /// The device name for the next Open, e.g. "COM1:".
  void set_port_name(std::u16string_view name) { port_name_ = name; }
  const std::u16string& port_name() const { return port_name_; }
  /// Where every byte sent and received is noted, from the next Open on; null for nowhere.
  void set_trace(std::shared_ptr<LineTrace> trace) { trace_ = std::move(trace); }

  /// Opens the port with its stored line parameters (those it has are stored when there are none) and starts
  /// the reader. E_FAIL when the port does not open (see open_problem), when the link is open already, or
  /// when there is no thread; in the last case the port stays open (see IsOpen). Lines of an earlier session
  /// stay queued, but are not announced.
  Status Open();
  /// Stops the reader and closes the port; always S_OK. Takes 200 ms, and up to a second more for a reader
  /// that does not end (which is then left alone). The queued lines stay.
  Status Close();
  /// A port is open; the program then counts as connected.
  bool IsOpen() const { return is_open_; }

  /// Deletes every queued line and empties the current response.
  void FlushLines();
  /// Moves the oldest complete line into `response`; E_FAIL, with `response` unchanged, when there is none.
  Status TakeLine(ResponseLine& response);
  /// Splits received text into lines. Any thread; the reader does this with what it reads.
  void ReceiveChunk(std::u16string_view text);
  /// Writes to the open port; E_FAIL when it is closed or the write fails.
  Status Write(std::span<const std::uint8_t> bytes);

  /// Set while a complete line waits at the head of the queue. Borrowed until the next Open.
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
  static bool ReadChunk(ReaderState& state);
  void ApplyLineParameters();
  bool StartReader();
  void SetReaderPriority();
  bool JoinReader();

  SerialPortOpener& ports_;
  ThreadStarter& threads_;
  Registry& registry_;
  Waiter& waiter_;
  std::shared_ptr<ReaderState> state_;
  std::unique_ptr<Thread> reader_;
  std::shared_ptr<LineTrace> trace_;
  ResponseLine response_;
  std::u16string port_name_;
  OpenProblem open_problem_ = OpenProblem::kNone;
  bool is_open_ = false;
};

}  // namespace celldesk
