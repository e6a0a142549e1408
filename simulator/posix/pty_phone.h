#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "simulator/posix/port_entry.h"
#include "simulator/posix/pty_line.h"
#include "simulator/simulated_phone.h"

namespace celldesk::simulator {

struct PtyOptions {
  int baud = 0;           // pace of the line, 0 for none
  std::string port_name;  // entry in the list of ports, none when empty
  /// Called on the serving thread with the lock held: after each change of the memory, ...
  std::function<void(const PhoneMemory&)> on_change;
  /// ... for bytes that pass ('>' to the phone, '<' from it), ...
  std::function<void(char direction, const std::string& bytes)> on_bytes;
  /// ... and when the phone has come back on another device.
  std::function<void(const std::string& device)> on_device;
};

/// Runs a simulated phone on a pseudo-terminal: Open and Serve in the caller's thread, or Start and Stop with
/// a thread of its own. It takes no processor time while nothing happens.
class PtyPhone {
 public:
  PtyPhone(SimulatedPhone phone, PtyOptions options = {});
  PtyPhone(const PtyPhone&) = delete;
  PtyPhone& operator=(const PtyPhone&) = delete;
  ~PtyPhone() { Stop(); }

  /// Makes the device and lists the port. False when either cannot be had.
  [[nodiscard]] bool Open();
  /// Serves the line until RequestStop.
  void Serve();
  /// May be called from any thread and from a signal handler.
  void RequestStop();

  /// Open, then Serve in a thread of its own.
  [[nodiscard]] bool Start();
  /// Ends the thread, the device and the entry. Harmless when not started. The phone keeps its memory, and
  /// may be started again.
  void Stop();

  /// The path a client opens; empty after a hang-up without return. Any thread.
  std::string device() const;

  /// Looks at the phone or changes it, while nothing else does; what it emits goes on the line. Any thread.
  void ChangePhone(const std::function<std::vector<Emission>(SimulatedPhone&)>& change);
  /// Waits until the condition holds for the phone; false when `patience` is over before. Any thread.
  [[nodiscard]] bool WaitFor(const std::function<bool(SimulatedPhone&)>& condition,
                             std::chrono::milliseconds patience = std::chrono::seconds(30));
  /// Waits until everything the phone had to say is on the line (or lost, when nobody is there). Any thread.
  [[nodiscard]] bool WaitUntilQuiet(std::chrono::milliseconds patience = std::chrono::seconds(30));
  /// Whether a client has the device open, as far as the serving thread has noticed. Any thread.
  bool has_client() const { return has_client_; }

 private:
  using Clock = std::chrono::steady_clock;

  struct Due {
    Clock::time_point time;
    Emission emission;
  };

  void Queue(const std::vector<Emission>& emissions, std::size_t received);
  void ReadLine();
  void ForgetClient();
  void WriteDue();
  bool WriteFront();
  void HangUp(bool comes_back);
  void NoteChange();
  int PollTimeout() const;

  // Guarded by mutex_, except that the serving thread alone changes line_.
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  SimulatedPhone phone_;
  PtyLine line_;
  std::deque<Due> due_;
  PhoneMemory known_memory_;

  const PtyOptions options_;
  PortEntry entry_;
  Descriptor wake_;
  std::thread thread_;
  bool blocked_ = false;  // the client reads too slowly; wait until it has
  std::atomic<bool> stopping_ = false;
  std::atomic<bool> has_client_ = false;
};

}  // namespace celldesk::simulator
