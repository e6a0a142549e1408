#pragma once

#include <string>
#include <vector>

namespace celldesk::simulator {

enum class LineEvent { kNone, kHangUp, kHangUpBack };

/// Bytes the phone puts on the line, so many milliseconds after the emission before it, and what then happens
/// to the line.
struct Emission {
  int delay_ms = 0;
  std::string bytes;
  LineEvent event = LineEvent::kNone;

  bool operator==(const Emission&) const = default;
};

/// All bytes of the emissions.
std::string BytesOf(const std::vector<Emission>& emissions);

/// The emissions cut up so that no more than `baud` bits a second pass, ten to a byte; 0 leaves them whole.
/// `received` bytes took their time on the line too, before the first emission.
std::vector<Emission> Pace(const std::vector<Emission>& emissions, int baud, std::size_t received);

}  // namespace celldesk::simulator
