#pragma once

#include <unistd.h>

#include <utility>

namespace celldesk {

/// Owns a file descriptor and closes it.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { Reset(); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  int get() const { return number_; }
  bool valid() const { return number_ >= 0; }
  /// Gives the descriptor up; the caller closes it.
  int release() { return std::exchange(number_, -1); }
  void Reset() {
    if (valid()) ::close(std::exchange(number_, -1));
  }

 private:
  int number_ = -1;
};

}  // namespace celldesk
