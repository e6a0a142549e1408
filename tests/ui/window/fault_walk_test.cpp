#include "ui/window/fault_walk.h"

#include <array>

#include "ui/framework/application.h"
#include "ui/walk_cases.h"

namespace celldesk::fault_walk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Procedure kConnect{"Connect", true, false, 0, command::kConnect};
const Procedure kSettings{"Settings", true, false, 0, command::kSettings, true};
const Procedure kLoadSim{"Load SIM", false, true, 0, command::kLoadData};
const Procedure kLoadPhone{"Load ME", false, true, 1, command::kLoadData};
const Procedure kUploadSim{"Upload all SIM", false, false, 0, command::kUpload};
const Procedure kUploadPhone{"Upload all ME", false, false, 1, command::kUpload};
const Procedure kUploadSelectedSim{"Upload selected SIM", false, false, 0, command::kUploadSelected};
const Procedure kUploadSelectedPhone{"Upload selected ME", false, false, 1, command::kUploadSelected};

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
    EXPECT_THAT(box, IsCommunicationError(place.ShownLine(fault)));
  }
}

void ExpectWindowAtRest(Walk& walk, const Procedure& procedure) {
  EXPECT_FALSE(walk.frame().IsBusy());
  EXPECT_EQ(Application::Get()->modeless_dialog(), nullptr);
  const bool connected = walk.frame().IsConnected();
  EXPECT_EQ(walk.line.open_ports(), connected ? 1 : 0);
  const std::string port = procedure.reconnects ? "COM2:" : "COM1:";
  EXPECT_EQ(Utf8(walk.frame().StatusText()), connected ? "Connected to " + port : "Not connected");
  const MenuState menu = walk.frame().Surface().QueryState();
  EXPECT_EQ(menu.IsEnabled(command::kConnect), !connected);
  for (const int command : {command::kDisconnect, command::kLoadData, command::kUpload})
    EXPECT_EQ(menu.IsEnabled(command), connected) << command;
  for (const int command : {command::kConnection, command::kSettings, command::kNew, command::kDeleteAll,
                            command::kImport, command::kExport, command::kAbout, command::kExit})
    EXPECT_TRUE(menu.IsEnabled(command)) << command;
}

/// Rows that a failed or disturbed reading leaves, of those that the phone has.
std::vector<std::string> ExpectedRows(const Place& place, const FaultCase& fault,
                                      const std::vector<std::string>& all) {
  const bool reads = place.step() == Step::kRead || place.step() == Step::kLastRead;
  // A selection before the transfer that did not count and is answered after all: every block is ended by the
  // answer to the command before it, and that of the last one is not looked at any more.
  if (place.step() == Step::kTransferSelect && fault.effect == Effect::kTooLate)
    return {all.begin(), all.end() - 1};
  if (!reads || fault.text == "delay:9000") return all;
  if (fault.effect == Effect::kHarmless && fault.text != "wrong-index") return all;
  // The locations of the block that got lost; everything behind it too when the line is gone.
  int first = 0, last = 0;
  EXPECT_EQ(std::sscanf(place.run.lines[place.at].c_str(), "AT+CPBR=%d,%d", &first, &last), 2);
  if (fault.effect == Effect::kLineGone) last = 1000;
  // Held back to the next reply: that block is read in the place of the next, and the last one is missing.
  if (fault.text == "late" && place.step() == Step::kRead) first = 41, last = 45;
  std::vector<std::string> rows;
  // Of the wrong indexes one is such that a book can hold it.
  if (fault.text == "wrong-index" && first == 1) rows.emplace_back("65536|Twenty|20");
  for (const std::string& row : all) {
    const int location = std::stoi(row);
    const bool lost = location >= first && location <= last;
    // The line that broke off in its number is ended by the next reply; the whole ones before it count.
    const bool broken = fault.text == "half-line" && place.step() == Step::kRead && location == last;
    if (broken) rows.push_back(row.substr(0, row.find('|')) + "||" + row.substr(row.rfind('|') + 1));
    if (!lost || (fault.text == "half-line" && !broken && place.step() == Step::kRead)) rows.push_back(row);
  }
  return rows;
}

/// Whether the status line says that rows may be missing: the reading broke off, or an answer was missed.
bool MayLackRows(const Place& place, const FaultCase& fault, Ends ends) {
  if (ends != Ends::kUnnoticed) return place.reads() || place.step() == Step::kTransferSelect;
  if (fault.effect == Effect::kHarmless || fault.effect == Effect::kError) return false;
  return !(place.reads() && fault.text == "delay:9000");
}

