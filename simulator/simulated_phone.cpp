#include "simulator/simulated_phone.h"

#include <algorithm>
#include <utility>

#include "simulator/command_table.h"
#include "simulator/loopback_network.h"
#include "simulator/message_memory.h"
#include "simulator/phonebook_view.h"

namespace celldesk::simulator {
namespace {

constexpr PhoneSeconds kStandingClock = 1767614400;  // 2026-01-05 12:00:00
constexpr int kNoticeDelayMs = 100;

/// A phone without room: every memory's places are those that are taken now.
void CloseMemories(Phone& phone) {
  std::map<std::string, int> rooms;
  for (const std::string& name : PhonebookView::Names(phone)) {
    rooms["book " + name] = PhonebookView(phone, name).used();
  }
  for (const std::string& name : MessageMemory::Names(phone)) {
    rooms["messages " + name] = MessageMemory(phone, name).used();
  }
  phone.rooms = std::move(rooms);
}

void SelectVisibleMemories(Phone& phone) {
  const auto books = PhonebookView::Names(phone);
  const auto stores = MessageMemory::Names(phone);
  Session& session = phone.session;
  if (!books.empty() && phone.profile.Hides(session.phonebook)) session.phonebook = books[0];
  for (std::string& name : session.message_memory) {
    if (!stores.empty() && phone.profile.Hides(name)) name = stores[0];
  }
}

bool Has(const std::vector<Fault>& faults, FaultKind kind) {
  return std::any_of(faults.begin(), faults.end(), [kind](const Fault& fault) { return fault.kind == kind; });
}

/// The error that a fault puts in place of carrying out the command.
std::optional<Reply> Refusal(const std::vector<Fault>& faults) {
  for (const Fault& fault : faults) {
    if (fault.kind == FaultKind::kError) return Error();
    if (fault.kind == FaultKind::kMessageError) return MessageError(fault.Number(0, 500));
    if (fault.kind == FaultKind::kPhoneError) return PhoneError(fault.Number(0, 100));
  }
  return std::nullopt;
}

/// An injected +CME ERROR shows whatever +CMEE says.
std::vector<Emission> WriteRefusal(ReplyWriter& writer, Phone phone, const Reply& reply,
                                   const std::vector<Fault>& faults) {
  phone.session.error_level = std::max(1, phone.session.error_level);
  return writer.Write(phone, reply, faults);
}

}  // namespace

SimulatedPhone::SimulatedPhone(PhoneMemory memory, Profile profile, unsigned seed) : writer_(seed) {
  phone_.memory = std::move(memory);
  phone_.profile = std::move(profile);
  phone_.now = [] { return kStandingClock; };
  phone_.Reset();
  SelectVisibleMemories(phone_);
  if (phone_.profile.books_are_full) CloseMemories(phone_);
}

std::vector<Emission> SimulatedPhone::Receive(std::string_view bytes) {
  received_bytes_ += bytes;
  for (const char byte : bytes) {
    if (phone_.session.echo) Emit({{0, std::string(1, byte)}});
    reader_.set_backspace_is_text(phone_.session.character_set == CharacterSet::kGsm);
    if (const auto input = reader_.Push(byte)) Handle(*input);
  }
  return TakeEmissions();
}

std::vector<Emission> SimulatedPhone::Notify(const std::string& line) {
  Emit({{0, writer_.WriteNotice(phone_, {line})}});
  return TakeEmissions();
}

std::vector<Emission> SimulatedPhone::DeliverMessage(std::string_view from, std::u16string_view text) {
  Tpdu tpdu;
  SetText(tpdu, text);
  Arrive(phone_, DeliverOf(tpdu, from, phone_.Time()));
  EmitNotices();
  return TakeEmissions();
}

bool SimulatedPhone::AddFault(std::string_view text) {
  auto fault = ParseFault(text);
  if (fault) faults_.Add(std::move(*fault));
  return fault.has_value();
}

void SimulatedPhone::ResetLine() {
  reader_.Reset();
  phone_.body.reset();
  late_.clear();
}

void SimulatedPhone::Handle(const Input& input) {
  switch (input.kind) {
    case InputKind::kCommandLine:
      return AnswerLine(input.text);
    case InputKind::kBody:
      return AnswerBody(input.text);
    case InputKind::kBodyLineEnd:
      return Emit({{0, phone_.profile.prompt}});
    case InputKind::kCancelled:
      phone_.body.reset();
      return Emit(writer_.Write(phone_, Ok(), {}));
  }
}

void SimulatedPhone::AnswerLine(const std::string& text) {
  Answer("AT" + text, [&] { return ExecuteLine(phone_, text); });
  if (phone_.body) reader_.ExpectBody(phone_.session.text_mode);
}

void SimulatedPhone::AnswerBody(const std::string& text) {
  Answer("PDU " + text, [&] { return ExecuteBody(phone_, text); });
  phone_.body.reset();
}

template <class Carry>
void SimulatedPhone::Answer(const std::string& received, Carry carry_out) {
  received_lines_.push_back(received);
  const auto faults = faults_.Next(received);
  Emit(std::exchange(late_, {}));
  const auto refusal = Refusal(faults);
  const Reply reply = refusal ? *refusal : carry_out();
  auto written =
      refusal ? WriteRefusal(writer_, phone_, reply, faults) : writer_.Write(phone_, reply, faults);
  if (Has(faults, FaultKind::kLate)) {
    late_ = std::move(written);
    return;
  }
  if (!written.empty() && !reply.wants_body) EmitChatter();
  Emit(std::move(written));
  if (reply.wants_body || Has(faults, FaultKind::kHangUp) || Has(faults, FaultKind::kHangUpBack)) return;
  EmitChatter();
  EmitNotices();
}

void SimulatedPhone::Emit(std::vector<Emission> emissions) {
  for (Emission& emission : emissions) {
    const bool joins =
        !emissions_.empty() && emission.delay_ms == 0 && emissions_.back().event == LineEvent::kNone;
    if (joins) {
      emissions_.back().bytes += emission.bytes;
      emissions_.back().event = emission.event;
    } else {
      emissions_.push_back(std::move(emission));
    }
  }
}

void SimulatedPhone::EmitChatter() {
  const auto& lines = phone_.profile.chatter;
  if (!lines.empty()) Emit({{0, writer_.WriteNotice(phone_, {lines[chatter_++ % lines.size()]})}});
}

void SimulatedPhone::EmitNotices() {
  for (const Notice& notice : std::exchange(phone_.notices, {})) {
    Emit({{kNoticeDelayMs, writer_.WriteNotice(phone_, notice)}});
  }
}

std::vector<Emission> SimulatedPhone::TakeEmissions() { return std::exchange(emissions_, {}); }

}  // namespace celldesk::simulator
