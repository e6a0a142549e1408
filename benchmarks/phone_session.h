#pragma once

#include <atomic>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "child_program.h"
#include "link/at_engine.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/posix_thread.h"
#include "simulator/phone_memory.h"
#include "support/fake_registry.h"

namespace celldesk::bench {

inline constexpr int kBaud = 115200;
inline constexpr double kBitsPerByte = 10;

/// What a session spent that no program can save.
struct Toll {
  std::size_t bytes = 0;  ///< both ways
  double pauses = 0;      ///< seconds that the procedures let pass
  int read_ends = 0;      ///< reads that ended with the silence after the last byte while a procedure waited

  double line_time() const { return static_cast<double>(bytes) * kBitsPerByte / kBaud; }
};

/// Really waits, and keeps count.
class CountingWaiter : public Waiter {
 public:
  bool WaitFor(Event& event, std::chrono::milliseconds timeout) override;
  void Pause(std::chrono::milliseconds duration) override;
  void ShowWaitCursor(bool /*visible*/) override {}

  bool waits() const { return waits_; }
  double paused() const { return paused_; }

 private:
  std::atomic<bool> waits_ = false;
  double paused_ = 0;
};

/// Opens real ports, and counts what passes.
class CountingOpener : public SerialPortOpener {
 public:
  CountingOpener(SerialPortOpener& ports, const CountingWaiter& waiter) : ports_(ports), waiter_(waiter) {}
  std::unique_ptr<SerialPort> Open(std::u16string_view name, OpenProblem* problem) override;

  std::size_t bytes() const { return bytes_; }
  int read_ends() const { return read_ends_; }

 private:
  class Port;

  SerialPortOpener& ports_;
  const CountingWaiter& waiter_;
  std::atomic<std::size_t> bytes_ = 0;
  std::atomic<int> read_ends_ = 0;
};

/// The simulated phone in its own process, on a line of kBaud, and the program's link to it.
class PhoneSession {
 public:
  /// `name` tells the phones that run at the same time apart.
  PhoneSession(const std::string& name, const simulator::PhoneMemory& memory);

  PhoneLink& link() { return link_; }
  AtEngine& engine() { return engine_; }
  Toll toll() const { return {opener_.bytes(), waiter_.paused(), opener_.read_ends()}; }

 private:
  ChildProgram phone_;
  FakeRegistry registry_;
  PosixPortList list_{registry_};
  PosixPortOpener ports_{list_};
  PosixThreadStarter threads_;
  CountingWaiter waiter_;
  CountingOpener opener_{ports_, waiter_};
  PhoneLink link_{opener_, threads_, registry_, waiter_};
  AtEngine engine_{link_, waiter_};
};

/// One run of a procedure on a phone.
struct PhoneRun {
  double seconds = 0;
  Toll toll;
  bool done = false;  ///< everything arrived
};

/// `runs` runs at the same time, each with a phone of its own. They take the lines' time, not the
/// processor's, so they are not in each other's way.
std::vector<PhoneRun> RunAtOnce(int runs, const simulator::PhoneMemory& memory,
                                const std::function<PhoneRun(PhoneSession&)>& run);

}  // namespace celldesk::bench
