#include "ui/sms/message_fault_walk.h"

#include <algorithm>

#include "ui/framework/application.h"
#include "ui/walk_cases.h"

namespace celldesk::message_fault_walk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const Procedure kList{"List"};
const Procedure kDelete{"Delete", true};
const Procedure kDeleteInPhone{"Delete in ME", true, 0, 1};
const Procedure kStore{"Store", false, kLeftToStore};
const Procedure kStoreInPhone{"Store in ME", false, kLeftToStore, 1};
const Procedure kSend{"Send", false, kLeftToSend};
const Procedure kStoreAndSend{"Store and send", false, kLeftToStore | kMessageToSend};
const std::vector<Procedure> kEveryProcedure = {kList,         kDelete, kDeleteInPhone, kStore,
                                                kStoreInPhone, kSend,   kStoreAndSend};

void ExpectQuestion(Walk& walk, const std::vector<std::string>& texts, const Place& place, int answer) {
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0], "When sending SMS \"Pending text\"  for +447700900555 there was an error: '" +
                          place.ShownLine(walk) + "' .\r Do you want to retry?");
  if (answer == kAnswerNo) {
    EXPECT_EQ(
        texts[1],
        "You made changes that will be lost if you load new SMS from your mobile phone.\rDo you want to "
        "continue?");
  } else {
    EXPECT_EQ(walk.LastBox().caption, u"Communication error");
    EXPECT_EQ(texts[1], place.ShownLine(walk));
  }
}

void ExpectMessages(Walk& walk, const Place& place, int answer) {
  const std::vector<std::string> texts = walk.TakeAsked();
  if (place.submission_fails()) {
    ExpectQuestion(walk, texts, place, answer);
  } else if (place.ends_in_error()) {
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(walk.LastBox().caption, u"Communication error");
    EXPECT_EQ(texts[0], place.ShownLine(walk));
  } else {
    EXPECT_THAT(texts, IsEmpty());
  }
}

void ExpectAtRest(Walk& walk) {
  EXPECT_FALSE(walk.frame().IsBusy());
  EXPECT_EQ(Application::Get()->modeless_dialog(), nullptr);
  EXPECT_TRUE(walk.frame().IsConnected());
  EXPECT_EQ(walk.line.open_ports(), 1);
  EXPECT_EQ(walk.StatusLine(), "Connected to COM1:");
  const MenuState menu = walk.frame().Surface().QueryState();
  for (const int command :
       {command::kLoadData, command::kUpload, command::kDisconnect, command::kConnection, command::kSettings,
        command::kDeleteAll, command::kImport, command::kExport, command::kAbout, command::kExit})
    EXPECT_TRUE(menu.IsEnabled(command)) << command;
  EXPECT_FALSE(menu.IsEnabled(command::kConnect));
}

/// What the phone holds is what it held, but for what it was told and has carried out.
void ExpectPhone(Walk& walk, const Place& place) {
  const bool all = place.step() == Step::kSelectToList || place.step() == Step::kList;
  const bool fine = all || place.effect() == Effect::kHarmless;
  std::vector<std::string> expected = walk.stored_before();
  const bool deleted = place.procedure.deletes && (fine || place.CarriesOut("AT+CMGD=", Step::kDelete));
  if (deleted)
    expected.erase(std::find_if(expected.begin(), expected.end(), [&](const auto& text) {
      return text.starts_with(place.procedure.store() + " 1 ");
    }));
  const bool lost_prompt = place.step() == Step::kSubmit && !place.submission_fails();
  const bool stored = place.procedure.stores() &&
                      (fine || lost_prompt || place.CarriesOut("AT+CMGW=", Step::kPdu) || place.in_sending());
  std::vector<std::string> present = walk.Stored();
  EXPECT_EQ(TimesStored(walk, kText), stored ? 1 : 0);
  EXPECT_EQ(present.size(), expected.size() + (stored ? 1 : 0));
  EXPECT_THAT(present, testing::IsSupersetOf(expected));
  const auto in_memory = [&](const auto& text) { return text.starts_with(place.procedure.store()); };
  EXPECT_EQ(std::count_if(present.begin(), present.end(), in_memory),
            std::count_if(expected.begin(), expected.end(), in_memory) + (stored ? 1 : 0));
  EXPECT_EQ(walk.phone().memory().phonebooks, walk.phonebooks_before());
  const bool sent =
      place.procedure.sends() && (fine || lost_prompt || place.CarriesOut("AT+CMGS=", Step::kPdu));
  EXPECT_EQ(walk.TimesSent(), sent ? 1 : 0);
}

