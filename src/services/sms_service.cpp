#include "services/sms_service.h"

#include <utility>

#include "pdu/address.h"
#include "services/reply_field.h"
#include "services/sms_listing.h"
#include "util/number_text.h"

namespace celldesk {
namespace {

constexpr std::size_t kShortestCentre = 7;  // the "+" counted
constexpr std::size_t kCentreBuffer = 20;   // characters of the centre's address field
constexpr std::size_t kMostCentreDigits = 16;

std::u16string_view UpToNul(std::u16string_view text) { return text.substr(0, text.find(u'\0')); }

}  // namespace

Status SmsService::SetCentre(std::u16string_view number) {
  number = Trim(number);
  if (!number.starts_with(u'+')) {
    centre_.clear();
    centre_type_ = kInvalidCentre;
    return E_FAIL;
  }
  if (number.size() < kShortestCentre) return E_FAIL;
  centre_type_ = kInternationalNumber;
  centre_ = number.substr(1);
  return S_OK;
}

void SmsService::SetOptions(bool delivery_report, bool reply_path, bool adapter, std::uint8_t validity) {
  delivery_report_ = delivery_report;
  reply_path_ = reply_path;
  adapter_ = adapter;
  validity_ = validity;
}

void SmsService::SetProgress(Question question, RowObserver* view) {
  question_ = std::move(question);
  view_ = view;
}

Status SmsService::QueryCapabilities() {
  usage_ = {};
  const Status status = engine_.Send(u"AT+CPMS=?\r");
  if (Failed(status)) return status;
  engine_.waiter().Pause(timing::kBeforeQuery);
  QueryMemories();
  return QueryStoring();
}

void SmsService::QueryMemories() {
  read_memories_.clear();
  write_memories_.clear();
  receive_memories_.clear();
  ResponseLine line(u'(', u')', u',');
  while (!Failed(engine_.WaitLine(line, timing::kReply)) && !IsOk(line) && !IsError(line)) {
    if (!StartsWith(line, u"+CPMS:")) continue;
    read_memories_ = ReplyField(line, 0);
    write_memories_ = ReplyField(line, 1);
    receive_memories_ = ReplyField(line, 2);
  }
}

Status SmsService::QueryStoring() {
  store_supported_ = false;
  const Status status = engine_.Send(u"AT+CMGW=?\r");
  if (Failed(status)) return status;
  ResponseLine& line = engine_.response();
  for (;;) {
    const Status waited = engine_.WaitLine(line, timing::kReply);
    if (Failed(waited)) return waited;
    store_supported_ = IsOk(line);
    if (store_supported_ || IsError(line)) return S_OK;
  }
}

bool SmsService::HasRoom() const {
  if (messages_.FirstFree() < 0) return false;
  bool known = false;
  for (int memory = 0; IsMessageMemory(memory); ++memory) {
    const auto n = static_cast<std::size_t>(memory);
    if (!usage_[n] || write_memories_.find(kMessageMemories[n]) == std::u16string::npos) continue;
    known = true;
    if (MayHaveRoom(memory)) return true;
  }
  return !known;
}

bool SmsService::MayHaveRoom(int memory) const {
  const std::optional<Usage>& usage = usage_[static_cast<std::size_t>(memory)];
  return usage->total - usage->used > messages_.CountToStore(memory);
}

Status SmsService::SelectMemory(int memory) {
  if (!IsMessageMemory(memory)) return E_FAIL;
  const std::u16string_view name = kMessageMemories[static_cast<std::size_t>(memory)];
  const Status status = engine_.Send(u"AT+CPMS=\"%s\",\"%s\"\r", {name, name});
  if (Failed(status)) return status;
  ResponseLine& line = engine_.response();
  for (;;) {
    const Status waited = engine_.WaitLine(line, timing::kReply);
    if (Failed(waited)) return waited;
    if (IsOk(line)) return engine_.LastAnswer(line, S_OK);
    if (IsRefused(line)) return engine_.LastAnswer(line, E_FAIL);
    if (StartsWith(line, u"+CPMS:")) TakeUsage(memory, line);
  }
}

void SmsService::TakeUsage(int memory, const ResponseLine& line) {
  const Usage usage{ParseDecimal(ReplyField(line, 0)), ParseDecimal(ReplyField(line, 1))};
  const bool sane = usage.used >= 0 && usage.total > 0;
  usage_[static_cast<std::size_t>(memory)] = sane ? std::optional(usage) : std::nullopt;
}

Status SmsService::ListAll(RowObserver* view) {
  engine_.FlushLines();
  all_pdus_came_ = true;
  Status status = S_OK;
  for (int memory = 0; IsMessageMemory(memory); ++memory) {
    const std::u16string_view name = kMessageMemories[static_cast<std::size_t>(memory)];
    if (read_memories_.find(name) == std::u16string::npos) continue;
    status = SelectMemory(memory);
    if (Failed(status)) return status;
    engine_.waiter().Pause(timing::kBeforeQuery);
    engine_.DropWaitingLines();
    status = engine_.Send(u"AT+CMGL=4\r");
    if (Failed(status)) return status;
    status = ListMemory(memory, view);
  }
  return status;
}

Status SmsService::ListMemory(int memory, RowObserver* view) {
  SmsListing listing(memory, messages_, view);
  const Status status = TakeListing(listing);
  if (!listing.AllPdusCame()) all_pdus_came_ = false;
  return status;
}

Status SmsService::TakeListing(SmsListing& listing) {
  ResponseLine& line = engine_.response();
  for (;;) {
    const Status status = engine_.WaitLine(line, timing::kReply);
    if (Failed(status) || IsOk(line)) return status;
    if (IsError(line)) return E_FAIL;
    listing.TakeLine(line);
  }
}

Status SmsService::Delete(const SmsMessage& message) {
  engine_.FlushLines();
  Status status = SelectMemory(message.memory);
  if (!Failed(status)) status = engine_.Send(u"AT+CMGD=%i\r", {message.memory_index});
  if (Failed(status)) return status;
  static_cast<void>(engine_.WaitFinal(engine_.response(), timing::kDelete));
  return S_OK;
}

Status SmsService::Send(const SmsMessage& message) {
  engine_.FlushLines();
  const Status status = SelectMemory(kSimMemory);
  if (Failed(status)) return status;
  engine_.waiter().Pause(timing::kBeforeSend);
  engine_.DropWaitingLines();
  return Submit(u"AT+CMGS=%i\r", message);
}

Status SmsService::Store(SmsMessage& message) {
  Status status = SelectMemory(message.memory);
  if (Failed(status)) return status;
  engine_.FlushLines();
  status = Submit(u"AT+CMGW=%i\r", message);
  if (!Failed(status)) message.flags &= ~kMessageToStore;
  return status;
}

// The pause stands for the wait for the phone's prompt, which comes without a line end and is skipped as the
// start of a line of the reply.
Status SmsService::Submit(std::u16string_view command, const SmsMessage& message) {
  if (!adapter_ && centre_.size() > kMostCentreDigits) return E_FAIL;
  Status status = engine_.Send(command, {static_cast<int>(message.pdu_text.size() / 2)});
  if (Failed(status)) return status;
  engine_.waiter().Pause(timing::kBeforePdu);
  const bool is_refused = WasRefused();
  status = SendPdu(message);
  if (Failed(status)) return status;
  return is_refused ? E_FAIL : WaitSubmitted();
}

// An "OK" that comes before the message is not the answer to it.
bool SmsService::WasRefused() {
  ResponseLine& line = engine_.response();
  while (!Failed(engine_.TakeLine(line))) {
    if (IsRefused(line)) return true;
  }
  return false;
}

Status SmsService::SendPdu(const SmsMessage& message) {
  if (adapter_) return engine_.Send(u"%s\x1A", {message.pdu_text});
  std::array<char16_t, kCentreBuffer> centre{};
  std::size_t position = 0;
  WriteSmscAddress(centre, centre_, centre_type_, position);
  return engine_.Send(u"%s%s\x1A", {UpToNul({centre.data(), centre.size()}), message.pdu_text});
}

Status SmsService::WaitSubmitted() {
  ResponseLine& line = engine_.response();
  for (;;) {
    const Status status = engine_.WaitLine(line, timing::kSubmit);
    if (Failed(status) || IsOk(line)) return status;
    if (IsRefused(line)) return E_FAIL;
  }
}

Status SmsService::UploadAll() {
  Status status = S_OK;
  for (int position = 0; position < messages_.count() && !Failed(status); ++position) {
    if ((messages_.At(position).flags & kMessageChanged) == 0) continue;
    status = UploadRecord(position);
    if (view_ != nullptr) view_->RowRead(position);
  }
  return status;
}

Status SmsService::UploadRecord(int position) {
  SmsMessage& message = messages_.At(position);
  Status status = S_OK;
  if ((message.flags & kMessageToDelete) != 0) {
    status = Delete(message);
    if (!Failed(status)) message.Clear();
    return status;
  }
  if ((message.flags & kMessageToStore) != 0 &&
      !TryUpload([&] { return StoreRecord(message); }, position, status)) {
    return status;
  }
  if ((message.flags & kMessageToSend) != 0) {
    TryUpload([&] { return SendRecord(message); }, position, status);
  }
  return status;
}

bool SmsService::TryUpload(const std::function<Status()>& operation, int position, Status& status) {
  for (;;) {
    status = operation();
    if (!Failed(status)) return true;
    if (!question_) return false;
    const UploadAnswer answer = Ask(messages_.At(position), position);
    if (answer == UploadAnswer::kRetry) continue;
    if (answer == UploadAnswer::kSkip) status = S_OK;
    return false;
  }
}

UploadAnswer SmsService::Ask(SmsMessage& message, int position) {
  engine_.waiter().ShowWaitCursor(false);
  const UploadAnswer answer = question_(message, position);
  if (view_ != nullptr) view_->Repaint();
  engine_.waiter().ShowWaitCursor(true);
  return answer;
}

Status SmsService::StoreRecord(SmsMessage& message) {
  const Status status = Store(message);
  if (!Failed(status) && (message.flags & kMessageToSend) == 0) message.flags = kMessageInUse;
  return status;
}

Status SmsService::SendRecord(SmsMessage& message) {
  Status status = message.Encode();
  if (!Failed(status)) status = Send(message);
  if (!Failed(status)) message.flags = kMessageInUse;
  return status;
}

}  // namespace celldesk
