#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace celldesk::simulator {

/// A descriptor that closes itself.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int value) : value_(value) {}
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor() { Close(); }

  int get() const { return value_; }
  bool open() const { return value_ >= 0; }
  void Close();

 private:
  int value_ = -1;
};

/// The phone's end of a pseudo-terminal. Clients open, close and open the device again; the line outlives
/// them. A client that leaves finds the device fresh when it returns: nothing unread, not locked.
class PtyLine {
 public:
  /// False when the system has no pseudo-terminal (or no watch for it) left.
  [[nodiscard]] bool Open();
  void Close();

  bool open() const { return master_.open(); }
  const std::string& device() const { return device_; }

  /// To be polled for input: bytes of the client, and its coming and going.
  int bytes_descriptor() const { return master_.get(); }
  int watch_descriptor() const { return watch_.get(); }

  /// The bytes there are; empty when none. Never waits.
  std::string Read();
  /// Bytes taken, which may be fewer than given. Never waits.
  std::size_t Write(std::string_view bytes);
  /// Reads the watch. True when the last client has just left.
  bool LastClientLeft();
  /// Whether anybody is there, as far as the watch was read.
  bool has_client() const { return clients_ > 0; }

 private:
  void Refresh();

  Descriptor master_;
  Descriptor slave_;  // held open, so that a closing client does not hang the line up
  Descriptor watch_;
  std::string device_;
  int clients_ = 0;
};

}  // namespace celldesk::simulator