/// What was not done still waits; what was done does not.
void ExpectFlags(Walk& walk, const Place& place) {
  if (place.submission_fails()) {
    const std::uint32_t waits = place.in_sending() ? kMessageToSend : kMessageToStore;
    EXPECT_TRUE(IsPending(walk, kText, waits));
    return;
  }
  EXPECT_FALSE(IsPending(walk, kText, kMessageToSend | kMessageToStore));
  const bool not_deleted = place.step() == Step::kSelectToDelete && place.effect() != Effect::kHarmless;
  EXPECT_EQ(IsPending(walk, place.procedure.deleted_text(), kMessageToDelete), not_deleted);
  EXPECT_EQ(walk.messages().IsChanged(), not_deleted && place.procedure.deletes);
  if (place.effect() == Effect::kHarmless && !place.may_lack_rows(walk)) {
    EXPECT_TRUE(walk.ShowsWhatThePhoneHolds());
  }
}

/// Rows that are missing are told of, in a box or in the status line.
void ExpectNoSilentLoss(Walk& walk, const Place& place) {
  for (const SmsFolderView* folder : {&walk.inbox(), &walk.outbox()})
    EXPECT_EQ(folder->MayLackRows(), place.may_lack_rows(walk));
  const int rows = walk.inbox().list().RowCount();
  const std::size_t selected = walk.inbox().list().SelectedCount();
  EXPECT_EQ(walk.Counts(), (rows == 1 ? "1 item" : std::to_string(rows) + " items") +
                               (selected > 0 ? ", " + std::to_string(selected) + " selected" : "") +
                               (place.may_lack_rows(walk) ? ", some may be missing" : ""));
  // A memory that the phone refuses to list holds nothing that it would show.
  if (place.effect() == Effect::kError || place.submission_fails()) return;
  const bool told = place.ends_in_error() || place.may_lack_rows(walk);
  EXPECT_TRUE(told || walk.ShowsWhatThePhoneHolds());
}

/// The phone is well again: the next commands work, and the folders show what it holds.
void ExpectRecovery(Walk& walk, const FaultCase& fault) {
  walk.phone().ClearFaults();
  walk.line.Emit(walk.phone().Receive("AT\r"));  // what it still held back comes
  walk.waiter.Pause(milliseconds(20000));        // what was under way has arrived
  MessageBoxScript yes;
  for (int i = 0; i < 4; ++i) yes.Answer(kAnswerYes);
  if (fault.effect == Effect::kLineGone) {
    if (fault.text != "hang-up-back") walk.line.Return();
    walk.Command(command::kDisconnect);
    EXPECT_FALSE(walk.frame().IsConnected());
    walk.Command(command::kConnect);
    EXPECT_TRUE(walk.frame().IsConnected());
  }
  walk.TakePhoneLines();
  walk.Command(command::kLoadData);
  EXPECT_THAT(walk.TakePhoneLines(),
              ElementsAre(R"(AT+CPMS="SM","SM")", "AT+CMGL=4", R"(AT+CPMS="ME","ME")", "AT+CMGL=4"));
  EXPECT_TRUE(walk.ShowsWhatThePhoneHolds());
  EXPECT_FALSE(walk.messages().IsChanged());
  EXPECT_FALSE(walk.inbox().MayLackRows());
}

std::string Describe(const Place& place) {
  return place.procedure.name + ", " + place.fault.text + " at " + place.run.lines[place.at];
}

/// Runs the procedure with the place's fault.
void RunWithFault(Walk& walk, const Place& place, int answer) {
  const std::size_t line = walk.lines_before() + place.at + 1;
  EXPECT_TRUE(walk.phone().AddFault(std::to_string(line) + ":" + place.fault.text));
  walk.RunProcedure(answer);
}

/// Calls `visit`, which says how many cases it made, for every command of every procedure and every fault of
/// these; the sum.
template <class Visit>
int ForEach(const std::vector<Procedure>& procedures, const std::vector<FaultCase>& faults, Visit visit) {
  int cases = 0;
  for (const Procedure& procedure : procedures) {
    const GoodRun run = RecordGoodRun(procedure);
    EXPECT_FALSE(run.lines.empty());
    for (std::size_t at = 0; at < run.lines.size(); ++at)
      for (const FaultCase& fault : faults) cases += visit(Place{procedure, run, at, fault});
  }
  return cases;
}

void WalkOneFault(const Place& place, int answer) {
  SCOPED_TRACE(Describe(place));
  Walk walk(place.procedure);
  RunWithFault(walk, place, answer);
  ExpectMessages(walk, place, answer);
  ExpectAtRest(walk);
  ExpectPhone(walk, place);
  ExpectFlags(walk, place);
  ExpectNoSilentLoss(walk, place);
  ExpectRecovery(walk, place.fault);
}

