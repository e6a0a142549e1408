#include "ui/window/fault_walk.h"

#include <QLabel>

#include "ui/user_actions.h"

namespace celldesk::fault_walk {
namespace {

milliseconds TimeOut(Step step) {
  switch (step) {
    case Step::kRead:
    case Step::kLastRead:
      return milliseconds(25000);
    case Step::kDetect:
      return milliseconds(8200);
    case Step::kRange:
    case Step::kMessageMemories:
      return milliseconds(8500);
    default:
      return milliseconds(8000);
  }
}

simulator::PhoneMemory WalkMemory() {
  const std::vector<TestEntry> entries = {{1, "+447700900101", u"Anna"}, {2, "112", u"Bert"},
                                          {20, "20", u"Twenty"},         {21, "21", u"Next"},
                                          {40, "40", u"Forty"},          {42, "42", u"Last"}};
  return PhoneWith(entries, 45, entries, 45);
}

std::vector<Step> StepsOf(const std::vector<std::string>& lines) {
  std::vector<Step> steps;
  bool ranged = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    const bool last = i + 1 == lines.size();
    if (line == "AT+CPBR=?") ranged = true;
    steps.push_back(line == "ATZE0V1"              ? Step::kDetect
                    : line == "AT+CPBS=?"          ? Step::kMemories
                    : line == "AT+CPBR=?"          ? Step::kRange
                    : line == "AT+CPMS=?"          ? Step::kMessageMemories
                    : line == "AT+CMGW=?"          ? Step::kStoring
                    : line.starts_with("AT+CPBS=") ? (ranged ? Step::kTransferSelect : Step::kSelect)
                    : line.starts_with("AT+CPBW=") ? Step::kWrite
                    : last                         ? Step::kLastRead
                                                   : Step::kRead);
    // The connection asks about two memories one after the other.
    if (line == "AT+CPBS=?") ranged = false;
  }
  return steps;
}

}  // namespace

const std::vector<FaultCase>& FaultCases() {
  static const std::vector<FaultCase> kCases = {
      {"error", Effect::kError, "ERROR"},
      {"cms-error:321", Effect::kUnknownResult, "+CMS ERROR: 321"},
      {"cme-error:10", Effect::kUnknownResult, "+CME ERROR: 10"},
      {"silence", Effect::kNoReply, "-"},
      {"half-line", Effect::kNoReply, ""},
      {"noise:1", Effect::kHarmless, ""},
      {"unsolicited", Effect::kHarmless, ""},
      {"unsolicited:RING", Effect::kHarmless, ""},
      {"wrong-index", Effect::kHarmless, ""},
      {"duplicate-line", Effect::kHarmless, ""},
      {"late", Effect::kTooLate, "-"},
      {"split", Effect::kHarmless, ""},
      {"split:3", Effect::kHarmless, ""},
      {"delay:1000", Effect::kHarmless, ""},
      {"delay:9000", Effect::kTooLate, "-"},
      {"hang-up", Effect::kLineGone, "-"},
      {"hang-up:3", Effect::kLineGone, ""},
      {"hang-up-back", Effect::kLineGone, "-"},
  };
  return kCases;
}

Walk::Walk(const Procedure& procedure) : WindowSession(WalkMemory()), procedure_(procedure) {
  port_list.Add(u"COM1:", u"Data cable", u"/dev/ttyUSB0");
  port_list.Add(u"COM2:", u"Modem board", u"/dev/ttyAMA0");
  EXPECT_TRUE(Start());
  if (procedure.connects && !procedure.reconnects) return;
  Command(command::kConnect);
  if (procedure.reconnects) {
    // Another window has stored another port; OK takes it over.
    registry.PutString(u"Port", u"COM2:");
    InNextDialog([](Dialog& dialog) { ClickDialogButton(dialog, kIdOk); });
    return;
  }
  ShowFolder(procedure.folder);
  if (procedure.uploads()) PrepareUpload();
}

void Walk::RunProcedure() {
  lines_before_ = phone().received_lines().size();
  memory_before_ = phone().memory();
  const milliseconds start = waiter.now();
  Command(procedure_.command);
  took_ = waiter.now() - start;
}

