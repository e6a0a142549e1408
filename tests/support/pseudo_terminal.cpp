#include "support/pseudo_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

namespace celldesk {
namespace {

constexpr int kDeadlineMs = 60'000;

}  // namespace

PseudoTerminal::PseudoTerminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
  char name[64] = "";
  if (::grantpt(master_) == 0 && ::unlockpt(master_) == 0 && ::ptsname_r(master_, name, sizeof name) == 0)
    device_ = name;
  termios settings = Settings();
  ::cfmakeraw(&settings);
  SetSettings(settings);
}

bool PseudoTerminal::WaitFor(short events) const {
  pollfd wait{master_, events, 0};
  return ::poll(&wait, 1, kDeadlineMs) == 1 && (wait.revents & events) != 0;
}

bool PseudoTerminal::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!WaitFor(POLLOUT)) return false;
    const ssize_t put = ::write(master_, bytes.data(), bytes.size());
    if (put > 0) bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

std::string PseudoTerminal::Receive(std::size_t count) {
  std::string received;
  char buffer[4096];
  while (received.size() < count && WaitFor(POLLIN)) {
    const std::size_t wanted = count - received.size();
    const ssize_t got = ::read(master_, buffer, wanted < sizeof buffer ? wanted : sizeof buffer);
    if (got > 0) received.append(buffer, static_cast<std::size_t>(got));
  }
  return received;
}

bool PseudoTerminal::WaitForBytes() { return WaitFor(POLLIN); }

void PseudoTerminal::Unplug() {
  if (master_ >= 0) ::close(master_);
  master_ = -1;
}

termios PseudoTerminal::Settings() const {
  termios settings{};
  (void)::tcgetattr(master_, &settings);
  return settings;
}

void PseudoTerminal::SetSettings(const termios& settings) { (void)::tcsetattr(master_, TCSANOW, &settings); }

}  // namespace celldesk
