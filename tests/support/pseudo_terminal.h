#pragma once

#include <termios.h>

#include <string>
#include <string_view>

namespace celldesk {

/// A pseudo-terminal: the program opens `device()` as a serial line, the test is the far end of it. Raw, no
/// echo. Waits of the far end have a generous deadline.
class PseudoTerminal {
 public:
  PseudoTerminal();
  ~PseudoTerminal() { Unplug(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// "/dev/pts/N".
  const std::string& device() const { return device_; }
  /// Writes all of `bytes`; false when the line does not take them.
  bool Send(std::string_view bytes);
  /// Reads until `count` bytes are there; fewer when the deadline passes.
  std::string Receive(std::size_t count);
  /// Waits until the program wrote something; reads nothing.
  bool WaitForBytes();
  /// Closes the far end: the device is gone, as when a stick is pulled out.
  void Unplug();

  /// How the program's end of the line is set up.
  termios Settings() const;
  void SetSettings(const termios& settings);

 private:
  bool WaitFor(short events) const;

  int master_;
  std::string device_;
};

}  // namespace celldesk
