#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/emission.h"
#include "simulator/fault.h"
#include "simulator/line_reader.h"
#include "simulator/phone.h"
#include "simulator/reply_writer.h"

namespace celldesk::simulator {

/// A GSM phone at the end of a line: bytes go in, bytes with their times come out. It never waits, asks no
/// clock but the one it is given, and knows no serial port. One thread at a time.
class SimulatedPhone {
 public:
  explicit SimulatedPhone(PhoneMemory memory = {}, Profile profile = {}, unsigned seed = 1);

  /// Bytes from the client, in any pieces. The emissions are the phone's answer so far, oldest first.
  std::vector<Emission> Receive(std::string_view bytes);

  /// An unsolicited line now.
  std::vector<Emission> Notify(const std::string& line);
  /// A message from somebody arrives (see +CNMI for what the client sees of it).
  std::vector<Emission> DeliverMessage(std::string_view from, std::u16string_view text);

  void AddFault(Fault fault) { faults_.Add(std::move(fault)); }
  /// The same from text; false when it is not understood.
  [[nodiscard]] bool AddFault(std::string_view text);
  void ClearFaults() { faults_.Clear(); }

  /// The client has left: an unfinished line or body and held-back replies are forgotten, settings stay.
  void ResetLine();

  /// Milliseconds before every reply, added to the profile's own.
  void AddLatency(int milliseconds) { phone_.profile.latency_ms += milliseconds; }
  /// Seconds since 1970 of the phone's local time. The default stands still at 2026-01-05 12:00:00.
  void set_clock(std::function<PhoneSeconds()> now) { phone_.now = std::move(now); }

  const PhoneMemory& memory() const { return phone_.memory; }
  PhoneMemory& memory() { return phone_.memory; }
  const Session& session() const { return phone_.session; }

  /// Every command line with its "AT", and every body as "PDU " and its text, as received.
  const std::vector<std::string>& received_lines() const { return received_lines_; }
  /// Every byte received.
  const std::string& received_bytes() const { return received_bytes_; }
  /// Empties both, which grow for as long as the phone is used.
  void ForgetReceived() {
    received_lines_ = {};
    received_bytes_ = {};
  }

 private:
  void Handle(const Input& input);
  void AnswerLine(const std::string& text);
  void AnswerBody(const std::string& text);
  template <class Carry>
  void Answer(const std::string& received, Carry carry_out);
  void Emit(std::vector<Emission> emissions);
  void EmitChatter();
  void EmitNotices();
  std::vector<Emission> TakeEmissions();

  Phone phone_;
  LineReader reader_;
  FaultPlan faults_;
  ReplyWriter writer_;
  std::vector<Emission> emissions_;
  std::vector<Emission> late_;
  std::vector<std::string> received_lines_;
  std::string received_bytes_;
  std::size_t chatter_ = 0;
};

}  // namespace celldesk::simulator
