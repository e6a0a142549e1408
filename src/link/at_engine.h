#pragma once

#include <chrono>
#include <initializer_list>
#include <string_view>

#include "link/phone_link.h"
#include "link/response_line.h"
#include "link/waiter.h"
#include "util/status.h"
#include "util/text.h"

namespace celldesk {

/// Per-line time-outs and pauses of the phone procedures.
namespace timing {
inline constexpr std::chrono::milliseconds kReply{8000};
inline constexpr std::chrono::milliseconds kPhonebookRead{25000};
inline constexpr std::chrono::milliseconds kDelete{3000};
inline constexpr std::chrono::milliseconds kSubmit{9000};
inline constexpr std::chrono::milliseconds kAfterDetect{200};
inline constexpr std::chrono::milliseconds kLateAnswer{1000};
inline constexpr std::chrono::milliseconds kBeforeQuery{500};
inline constexpr std::chrono::milliseconds kBeforeSend{400};
inline constexpr std::chrono::milliseconds kBeforePdu{800};
}  // namespace timing

/// AT commands over the link: formats and writes a command, waits for lines, detects the phone. Keeps no
/// state of a command. Interface thread only.
class AtEngine {
 public:
  /// Both are borrowed for the engine's life.
  AtEngine(PhoneLink& link, Waiter& waiter) : link_(link), waiter_(waiter) {}

  PhoneLink& link() { return link_; }
  Waiter& waiter() { return waiter_; }
  /// The link's current response, which the procedures read lines into.
  ResponseLine& response() { return link_.response(); }
  void FlushLines() { link_.FlushLines(); }
  /// Deletes the lines that wait, late answers to earlier commands, and keeps the current response.
  void DropWaitingLines();
  /// The next line that waits already; E_FAIL when there is none.
  Status TakeLine(ResponseLine& response);

  /// Formats a command, terminator included, and writes it through the GSM alphabet. A command of more than
  /// 511 characters is not sent: E_FAIL.
  Status Send(std::u16string_view format, std::initializer_list<FormatArgument> arguments = {});
  /// The next complete line, without line feeds before it, so that a reply reads the same however the port
  /// cut it; E_FAIL on a time-out.
  Status WaitLine(ResponseLine& response, std::chrono::milliseconds timeout);
  /// How often WaitLine has failed since the program began. Where it grows during a procedure an answer is
  /// lost, or will be taken for that of a later command.
  int missed_answers() const { return missed_answers_; }
  /// What a final result means that was just taken. Where an answer was missed before, that answer may have
  /// come late and be the one taken: the phone gets a second to say more, and its last final result counts.
  Status LastAnswer(ResponseLine& response, Status status);
  /// Lines until a final result: S_OK on "OK", E_FAIL on "ERROR" or a time-out; of several, see LastAnswer.
  Status WaitFinal(ResponseLine& response, std::chrono::milliseconds timeout);
  /// Resets the phone to its profile, echo off, verbose results, and waits for its "OK". Lines that came with
  /// it are dropped: a late answer to an earlier command would be taken for that to the next one.
  Status DetectPhone();

 private:
  PhoneLink& link_;
  Waiter& waiter_;
  int missed_answers_ = 0;
  int settled_answers_ = 0;  // of them, those that have come late or are given up
};

}  // namespace celldesk
