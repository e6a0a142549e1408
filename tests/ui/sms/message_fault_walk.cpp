#include "ui/sms/message_fault_walk.h"

#include <QLabel>
#include <algorithm>

namespace celldesk::message_fault_walk {
namespace {

constexpr const char* kNothing = "-";

std::vector<Step> StepsOf(const std::vector<std::string>& lines) {
  std::vector<Step> steps;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    const std::string next = i + 1 < lines.size() ? lines[i + 1] : "";
    steps.push_back(line.starts_with("AT+CMGD=")    ? Step::kDelete
                    : line.starts_with("AT+CMGL=")  ? Step::kList
                    : line.starts_with("PDU")       ? Step::kPdu
                    : !line.starts_with("AT+CPMS=") ? Step::kSubmit
                    : next.starts_with("AT+CMGD=")  ? Step::kSelectToDelete
                    : next.starts_with("AT+CMGW=")  ? Step::kSelectToStore
                    : next.starts_with("AT+CMGS=")  ? Step::kSelectToSend
                                                    : Step::kSelectToList);
  }
  return steps;
}

}  // namespace

const std::vector<FaultCase>& FaultCases() {
  static const std::vector<FaultCase> kCases = {
      {"error", Effect::kError},
      {"cms-error:321", Effect::kCmsError},
      {"cme-error:10", Effect::kCmeError},
      {"silence", Effect::kNoReply},
      {"half-line", Effect::kNoReply},
      {"noise:1", Effect::kHarmless},
      {"unsolicited", Effect::kHarmless, true},
      {"unsolicited:RING", Effect::kHarmless, true},
      {"wrong-index", Effect::kHarmless},
      {"duplicate-line", Effect::kHarmless, true},
      {"late", Effect::kTooLate},
      {"split", Effect::kHarmless},
      {"split:3", Effect::kHarmless},
      {"delay:1000", Effect::kHarmless},
      {"delay:9500", Effect::kTooLate},
      {"hang-up", Effect::kLineGone},
      {"hang-up:3", Effect::kLineGone},
      {"hang-up-back", Effect::kLineGone},
  };
  return kCases;
}

Walk::Walk(const Procedure& procedure) : procedure_(procedure) {
  Load();
  if (procedure.deletes) MarkToDelete();
  if (procedure.flags != 0) {
    SmsMessage& message = MakePending(messages(), kText, procedure.flags);
    message.memory = static_cast<std::int16_t>(procedure.memory);
    pdu_ = Utf8(message.pdu_text);
  }
  TakeAsked();
  TakePhoneLines();
  lines_before_ = phone().received_lines().size();
  stored_before_ = Stored();
  phonebooks_before_ = phone().memory().phonebooks;
}

void Walk::MarkToDelete() {
  ShowFolder(procedure_.memory == 0 ? kInboxTab : kOutboxTab);
  SmsFolderView& folder = procedure_.memory == 0 ? inbox() : outbox();
  for (int row = 0; row < folder.list().RowCount(); ++row)
    if (Cell(folder, row, 3) == Utf8(procedure_.deleted_text())) Select(folder, {row});
  Command(command::kDelete);
  ShowFolder(kInboxTab);
}

void Walk::RunProcedure(int answer) {
  for (int i = 0; i < 2; ++i) boxes.Answer(answer);
  Command(procedure_.uploads() ? command::kUpload : command::kLoadData);
}

std::vector<std::string> Walk::Stored() {
  std::vector<std::string> all;
  for (const simulator::MessageStore& store : phone().memory().stores) {
    for (const auto& [index, stored] : store.messages)
      all.push_back(store.name + " " + std::to_string(index) + " " + stored.pdu);
  }
  return all;
}

bool Walk::ShowsWhatThePhoneHolds() {
  std::vector<std::string> shown, held;
  for (int position = 0; position < messages().count(); ++position)
    shown.push_back(Utf8(messages().At(position).pdu_text));
  for (const simulator::MessageStore& store : phone().memory().stores) {
    for (const auto& [index, stored] : store.messages) held.push_back(stored.pdu);
  }
  std::size_t rows = InboxTexts().size();
  ShowFolder(kOutboxTab);
  rows += OutboxTexts().size();
  ShowFolder(kInboxTab);
  return shown == held && rows == held.size();
}

std::string Walk::LastHeader() {
  const simulator::MessageStore& store = *phone().memory().FindStore("ME");
  if (store.messages.empty()) return "";
  const auto& [index, message] = *store.messages.rbegin();
  const int centre = std::stoi(message.pdu.substr(0, 2), nullptr, 16) + 1;
  const int octets = static_cast<int>(message.pdu.size() / 2) - centre;
  return "+CMGL: " + std::to_string(index) + "," + std::to_string(static_cast<int>(message.status)) + ",," +
         std::to_string(octets);
}