void ExpectNoSilentLoss(Walk& walk, const Place& place, const FaultCase& fault, Ends ends) {
  const bool may_lack_rows = MayLackRows(place, fault, ends);
  EXPECT_EQ(walk.view().MayLackRows(), may_lack_rows);
  const int rows = walk.view().list().RowCount();
  EXPECT_EQ(walk.Counts(), (rows == 1 ? "1 item" : std::to_string(rows) + " items") +
                               (may_lack_rows ? ", some may be missing" : ""));
  // A block that the phone refuses holds nothing that it would show.
  if (fault.effect == Effect::kError || fault.text == "wrong-index") return;
  const bool told = ends != Ends::kUnnoticed || may_lack_rows;
  EXPECT_TRUE(told || WindowSession::Rows(walk.view()) == walk.PhoneRows());
}

void ExpectLoaded(Walk& walk, const Place& place, const FaultCase& fault, Ends ends) {
  EXPECT_EQ(walk.phone().memory(), walk.memory_before()) << "reading changes nothing in the phone";
  const AddressBook& book = walk.view().book();
  for (int position = 0; position < std::min(book.count(), book.memory().Capacity()); ++position) {
    const AddressEntry& entry = book.entries()[static_cast<std::size_t>(position)];
    EXPECT_EQ(entry.flags, entry.id.empty() ? 0 : AddressEntry::kOccupied) << "position " << position;
  }
  if (!place.procedure.loads) {
    EXPECT_EQ(book.count(), 0);
    return;
  }
  ExpectNoSilentLoss(walk, place, fault, ends);
  if (ends != Ends::kUnnoticed && !place.reads()) {
    EXPECT_THAT(WindowSession::Rows(walk.view()), IsEmpty());
    return;
  }
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
    if (fault.text != "hang-up-back") walk.line.Return();
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
  EXPECT_FALSE(walk.view().MayLackRows());
  for (const std::string& text : walk.TakeAsked())
    EXPECT_THAT(text, testing::StartsWith("Address book was changed.")) << "the only thing to ask";
}

/// The fault falls on the procedure's command at this place.
void Arm(Walk& walk, const Place& place, const std::string& fault) {
  const std::size_t line = walk.phone().received_lines().size() + place.at + 1;
  EXPECT_TRUE(walk.phone().AddFault(std::to_string(line) + ":" + fault));
}

std::string Describe(const Place& place, const std::string& fault) {
  return place.procedure.name + ", " + fault + " at " + place.run.lines[place.at];
}

/// Calls `visit` for every command of every procedure and every fault of these; how often.
template <class Faults, class Visit>
int ForEach(const std::vector<Procedure>& procedures, const Faults& faults, Visit visit) {
  int cases = 0;
  for (const Procedure& procedure : procedures) {
    const GoodRun run = RecordGoodRun(procedure);
    EXPECT_FALSE(run.lines.empty());
    for (std::size_t at = 0; at < run.lines.size(); ++at) {
      for (const auto& fault : faults) {
        visit(Place{procedure, run, at}, fault);
        ++cases;
      }
    }
  }
  return cases;
}

void WalkOneFault(const Place& place, const FaultCase& fault) {
  SCOPED_TRACE(Describe(place, fault.text));
  Walk walk(place.procedure);
  Arm(walk, place, fault.text);
  walk.RunProcedure();
  EXPECT_LE(walk.took(), place.run.longest);
  const Ends ends = place.EndsWith(fault);
  ExpectMessages(walk, place, fault, ends);
  ExpectWindowAtRest(walk, place.procedure);
  if (place.procedure.uploads()) {
    ExpectUploaded(walk, place, fault, ends);
  } else {
    ExpectLoaded(walk, place, fault, ends);
  }
  ExpectRecovery(walk, fault);
}

void WalkAllFaults(const Procedure& procedure) {
  ReportCases(procedure.name, ForEach({procedure}, FaultCases(), WalkOneFault));
}

