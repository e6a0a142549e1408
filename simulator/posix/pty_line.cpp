#include "simulator/posix/pty_line.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace celldesk::simulator {
namespace {

void MakeRaw(int descriptor) {
  termios settings{};
  if (tcgetattr(descriptor, &settings) != 0) return;
  cfmakeraw(&settings);
  tcsetattr(descriptor, TCSANOW, &settings);
}

void SetNonBlocking(int descriptor) { fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK); }

}  // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    Close();
    value_ = std::exchange(other.value_, -1);
  }
  return *this;
}

void Descriptor::Close() {
  if (value_ >= 0) close(value_);
  value_ = -1;
}

bool PtyLine::Open() {
  master_ = Descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!open() || grantpt(master_.get()) != 0 || unlockpt(master_.get()) != 0) return false;
  std::array<char, 128> name{};
  if (ptsname_r(master_.get(), name.data(), name.size()) != 0) return false;
  device_ = name.data();
  slave_ = Descriptor(::open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!slave_.open()) return false;
  SetNonBlocking(master_.get());
  MakeRaw(slave_.get());
  watch_ = Descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  clients_ = 0;
  return inotify_add_watch(watch_.get(), device_.c_str(), IN_OPEN | IN_CLOSE) >= 0;
}

void PtyLine::Close() {
  watch_.Close();
  slave_.Close();
  master_.Close();
}

std::string PtyLine::Read() {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(master_.get(), buffer.data(), buffer.size());
  return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

std::size_t PtyLine::Write(std::string_view bytes) {
  const ssize_t count = write(master_.get(), bytes.data(), bytes.size());
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool PtyLine::LastClientLeft() {
  alignas(inotify_event) std::array<char, 4096> buffer{};
  bool left = false;
  for (ssize_t count; (count = read(watch_.get(), buffer.data(), buffer.size())) > 0;) {
    for (ssize_t at = 0; at < count;) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + at, sizeof event);
      clients_ += event.mask & IN_OPEN ? 1 : -1;
      left = clients_ == 0;
      at += static_cast<ssize_t>(sizeof event + event.len);
    }
  }
  if (left) Refresh();
  return left;
}

/// The exclusive mode and unread bytes of a client would outlive it, because our own end stays open.
void PtyLine::Refresh() {
  ioctl(slave_.get(), TIOCNXCL);
  tcflush(slave_.get(), TCIFLUSH);
  MakeRaw(slave_.get());
}

}  // namespace celldesk::simulator
