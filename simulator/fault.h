#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace celldesk::simulator {

enum class FaultKind {
  kError,          // ERROR, the command is not carried out
  kMessageError,   // +CMS ERROR, argument: the code
  kPhoneError,     // +CME ERROR, argument: the code
  kSilence,        // no reply
  kHalfLine,       // the reply ends inside a line; argument: after how many bytes
  kNoise,          // random bytes in the reply; argument: how many
  kUnsolicited,    // a line before every line of the reply; argument: the line
  kWrongIndex,     // other locations in the information lines; argument: the location
  kDuplicateLine,  // every information line twice
  kLate,           // the reply comes with the next one
  kSplit,      // the reply in pieces; argument: the place of the only split, and the pause in milliseconds
  kDelay,      // argument: milliseconds before the reply
  kHangUp,     // the line goes away; argument: after how many bytes of the reply
  kHangUpBack  // the same, and comes back
};

/// What goes wrong, and at which received line: the n-th, or each that begins with a text, or the n-th of
/// those. A message body is a line of its own and reads "PDU " and its text.
struct Fault {
  FaultKind kind = FaultKind::kError;
  std::string argument;
  int line = 0;        // 1-based; 0 when the prefix decides
  std::string prefix;  // compared without regard to case; empty fits every line
  int occurrence = 0;  // 1-based; 0 for every one

  /// The argument's n-th number (comma-separated), `missing` when it is not there.
  int Number(std::size_t n, int missing) const;
};

/// "STEP:KIND[:ARG]" (docs/simulator.md); nothing when it is not understood.
std::optional<Fault> ParseFault(std::string_view text);

/// Names of all kinds as ParseFault takes them.
std::vector<std::string> FaultKindNames();

/// Counts received lines and finds the faults that fall on each.
class FaultPlan {
 public:
  void Add(Fault fault) { entries_.push_back({std::move(fault), 0}); }
  void Clear() { entries_.clear(); }
  /// The faults for the line received now, in the order they were added.
  std::vector<Fault> Next(std::string_view line);

 private:
  struct Entry {
    Fault fault;
    int seen;
  };

  std::vector<Entry> entries_;
  int lines_ = 0;
};

}  // namespace celldesk::simulator
