#include "link/at_engine.h"

#include <array>
#include <cstdint>
#include <new>
#include <span>
#include <string>

#include "pdu/gsm_alphabet.h"

namespace celldesk {
namespace {

constexpr std::size_t kCommandBuffer = 512;  // one more than the longest command

}  // namespace

Status AtEngine::Send(std::u16string_view format, std::initializer_list<FormatArgument> arguments) {
  std::u16string command;
  try {
    command = Format(format, arguments, kCommandBuffer);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  if (command.size() >= kCommandBuffer) return E_FAIL;
  std::array<std::uint8_t, kCommandBuffer> bytes;
  WideToGsmBytes(bytes.data(), command.data(), command.size());
  return link_.Write({bytes.data(), command.size()});
}

Status AtEngine::WaitLine(ResponseLine& response, std::chrono::milliseconds timeout) {
  do {
    if (!link_.IsOpen() || !waiter_.WaitFor(link_.line_event(), timeout)) {
      ++missed_answers_;
      return E_FAIL;
    }
  } while (Failed(TakeLine(response)));
  return S_OK;
}

Status AtEngine::TakeLine(ResponseLine& response) {
  if (Failed(link_.TakeLine(response))) return E_FAIL;
  response.DropLineFeeds();
  return S_OK;
}

Status AtEngine::LastAnswer(ResponseLine& response, Status status) {
  if (settled_answers_ == missed_answers_) return status;
  settled_answers_ = missed_answers_;
  waiter_.Pause(timing::kLateAnswer);
  while (!Failed(TakeLine(response))) {
    if (IsOk(response)) status = S_OK;
    if (IsRefused(response)) status = E_FAIL;
  }
  return status;
}

Status AtEngine::WaitFinal(ResponseLine& response, std::chrono::milliseconds timeout) {
  while (true) {
    if (const Status status = WaitLine(response, timeout); Failed(status)) return status;
    if (IsOk(response)) return LastAnswer(response, S_OK);
    if (IsError(response)) return LastAnswer(response, E_FAIL);
  }
}

Status AtEngine::DetectPhone() {
  FlushLines();
  if (const Status status = Send(u"ATZE0V1\r"); Failed(status)) return status;
  waiter_.Pause(timing::kAfterDetect);
  const Status status = WaitFinal(response(), timing::kReply);
  if (!Failed(status)) DropWaitingLines();
  return status;
}

void AtEngine::DropWaitingLines() {
  ResponseLine late;
  while (!Failed(link_.TakeLine(late))) {
  }
}

}  // namespace celldesk
