#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/manual_waiter.h"

namespace celldesk {

/// A phone that answers by a text script: one write in, the lines out. It checks every write against the
/// script byte by byte; a write that differs, or one too many, fails the running test.
///
///   # a comment
///   > AT+CPBR=1,20\r\n           one write of the program, exactly; \r \n \\ \xNN stand for bytes
///   < +CPBR: 1,"123",129,"Ann"   a line of the answer, sent as CR LF line CR LF
///   = 400                        what follows comes 400 ms later
///   << OK\r                      raw bytes of the answer
///
/// Without "=" an answer is there at once, that is, with the next wait or pause.
class ScriptedPhone : public ClockedSource {
 public:
  using Milliseconds = std::chrono::milliseconds;
  struct Burst {
    Milliseconds after{};  // from the end of the burst before, or from the write
    std::string bytes;
  };
  struct Exchange {
    std::string command;
    std::vector<Burst> answer;
  };

  static constexpr std::size_t kWholeBurst = static_cast<std::size_t>(-1);

  /// `waiter` gives the time and lets the phone answer; both live equally long.
  explicit ScriptedPhone(ManualWaiter& waiter);

  /// Appends the exchanges of `script` to what is still to come.
  void Load(std::string_view script);
  void Expect(Exchange exchange) { exchanges_.push_back(std::move(exchange)); }
  /// Answers writes once the script is used up: gets the write, gives the bytes to answer.
  void Otherwise(std::function<std::string(const std::string& command)> answer) {
    otherwise_ = std::move(answer);
  }
  /// Says something nobody asked for, `after` from now.
  void Say(std::string bytes, Milliseconds after = {});
  /// Where the bytes go; a call gets at most the chunk size.
  void DeliverTo(std::function<void(std::span<const std::uint8_t>)> sink) { sink_ = std::move(sink); }
  /// The answer in pieces of at most `size` bytes, as reads of the line would split it.
  void set_chunk_size(std::size_t size) { chunk_size_ = size; }

  /// The program writes.
  void Receive(std::span<const std::uint8_t> bytes);

  /// Every write, in order.
  const std::vector<std::string>& writes() const { return writes_; }
  /// All bytes written.
  std::string sent() const;
  /// The script is used up.
  bool finished() const { return exchanges_.empty(); }

  std::optional<Milliseconds> NextDue() const override;
  void RunDue(Milliseconds now) override;

 private:
  void Answer(const std::vector<Burst>& answer);
  void Deliver(const std::string& bytes);

  ManualWaiter& waiter_;
  std::deque<Exchange> exchanges_;
  std::multimap<Milliseconds, std::string> under_way_;
  std::function<std::string(const std::string&)> otherwise_;
  std::function<void(std::span<const std::uint8_t>)> sink_;
  std::size_t chunk_size_ = kWholeBurst;
  std::vector<std::string> writes_;
};

/// `text` with \r \n \\ \xNN turned into the bytes they stand for.
std::string Unescape(std::string_view text);

}  // namespace celldesk
