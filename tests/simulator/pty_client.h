#pragma once

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>
#include <string_view>

namespace celldesk::simulator {

/// A plain client of a device: opens it raw, writes, and reads until what it waits for is there.
class PtyClient {
 public:
  explicit PtyClient(const std::string& device)
      : descriptor_(open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    termios settings{};
    tcgetattr(descriptor_, &settings);
    cfmakeraw(&settings);
    tcsetattr(descriptor_, TCSANOW, &settings);
  }
  PtyClient(const PtyClient&) = delete;
  PtyClient& operator=(const PtyClient&) = delete;
  ~PtyClient() { Close(); }

  bool is_open() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

  void Close() {
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
  }

  bool Write(std::string_view bytes) {
    return write(descriptor_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }

  /// Everything read up to the end of `wanted`, or what there was when the line went away or patience ended.
  std::string ReadUntil(std::string_view wanted) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    std::string bytes;
    while (!bytes.ends_with(wanted) && std::chrono::steady_clock::now() < deadline) {
      pollfd source{descriptor_, POLLIN, 0};
      if (poll(&source, 1, 1000) <= 0) continue;
      char byte = 0;
      const ssize_t count = read(descriptor_, &byte, 1);
      if (count <= 0) return bytes;
      bytes += byte;
    }
    return bytes;
  }

  std::string Ask(std::string_view line, std::string_view wanted = "\r\nOK\r\n") {
    return Write(std::string(line) + '\r') ? ReadUntil(wanted) : "cannot write";
  }

  /// True once the other end has hung up.
  bool WaitForHangUp() {
    pollfd source{descriptor_, 0, 0};
    return poll(&source, 1, 30000) == 1 && (source.revents & POLLHUP) != 0;
  }

 private:
  int descriptor_;
};

}  // namespace celldesk::simulator
