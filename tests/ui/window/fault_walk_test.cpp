#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <map>

#include "ui/framework/application.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// What a command of a procedure is for.
enum class Step {
  kDetect,
  kMemories,
  kSelect,
  kRange,
  kTransferSelect,  // the selection right before reading or writing
  kRead,
  kLastRead,
  kWrite,
  kMessageMemories,
  kStoring
};

/// What a fault does to the command's reply.
enum class Effect {
  kHarmless,       // more lines, other pieces, later but in time
  kError,          // ERROR
  kUnknownResult,  // a result that the phonebook procedures do not know
  kNoReply,        // nothing, or only the beginning of a line
  kTooLate,        // comes with the next reply
  kLineGone        // nothing, and no command goes out any more
};

struct FaultCase {
  std::string text;
  Effect effect;
  std::string last_line;  // the last whole line that it leaves; "-" when it leaves none
};

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

enum class Ends { kUnnoticed, kFails, kNotImplemented };

/// How a procedure ends when this step meets this fault. `tolerant`: the book whose failed selections do not
/// count.
Ends Expected(Step step, const FaultCase& fault, bool tolerant) {
  Effect effect = fault.effect;
  const bool is_read = step == Step::kRead || step == Step::kLastRead;
  if (is_read && fault.text == "delay:9000") effect = Effect::kHarmless;
  if (effect == Effect::kHarmless) return Ends::kUnnoticed;
  if (effect == Effect::kLineGone) return Ends::kFails;
  switch (step) {
    case Step::kMemories:
      return tolerant || effect == Effect::kError ? Ends::kUnnoticed : Ends::kFails;
    case Step::kSelect:
      if (tolerant) return Ends::kUnnoticed;
      return effect == Effect::kError ? Ends::kNotImplemented : Ends::kFails;
    case Step::kTransferSelect:
      return tolerant ? Ends::kUnnoticed : Ends::kFails;
    case Step::kRead:  // the later blocks decide
    case Step::kMessageMemories:
      return Ends::kUnnoticed;
    case Step::kStoring:
      return effect == Effect::kError ? Ends::kUnnoticed : Ends::kFails;
    default:
      return Ends::kFails;
  }
}

/// The line that the box shows after a failure: the fault's own, or the one before it, which is forgotten
/// where lines are flushed before the command.
std::string ShownLine(Step step, const FaultCase& fault, bool first_after_flush, bool tolerant) {
  std::string line = fault.last_line;
  if (line == "-") line = first_after_flush ? "" : "OK";
  // The lines are flushed once more before the transfer, which is where the lost line shows.
  if (step == Step::kTransferSelect && tolerant) line = "";
  return line.empty() ? "The phone does not answer." : line;
}

simulator::PhoneMemory WalkMemory() {
  const std::vector<TestEntry> entries = {{1, "+447700900101", u"Anna"}, {2, "112", u"Bert"},
                                          {20, "20", u"Twenty"},         {21, "21", u"Next"},
                                          {40, "40", u"Forty"},          {42, "42", u"Last"}};
  return PhoneWith(entries, 45, entries, 45);
}

/// A procedure of the window, from its preparation on a healthy phone to what must hold after it.
struct Procedure {
  std::string name;
  bool connects = false;
  bool loads = false;
  int folder = 0;
  int command = 0;
  bool reconnects = false;  // by another port in the settings

  bool uploads() const { return !connects && !loads; }
  bool tolerant() const { return folder == 0; }
};