void WalkAllFaults(const Procedure& procedure) {
  ReportCases(procedure.name, ForEach({procedure}, FaultCases(), [](const Place& place) {
                WalkOneFault(place, kAnswerNo);
                if (!place.submission_fails()) return 1;
                WalkOneFault(place, kAnswerCancel);
                return 2;
              }));
}

TEST(MessageFaultWalk, Listing) { WalkAllFaults(kList); }
TEST(MessageFaultWalk, Deleting) { WalkAllFaults(kDelete); }
TEST(MessageFaultWalk, DeletingInThePhonesMemory) { WalkAllFaults(kDeleteInPhone); }
TEST(MessageFaultWalk, Storing) { WalkAllFaults(kStore); }
TEST(MessageFaultWalk, StoringInThePhonesMemory) { WalkAllFaults(kStoreInPhone); }
TEST(MessageFaultWalk, Sending) { WalkAllFaults(kSend); }
TEST(MessageFaultWalk, StoringAndSending) { WalkAllFaults(kStoreAndSend); }

/// The next command comes at once, while the answer that was missed may still be under way.
int LoadAtOnce(const Place& place) {
  SCOPED_TRACE(Describe(place));
  Walk walk(place.procedure);
  RunWithFault(walk, place, kAnswerNo);
  walk.phone().ClearFaults();
  MessageBoxScript yes;
  for (int i = 0; i < 2; ++i) yes.Answer(kAnswerYes);
  walk.Command(command::kLoadData);
  const bool told = walk.inbox().MayLackRows() ||
                    (!yes.asked().empty() && yes.asked().back().caption == u"Communication error");
  EXPECT_TRUE(told || walk.ShowsWhatThePhoneHolds());
  EXPECT_LE(walk.TimesSent(), 1);
  ExpectRecovery(walk, place.fault);
  return 1;
}

TEST(MessageFaultWalk, TheNextLoadAtOnceHidesNothing) {
  ReportCases("load at once", ForEach(kEveryProcedure, MissedAnswers(FaultCases()), LoadAtOnce));
}

/// Of a message that was to be stored, sent or deleted: it was, or it still waits.
void ExpectDoneOrWaiting(Walk& walk, const Procedure& procedure) {
  std::vector<std::string> expected = walk.stored_before();
  const std::vector<std::string> present = walk.Stored();
  if (procedure.deletes) {
    const auto deleted = std::find_if(expected.begin(), expected.end(), [&](const auto& text) {
      return text.starts_with(procedure.store() + " 1 ");
    });
    const bool gone = std::find(present.begin(), present.end(), *deleted) == present.end();
    EXPECT_TRUE(gone || IsPending(walk, procedure.deleted_text(), kMessageToDelete));
    if (gone) expected.erase(deleted);
  }
  const int stored = TimesStored(walk, kText);
  EXPECT_LE(stored, 1);
  EXPECT_TRUE(!procedure.stores() || stored == 1 || IsPending(walk, kText, kMessageToStore));
  EXPECT_LE(walk.TimesSent(), 1);
  EXPECT_TRUE(!procedure.sends() || walk.TimesSent() == 1 || IsPending(walk, kText, kMessageToSend));
  EXPECT_EQ(present.size(), expected.size() + static_cast<std::size_t>(stored));
  EXPECT_THAT(present, testing::IsSupersetOf(expected));
  EXPECT_EQ(walk.phone().memory().phonebooks, walk.phonebooks_before());
}

int WalkOneNoise(const Place& place) {
  SCOPED_TRACE(Describe(place));
  Walk walk(place.procedure);
  RunWithFault(walk, place, kAnswerNo);
  const std::vector<std::string> texts = walk.TakeAsked();
  EXPECT_LE(texts.size(), 2U);
  if (texts.size() == 1U) {
    EXPECT_EQ(walk.LastBox().caption, u"Communication error");
  }
  if (texts.size() == 2U) {
    EXPECT_THAT(texts[0], StartsWith("When sending SMS \"Pending text\"  for +447700900555"));
  }
  ExpectAtRest(walk);
  ExpectDoneOrWaiting(walk, place.procedure);
  ExpectRecovery(walk, place.fault);
  return 1;
}

// Random bytes may or may not spoil a result, so only what holds in either case is asked.
TEST(MessageFaultWalk, NoiseEndsEveryProcedureInOneOfTheKnownWays) {
  ReportCases("noise", ForEach(kEveryProcedure, {{"noise:8", Effect::kHarmless}}, WalkOneNoise));
}

}  // namespace
}  // namespace celldesk::message_fault_walk