TEST(FaultWalk, Connecting) { WalkAllFaults(kConnect); }
TEST(FaultWalk, ChangingThePortInTheSettings) { WalkAllFaults(kSettings); }
TEST(FaultWalk, LoadingTheSimBook) { WalkAllFaults(kLoadSim); }
TEST(FaultWalk, LoadingThePhonesBook) { WalkAllFaults(kLoadPhone); }
TEST(FaultWalk, UploadingTheSimBook) { WalkAllFaults(kUploadSim); }
TEST(FaultWalk, UploadingThePhonesBook) { WalkAllFaults(kUploadPhone); }
TEST(FaultWalk, UploadingSelectedSimEntries) { WalkAllFaults(kUploadSelectedSim); }
TEST(FaultWalk, UploadingSelectedEntriesOfThePhonesBook) { WalkAllFaults(kUploadSelectedPhone); }

/// Every entry is as it was, or as the upload was to make it, and what the book holds for done the phone has.
void ExpectNothingButTheUpload(Walk& walk, const Procedure& procedure, simulator::PhoneMemory expected) {
  const std::string memory = procedure.folder == 0 ? "SM" : "ME";
  auto& entries = expected.FindPhonebook(memory)->entries;
  const auto& present = walk.phone().memory().FindPhonebook(memory)->entries;
  for (const int position : {0, 1, 19, 39}) {
    const int location = position + 1;
    const auto now = present.find(location);
    const bool done =
        position == 19 ? now == present.end() : now != present.end() && now->second.name.ends_with(u'!');
    EXPECT_TRUE(done || walk.view().book().At(position).is_modified()) << "position " << position;
    if (done && position == 19) {
      entries.erase(location);
    } else if (done) {
      entries[location].name += u'!';
    }
  }
  EXPECT_EQ(walk.phone().memory(), expected);
}

/// The same command once more, at once, while the answer that was missed may still be under way.
void RunTwice(const Place& place, const FaultCase& fault) {
  SCOPED_TRACE(Describe(place, fault.text));
  Walk walk(place.procedure);
  Arm(walk, place, fault.text);
  const simulator::PhoneMemory before = walk.phone().memory();
  walk.RunProcedure();
  walk.phone().ClearFaults();
  walk.TakeAsked();
  walk.Command(place.procedure.command);
  if (place.procedure.uploads()) {
    ExpectNothingButTheUpload(walk, place.procedure, before);
  } else {
    EXPECT_EQ(walk.phone().memory(), before);
    const bool told = walk.view().MayLackRows() || !walk.TakeAsked().empty();
    EXPECT_TRUE(told || WindowSession::Rows(walk.view()) == walk.PhoneRows());
  }
  ExpectRecovery(walk, fault);
}

TEST(FaultWalk, TheSameCommandAtOnceHidesNothingAndHoldsNothingForDone) {
  const std::vector<Procedure> procedures = {kLoadSim,     kLoadPhone,         kUploadSim,
                                             kUploadPhone, kUploadSelectedSim, kUploadSelectedPhone};
  ReportCases("at once", ForEach(procedures, MissedAnswers(FaultCases()), RunTwice));
}

void WalkOneNoise(const Place& place, const std::string& noise) {
  SCOPED_TRACE(Describe(place, noise));
  const Procedure& procedure = place.procedure;
  Walk walk(procedure);
  Arm(walk, place, noise);
  walk.RunProcedure();
  EXPECT_LE(walk.took(), place.run.longest);
  const std::vector<std::string> texts = walk.TakeAsked();
  EXPECT_LE(texts.size(), 1u);
  if (procedure.connects && !texts.empty()) {
    EXPECT_THAT(texts, ElementsAre("No mobile phone detected."));
  } else if (!texts.empty()) {
    EXPECT_EQ(walk.boxes.asked().back().caption, kCommunicationCaption);
  }
  EXPECT_EQ(walk.frame().IsConnected(), !procedure.connects || texts.empty());
  ExpectWindowAtRest(walk, procedure);
  if (procedure.uploads()) {
    ExpectNothingButTheUpload(walk, procedure, walk.memory_before());
  } else {
    EXPECT_EQ(walk.phone().memory(), walk.memory_before());
  }
  ExpectRecovery(walk, {noise, Effect::kHarmless, ""});
}

// Random bytes may or may not spoil a result, so only what holds in either case is asked.
TEST(FaultWalk, NoiseEndsEveryProcedureInOneOfTheKnownWays) {
  const std::vector<Procedure> procedures = {kConnect,           kSettings,           kLoadSim,
                                             kLoadPhone,         kUploadSim,          kUploadPhone,
                                             kUploadSelectedSim, kUploadSelectedPhone};
  ReportCases("noise", ForEach(procedures, std::array{std::string("noise:8")}, WalkOneNoise));
}

}  // namespace
}  // namespace celldesk::fault_walk