std::string Walk::Counts() {
  Pump();
  return static_cast<QLabel*>(ControlOf(frame(), QStringLiteral("status_right")))->text().toStdString();
}

GoodRun RecordGoodRun(const Procedure& procedure) {
  Walk walk(procedure);
  walk.RunProcedure(kAnswerNo);
  EXPECT_THAT(walk.TakeAsked(), testing::IsEmpty());
  GoodRun run{walk.TakePhoneLines(), {}};
  run.steps = StepsOf(run.lines);
  return run;
}

bool Place::is_refused() const {
  return effect() == Effect::kError || effect() == Effect::kCmsError || effect() == Effect::kCmeError;
}

bool Place::submission_fails() const {
  if (effect() == Effect::kHarmless) return false;
  // The program does not wait for the prompt; a lost one is not missed.
  const bool prompt_lost = effect() == Effect::kNoReply || effect() == Effect::kTooLate;
  if (step() == Step::kSubmit) return !prompt_lost;
  return step() == Step::kPdu || step() == Step::kSelectToStore || step() == Step::kSelectToSend;
}

bool Place::in_sending() const {
  return step() == Step::kSelectToSend || (submits() && LastSubmission().starts_with("AT+CMGS="));
}

std::string Place::LastSubmission() const {
  std::size_t i = at;
  while (run.steps[i] != Step::kSubmit && i > 0) --i;
  return run.lines[i];
}

bool Place::ends_in_error() const {
  if (effect() == Effect::kHarmless) return false;
  if (step() == Step::kSelectToDelete || step() == Step::kSelectToList) return true;
  if (effect() == Effect::kLineGone) return true;
  return step() == Step::kList && is_last();
}

bool Place::CarriesOut(const std::string& start, Step last) const {
  bool named = false;
  for (std::size_t i = 0; i <= at; ++i) {
    if (run.lines[i].starts_with(start)) named = true;
    if (!named || run.steps[i] != last) continue;
    return i < at || !is_refused();
  }
  return false;
}

std::string Place::ShownLine(Walk& walk) const {
  std::string line = LineOfTheFault(walk);
  if (line == kNothing) line = LineBefore();
  return line.empty() ? "The phone does not answer." : line;
}

// The last line before the answer; flushed before deleting, before listing, before and after the selection
// for sending and storing.
std::string Place::LineBefore() const {
  switch (step()) {
    case Step::kSelectToDelete:
    case Step::kDelete:  // only the listing after it ends in a box
    case Step::kSelectToSend:
    case Step::kPdu:  // the empty line before the prompt
      return "";
    case Step::kSubmit:
      // Of the prompt that broke off an empty line has come.
      return in_sending() && fault.text != "hang-up:3" ? "OK" : "";
    case Step::kSelectToList:
      return at > 0 && run.steps[at - 1] == Step::kList ? "OK" : "";
    default:
      return "OK";
  }
}

std::string Place::LineOfTheFault(Walk& walk) const {
  if (effect() == Effect::kError) return "ERROR";
  if (effect() == Effect::kCmsError) return "+CMS ERROR: 321";
  if (effect() == Effect::kCmeError) return "+CME ERROR: 10";
  if (fault.text != "half-line" && fault.text != "hang-up:3") return kNothing;
  if (step() == Step::kPdu) return "> ";  // the beginning of the answer ends it
  // Neither is looked at before the next command fails.
  if (step() == Step::kSubmit || step() == Step::kDelete) return kNothing;
  return fault.text == "half-line" && step() == Step::kList ? walk.LastHeader() : "";
}

const simulator::MessageStore& Place::ListedStore(Walk& walk) const {
  const std::string& selection = run.lines[at - 1];
  return *walk.phone().memory().FindStore(selection.find("\"SM\"") == selection.npos ? "ME" : "SM");
}

bool Place::may_lack_rows(Walk& walk) const {
  if (fault.cuts_in) return step() == Step::kList && !ListedStore(walk).messages.empty();
  if (effect() == Effect::kHarmless || submission_fails()) return false;
  switch (step()) {
    case Step::kSelectToDelete:  // ends before the listing
    case Step::kSubmit:
      return false;
    case Step::kDelete:
      return effect() != Effect::kError;
    case Step::kList:
      return is_last() || effect() != Effect::kError;
    default:
      return true;
  }
}

}  // namespace celldesk::message_fault_walk