std::vector<std::string> Walk::Lines() {
  const auto& all = phone().received_lines();
  return {all.begin() + static_cast<std::ptrdiff_t>(lines_before_), all.end()};
}

std::string Walk::Counts() {
  Pump();
  return static_cast<QLabel*>(ControlOf(frame(), QStringLiteral("status_right")))->text().toStdString();
}

std::vector<std::string> Walk::PhoneRows() {
  std::vector<std::string> rows;
  const simulator::Phonebook& book = *phone().memory().FindPhonebook(procedure_.folder == 0 ? "SM" : "ME");
  for (const auto& [location, entry] : book.entries)
    rows.push_back(std::to_string(location) + "|" + Utf8(entry.name) + "|" + entry.number);
  return rows;
}

// Two entries to write, a slot to erase, one more entry to write.
void Walk::PrepareUpload() {
  Command(command::kLoadData);
  for (const int position : {0, 1, 39}) {
    AddressEntry& entry = view().book().At(position);
    entry.name = std::u16string(entry.name) + u"!";
    entry.flags |= AddressEntry::kModified;
  }
  const int erased = view().list().RowOf(19);
  view().list().RemoveRow(erased);
  view().book().Erase(19);
  std::vector<int> rows(static_cast<std::size_t>(view().list().RowCount()));
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<int>(i);
  SelectRows(view(), rows);
  TakeAsked();
}

GoodRun RecordGoodRun(const Procedure& procedure) {
  Walk walk(procedure);
  walk.RunProcedure();
  EXPECT_THAT(walk.TakeAsked(), testing::IsEmpty());
  GoodRun run{walk.Lines(), {}, {}};
  run.steps = StepsOf(run.lines);
  for (const Step step : run.steps) run.longest += TimeOut(step);
  run.longest += milliseconds(procedure.reconnects ? 400 : 200);  // closing the port, once or twice
  return run;
}

bool Place::first_after_flush() const {
  if (step() == Step::kDetect) return true;
  return (reads() || step() == Step::kWrite) && run.steps[at - 1] == Step::kTransferSelect;
}

bool Place::second_memory() const {
  std::size_t queries = 0;
  for (std::size_t i = 0; i <= at; ++i) queries += run.steps[i] == Step::kMemories;
  return procedure.connects && queries > 1;
}

std::size_t Place::writes_before() const {
  std::size_t writes = 0;
  for (std::size_t i = 0; i < at; ++i) writes += run.steps[i] == Step::kWrite;
  return writes;
}

Ends Place::EndsWith(const FaultCase& fault) const {
  Effect effect = fault.effect;
  if (reads() && fault.text == "delay:9000") effect = Effect::kHarmless;
  if (effect == Effect::kHarmless) return Ends::kUnnoticed;
  if (effect == Effect::kLineGone) return Ends::kFails;
  switch (step()) {
    case Step::kMemories:
      return tolerant() || effect == Effect::kError ? Ends::kUnnoticed : Ends::kFails;
    case Step::kSelect:
      if (tolerant()) return Ends::kUnnoticed;
      return effect == Effect::kError ? Ends::kNotImplemented : Ends::kFails;
    case Step::kTransferSelect:
      return tolerant() ? Ends::kUnnoticed : Ends::kFails;
    case Step::kRead:  // the later blocks decide
    case Step::kMessageMemories:
      return Ends::kUnnoticed;
    case Step::kStoring:
      return effect == Effect::kError ? Ends::kUnnoticed : Ends::kFails;
    default:
      return Ends::kFails;
  }
}

std::string Place::ShownLine(const FaultCase& fault) const {
  std::string line = fault.last_line;
  if (line == "-") line = first_after_flush() ? "" : "OK";
  // The lines are flushed once more before the transfer, which is where the lost line shows.
  if (step() == Step::kTransferSelect && tolerant()) line = "";
  return line.empty() ? "The phone does not answer." : line;
}

}  // namespace celldesk::fault_walk
