#include "simulator/emission.h"

#include <algorithm>

namespace celldesk::simulator {
namespace {

constexpr long long kBitsPerByte = 10;
constexpr long long kChunkMs = 10;

/// Milliseconds that whole bytes take, the remainder kept for the next call.
class LineClock {
 public:
  explicit LineClock(int baud) : baud_(baud) {}

  int Pass(std::size_t bytes) {
    bits_ += static_cast<long long>(bytes) * kBitsPerByte * 1000;
    const long long milliseconds = bits_ / baud_;
    bits_ -= milliseconds * baud_;
    return static_cast<int>(milliseconds);
  }

 private:
  long long baud_;
  long long bits_ = 0;
};

}  // namespace

std::string BytesOf(const std::vector<Emission>& emissions) {
  std::string bytes;
  for (const Emission& emission : emissions) bytes += emission.bytes;
  return bytes;
}

std::vector<Emission> Pace(const std::vector<Emission>& emissions, int baud, std::size_t received) {
  if (baud <= 0) return emissions;
  const auto chunk = static_cast<std::size_t>(std::max(1LL, baud * kChunkMs / (kBitsPerByte * 1000)));
  LineClock clock(baud);
  int delay = clock.Pass(received);
  std::vector<Emission> paced;
  for (const Emission& emission : emissions) {
    delay += emission.delay_ms;
    for (std::size_t at = 0; at < emission.bytes.size(); at += chunk) {
      const std::string bytes = emission.bytes.substr(at, chunk);
      paced.push_back({delay + clock.Pass(bytes.size()), bytes});
      delay = 0;
    }
    if (emission.event != LineEvent::kNone) {
      paced.push_back({delay, {}, emission.event});
      delay = 0;
    }
  }
  return paced;
}

}  // namespace celldesk::simulator