class Walk : public WindowSession {
 public:
  explicit Walk(const Procedure& procedure) : WindowSession(WalkMemory()), procedure_(procedure) {
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

  AddressBookView& view() { return procedure_.folder == 0 ? sim() : phone_book(); }

  void RunProcedure() {
    lines_before_ = phone().received_lines().size();
    memory_before_ = phone().memory();
    const milliseconds start = waiter.now();
    Command(procedure_.command);
    took_ = waiter.now() - start;
  }

  std::vector<std::string> Lines() {
    const auto& all = phone().received_lines();
    return {all.begin() + static_cast<std::ptrdiff_t>(lines_before_), all.end()};
  }
  milliseconds took() const { return took_; }
  const simulator::PhoneMemory& memory_before() const { return memory_before_; }

  /// "location|name|number" of the phone's memory behind the folder.
  std::vector<std::string> PhoneRows() {
    std::vector<std::string> rows;
    const simulator::Phonebook& book = *phone().memory().FindPhonebook(procedure_.folder == 0 ? "SM" : "ME");
    for (const auto& [location, entry] : book.entries)
      rows.push_back(std::to_string(location) + "|" + Utf8(entry.name) + "|" + entry.number);
    return rows;
  }

 private:
  // Two entries to write, a slot to erase, one more entry to write.
  void PrepareUpload() {
    Command(command::kLoadData);
    for (const int position : {0, 1, 39}) {
      AddressEntry& entry = view().book().At(position);
      entry.name += u"!";
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

  const Procedure& procedure_;
  std::size_t lines_before_ = 0;
  simulator::PhoneMemory memory_before_;
  milliseconds took_{};
};

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

struct GoodRun {
  std::vector<std::string> lines;
  std::vector<Step> steps;
  milliseconds longest{};  // the sum of all time-outs
};

GoodRun RecordGoodRun(const Procedure& procedure) {
  Walk walk(procedure);
  walk.RunProcedure();
  EXPECT_THAT(walk.TakeAsked(), IsEmpty());
  GoodRun run{walk.Lines(), {}, {}};
  run.steps = StepsOf(run.lines);
  for (const Step step : run.steps) run.longest += TimeOut(step);
  run.longest += milliseconds(procedure.reconnects ? 400 : 200);  // closing the port, once or twice
  return run;
}

// Of what a fault at `place` does, in one procedure.
struct Place {
  const Procedure& procedure;
  const GoodRun& run;
  std::size_t at;

  Step step() const { return run.steps[at]; }
  bool first_after_flush() const {
    if (step() == Step::kDetect) return true;
    const bool transfers = step() == Step::kRead || step() == Step::kLastRead || step() == Step::kWrite;
    return transfers && run.steps[at - 1] == Step::kTransferSelect;
  }
  /// The second memory of the connection is the phone's own, which is not tolerant; nor is it needed.
  bool second_memory() const {
    std::size_t queries = 0;
    for (std::size_t i = 0; i <= at; ++i) queries += run.steps[i] == Step::kMemories;
    return procedure.connects && queries > 1;
  }
  bool tolerant() const { return procedure.tolerant() && !second_memory(); }
  /// Writes of the good run before this command.
  std::size_t writes_before() const {
    std::size_t writes = 0;
    for (std::size_t i = 0; i < at; ++i) writes += run.steps[i] == Step::kWrite;
    return writes;
  }
};

void ExpectMessages(Walk& walk, const Place& place, const FaultCase& fault, Ends ends) {
  const std::vector<std::string> texts = walk.TakeAsked();
  if (place.procedure.connects) {
    // A phone without a memory of its own is a phone.
    const bool connected = ends != Ends::kFails;
    EXPECT_EQ(walk.frame().IsConnected(), connected);
    EXPECT_EQ(walk.line.open_ports(), connected ? 1 : 0);
    if (connected) {
      EXPECT_THAT(texts, IsEmpty());
      return;
    }
    EXPECT_THAT(texts, ElementsAre("No mobile phone detected."));
    EXPECT_THAT(walk.boxes.asked().back(), IsErrorBox("No mobile phone detected."));
    return;
  }
  EXPECT_TRUE(walk.frame().IsConnected());
  if (ends == Ends::kUnnoticed) {
    EXPECT_THAT(texts, IsEmpty());
    return;
  }
  ASSERT_EQ(texts.size(), 1u);
  const BoxQuestion& box = walk.boxes.asked().back();
  if (ends == Ends::kNotImplemented) {
    EXPECT_THAT(box, IsErrorBox("Address book of type 'ME' is not implemented on your phone."));
  } else {
    EXPECT_THAT(box, IsCommunicationError(
                         ShownLine(place.step(), fault, place.first_after_flush(), place.tolerant())));
  }
}

void ExpectWindowAtRest(Walk& walk) {
  EXPECT_FALSE(walk.frame().IsBusy());
  EXPECT_EQ(Application::Get()->modeless_dialog(), nullptr);
  const MenuState menu = walk.frame().Surface().QueryState();
  EXPECT_EQ(menu.IsEnabled(command::kConnect), !walk.frame().IsConnected());
  EXPECT_EQ(menu.IsEnabled(command::kDisconnect), walk.frame().IsConnected());
  EXPECT_EQ(menu.IsEnabled(command::kLoadData), walk.frame().IsConnected());
  EXPECT_EQ(menu.IsEnabled(command::kUpload), walk.frame().IsConnected());
  EXPECT_TRUE(menu.IsEnabled(command::kExit));
}

/// Rows that a failed or disturbed reading leaves, of those that the phone has.
std::vector<std::string> ExpectedRows(const Place& place, const FaultCase& fault,
                                      const std::vector<std::string>& all) {
  const bool selects = place.step() == Step::kSelect || place.step() == Step::kTransferSelect;
  const bool reads = place.step() == Step::kRead || place.step() == Step::kLastRead;
  // A selection that did not count and is answered after all: from there on every reply is taken for that of
  // the command after it, and that of the last block is not looked at any more.
  if (selects && fault.effect == Effect::kTooLate) return {all.begin(), all.end() - 1};
  if (!reads || fault.effect == Effect::kHarmless || fault.text == "delay:9000") return all;
  // The locations of the block that got lost; everything behind it too when the line is gone.
  int first = 0, last = 0;
  EXPECT_EQ(std::sscanf(place.run.lines[place.at].c_str(), "AT+CPBR=%d,%d", &first, &last), 2);
  if (fault.effect == Effect::kLineGone) last = 1000;
  // Held back to the next reply: that block is read in the place of the next, and the last one is missing.
  if (fault.text == "late" && place.step() == Step::kRead) first = 41, last = 45;
  std::vector<std::string> rows;
  for (const std::string& row : all) {
    const int location = std::stoi(row);
    if (location < first || location > last) rows.push_back(row);
  }
  return rows;
}

void ExpectLoaded(Walk& walk, const Place& place, const FaultCase& fault, Ends ends) {
  EXPECT_EQ(walk.phone().memory(), walk.memory_before()) << "reading changes nothing in the phone";
  if (!place.procedure.loads || fault.text == "wrong-index") return;
  const bool reads = place.step() == Step::kRead || place.step() == Step::kLastRead;
  if (ends != Ends::kUnnoticed && !reads) {
    EXPECT_THAT(WindowSession::Rows(walk.view()), IsEmpty());
    return;
  }
  if (reads && (fault.text == "half-line" || fault.text == "hang-up:3")) return;  // part of a block
  EXPECT_EQ(WindowSession::Rows(walk.view()), ExpectedRows(place, fault, walk.PhoneRows()));
}

void ExpectUploaded(Walk& walk, const Place& place, const FaultCase& fault, Ends ends) {
  const bool all_of_it = place.procedure.command == command::kUpload;
  const std::vector<int> written = all_of_it ? std::vector<int>{0, 1, 19, 39} : std::vector<int>{0, 1, 39};
  const bool ended_at_write = place.step() == Step::kWrite && ends != Ends::kUnnoticed;
  const std::size_t acknowledged = ends == Ends::kUnnoticed ? written.size()
                                   : ended_at_write         ? place.writes_before()
                                                            : 0;
  // Where only the reply is lost the phone has done what it was told.
  const bool refused = fault.effect == Effect::kError || fault.effect == Effect::kUnknownResult;
  const std::size_t carried_out = acknowledged + (ended_at_write && !refused ? 1 : 0);
  const std::string memory = place.procedure.folder == 0 ? "SM" : "ME";
  simulator::PhoneMemory expected = walk.memory_before();
  auto& entries = expected.FindPhonebook(memory)->entries;
  for (std::size_t i = 0; i < written.size(); ++i) {
    const AddressEntry& entry = walk.view().book().At(written[i]);
    EXPECT_EQ(entry.is_modified(), i >= acknowledged) << "position " << written[i];
    if (i >= carried_out) continue;
    if (written[i] == 19) {
      entries.erase(20);
    } else {
      entries[written[i] + 1].name += u"!";
    }
  }
  EXPECT_EQ(walk.phone().memory(), expected);
  const AddressBook& book = walk.view().book();
  EXPECT_EQ(Utf8(book.entries()[0].name), "Anna!");
  EXPECT_EQ(Utf8(book.entries()[39].name), "Forty!");
  EXPECT_EQ(Utf8(book.entries()[41].name), "Last");
  EXPECT_EQ(walk.view().list().RowCount(), 5);
}

/// The phone is well again: the next commands work, and the whole book is there.
void ExpectRecovery(Walk& walk, const FaultCase& fault) {
  walk.phone().ClearFaults();
  walk.waiter.Pause(milliseconds(20000));  // what was under way has arrived
  if (fault.effect == Effect::kLineGone) {
    walk.line.Return();
    walk.boxes.Answer(kAnswerYes);
    walk.boxes.Answer(kAnswerYes);
    if (walk.frame().IsConnected()) walk.Command(command::kDisconnect);
    EXPECT_FALSE(walk.frame().IsConnected());
  }
  walk.TakeAsked();
  if (!walk.frame().IsConnected()) walk.Command(command::kConnect);
  EXPECT_TRUE(walk.frame().IsConnected());
  EXPECT_THAT(walk.TakeAsked(), IsEmpty());
  walk.boxes.Answer(kAnswerYes);
  walk.Command(command::kLoadData);
  EXPECT_EQ(WindowSession::Rows(walk.view()), walk.PhoneRows());
  for (const std::string& text : walk.TakeAsked())
    EXPECT_THAT(text, testing::StartsWith("Address book was changed.")) << "the only thing to ask";
}

void WalkOneFault(const Place& place, const FaultCase& fault) {
  SCOPED_TRACE(place.procedure.name + ", " + fault.text + " at " + place.run.lines[place.at]);
  Walk walk(place.procedure);
  const std::size_t line = walk.phone().received_lines().size() + place.at + 1;
  ASSERT_TRUE(walk.phone().AddFault(std::to_string(line) + ":" + fault.text));
  walk.RunProcedure();
  EXPECT_LE(walk.took(), place.run.longest);
  Ends ends = Expected(place.step(), fault, place.tolerant());
  ExpectMessages(walk, place, fault, ends);
  ExpectWindowAtRest(walk);
  if (place.procedure.uploads()) {
    ExpectUploaded(walk, place, fault, ends);
  } else {
    ExpectLoaded(walk, place, fault, ends);
  }
  ExpectRecovery(walk, fault);
}

void WalkAllFaults(const Procedure& procedure) {
  const GoodRun run = RecordGoodRun(procedure);
  int cases = 0;
  for (std::size_t at = 0; at < run.lines.size(); ++at) {
    for (const FaultCase& fault : FaultCases()) {
      WalkOneFault({procedure, run, at}, fault);
      ++cases;
    }
  }
  testing::Test::RecordProperty("cases", cases);
  std::cout << procedure.name << ": " << run.lines.size() << " commands, " << cases << " faults\n";
}

TEST(FaultWalk, Connecting) { WalkAllFaults({"Connect", true, false, 0, command::kConnect}); }
TEST(FaultWalk, ChangingThePortInTheSettings) {
  WalkAllFaults({"Settings", true, false, 0, command::kSettings, true});
}
TEST(FaultWalk, LoadingTheSimBook) { WalkAllFaults({"Load SIM", false, true, 0, command::kLoadData}); }
TEST(FaultWalk, LoadingThePhonesBook) { WalkAllFaults({"Load ME", false, true, 1, command::kLoadData}); }
TEST(FaultWalk, UploadingTheSimBook) { WalkAllFaults({"Upload all SIM", false, false, 0, command::kUpload}); }
TEST(FaultWalk, UploadingThePhonesBook) {
  WalkAllFaults({"Upload all ME", false, false, 1, command::kUpload});
}
TEST(FaultWalk, UploadingSelectedSimEntries) {
  WalkAllFaults({"Upload selected SIM", false, false, 0, command::kUploadSelected});
}

// Random bytes may or may not spoil a result, so only what holds in either case is asked.
TEST(FaultWalk, NoiseEndsEveryProcedureInOneOfTheKnownWays) {
  int cases = 0;
  for (const Procedure& procedure : {Procedure{"Connect", true, false, 0, command::kConnect},
                                     Procedure{"Load SIM", false, true, 0, command::kLoadData},
                                     Procedure{"Upload all ME", false, false, 1, command::kUpload}}) {
    const GoodRun run = RecordGoodRun(procedure);
    for (std::size_t at = 0; at < run.lines.size(); ++at) {
      SCOPED_TRACE(procedure.name + ", noise at " + run.lines[at]);
      Walk walk(procedure);
      const std::size_t line = walk.phone().received_lines().size() + at + 1;
      ASSERT_TRUE(walk.phone().AddFault(std::to_string(line) + ":noise:8"));
      walk.RunProcedure();
      EXPECT_LE(walk.took(), run.longest);
      const std::vector<std::string> texts = walk.TakeAsked();
      EXPECT_LE(texts.size(), 1u);
      if (procedure.connects && !texts.empty()) {
        EXPECT_THAT(texts, ElementsAre("No mobile phone detected."));
      } else if (!texts.empty()) {
        EXPECT_EQ(walk.boxes.asked().back().caption, kCommunicationCaption);
      }
      ExpectWindowAtRest(walk);
      if (!procedure.uploads()) {
        EXPECT_EQ(walk.phone().memory(), walk.memory_before());
      }
      ExpectRecovery(walk, {"noise:8", Effect::kHarmless, ""});
      ++cases;
    }
  }
  RecordProperty("cases", cases);
  std::cout << "noise: " << cases << " places\n";
}

}  // namespace
}  // namespace celldesk
