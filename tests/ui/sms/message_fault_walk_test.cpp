#include "ui/sms/message_fault_walk.h"

#include <iostream>

#include "ui/framework/application.h"

namespace celldesk::message_fault_walk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

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
  if (place.effect() == Effect::kHarmless && !place.fault.garbles_rows) {
    EXPECT_EQ(walk.Texts().size(), walk.Stored().size());
  }
}

/// Rows that are missing are told of, in a box or in the status line.
void ExpectNoSilentLoss(Walk& walk, const Place& place) {
  for (const SmsFolderView* folder : {&walk.inbox(), &walk.outbox()})
    EXPECT_EQ(folder->MayLackRows(), place.may_lack_rows());
  const int rows = walk.inbox().list().RowCount();
  const std::size_t selected = walk.inbox().list().SelectedCount();
  EXPECT_EQ(walk.Counts(), (rows == 1 ? "1 item" : std::to_string(rows) + " items") +
                               (selected > 0 ? ", " + std::to_string(selected) + " selected" : "") +
                               (place.may_lack_rows() ? ", some may be missing" : ""));
  // A memory that the phone refuses to list holds nothing that it would show.
  if (place.effect() == Effect::kError || place.fault.garbles_rows || place.submission_fails()) return;
  const bool told = place.ends_in_error() || place.may_lack_rows();
  EXPECT_TRUE(told || walk.Texts().size() == walk.Stored().size());
}

/// The phone is well again: the next commands work, and the folders show what it holds.
void ExpectRecovery(Walk& walk, Effect effect) {
  walk.phone().ClearFaults();
  walk.line.Emit(walk.phone().Receive("AT\r"));  // what it still held back comes
  walk.waiter.Pause(milliseconds(20000));        // what was under way has arrived
  MessageBoxScript yes;
  for (int i = 0; i < 4; ++i) yes.Answer(kAnswerYes);
  if (effect == Effect::kLineGone) {
    walk.line.Return();
    walk.Command(command::kDisconnect);
    EXPECT_FALSE(walk.frame().IsConnected());
    walk.Command(command::kConnect);
    EXPECT_TRUE(walk.frame().IsConnected());
  }
  walk.TakePhoneLines();
  walk.Command(command::kLoadData);
  EXPECT_THAT(walk.TakePhoneLines(),
              ElementsAre(R"(AT+CPMS="SM","SM")", "AT+CMGL=4", R"(AT+CPMS="ME","ME")", "AT+CMGL=4"));
  EXPECT_EQ(walk.Texts().size(), walk.Stored().size());
  EXPECT_FALSE(walk.messages().IsChanged());
  EXPECT_FALSE(walk.inbox().MayLackRows());
}

void WalkOneFault(const Place& place, int answer) {
  SCOPED_TRACE(place.procedure.name + ", " + place.fault.text + " at " + place.run.lines[place.at]);
  Walk walk(place.procedure);
  const std::size_t line = walk.lines_before() + place.at + 1;
  ASSERT_TRUE(walk.phone().AddFault(std::to_string(line) + ":" + place.fault.text));
  walk.RunProcedure(answer);
  ExpectMessages(walk, place, answer);
  ExpectAtRest(walk);
  ExpectPhone(walk, place);
  ExpectFlags(walk, place);
  ExpectNoSilentLoss(walk, place);
  ExpectRecovery(walk, place.effect());
}

void WalkAllFaults(const Procedure& procedure) {
  const GoodRun run = RecordGoodRun(procedure);
  ASSERT_FALSE(run.lines.empty());
  int cases = 0;
  for (std::size_t at = 0; at < run.lines.size(); ++at) {
    for (const FaultCase& fault : FaultCases()) {
      const Place place{procedure, run, at, fault};
      WalkOneFault(place, kAnswerNo);
      ++cases;
      if (!place.submission_fails()) continue;
      WalkOneFault(place, kAnswerCancel);
      ++cases;
    }
  }
  testing::Test::RecordProperty("cases", cases);
  std::cout << procedure.name << ": " << run.lines.size() << " commands, " << cases << " faults\n";
}

TEST(MessageFaultWalk, Listing) { WalkAllFaults({"List"}); }
TEST(MessageFaultWalk, Deleting) { WalkAllFaults({"Delete", true}); }
TEST(MessageFaultWalk, DeletingInThePhonesMemory) { WalkAllFaults({"Delete in ME", true, 0, 1}); }
TEST(MessageFaultWalk, Storing) { WalkAllFaults({"Store", false, kLeftToStore}); }
TEST(MessageFaultWalk, StoringInThePhonesMemory) { WalkAllFaults({"Store in ME", false, kLeftToStore, 1}); }
TEST(MessageFaultWalk, Sending) { WalkAllFaults({"Send", false, kLeftToSend}); }
TEST(MessageFaultWalk, StoringAndSending) {
  WalkAllFaults({"Store and send", false, kLeftToStore | kMessageToSend});
}

/// The next command comes at once, while the answer that was missed may still be under way.
void LoadAtOnce(const Place& place) {
  SCOPED_TRACE(place.procedure.name + ", " + place.fault.text + " at " + place.run.lines[place.at]);
  Walk walk(place.procedure);
  const std::size_t line = walk.lines_before() + place.at + 1;
  ASSERT_TRUE(walk.phone().AddFault(std::to_string(line) + ":" + place.fault.text));
  walk.RunProcedure(kAnswerNo);
  walk.phone().ClearFaults();
  MessageBoxScript yes;
  for (int i = 0; i < 2; ++i) yes.Answer(kAnswerYes);
  walk.Command(command::kLoadData);
  const bool told = walk.inbox().MayLackRows() ||
                    (!yes.asked().empty() && yes.asked().back().caption == u"Communication error");
  EXPECT_TRUE(told || walk.Texts().size() == walk.Stored().size());
  EXPECT_LE(walk.TimesSent(), 1);
  ExpectRecovery(walk, place.effect());
}

TEST(MessageFaultWalk, TheNextLoadAtOnceHidesNothing) {
  int cases = 0;
  for (const Procedure& procedure :
       {Procedure{"List"}, Procedure{"Delete", true}, Procedure{"Store", false, kLeftToStore},
        Procedure{"Send", false, kLeftToSend}}) {
    const GoodRun run = RecordGoodRun(procedure);
    for (std::size_t at = 0; at < run.lines.size(); ++at) {
      for (const FaultCase& fault : FaultCases()) {
        if (fault.effect != Effect::kNoReply && fault.effect != Effect::kTooLate) continue;
        LoadAtOnce({procedure, run, at, fault});
        ++cases;
      }
    }
  }
  RecordProperty("cases", cases);
  std::cout << "load at once: " << cases << " faults\n";
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

void WalkOneNoise(const Procedure& procedure, const GoodRun& run, std::size_t at) {
  SCOPED_TRACE(procedure.name + ", noise at " + run.lines[at]);
  Walk walk(procedure);
  ASSERT_TRUE(walk.phone().AddFault(std::to_string(walk.lines_before() + at + 1) + ":noise:8"));
  walk.RunProcedure(kAnswerNo);
  const std::vector<std::string> texts = walk.TakeAsked();
  EXPECT_LE(texts.size(), 2U);
  if (texts.size() == 1U) {
    EXPECT_EQ(walk.LastBox().caption, u"Communication error");
  }
  if (texts.size() == 2U) {
    EXPECT_THAT(texts[0], StartsWith("When sending SMS \"Pending text\"  for +447700900555"));
  }
  ExpectAtRest(walk);
  ExpectDoneOrWaiting(walk, procedure);
  ExpectRecovery(walk, Effect::kHarmless);
}

// Random bytes may or may not spoil a result, so only what holds in either case is asked.
TEST(MessageFaultWalk, NoiseEndsEveryProcedureInOneOfTheKnownWays) {
  int cases = 0;
  for (const Procedure& procedure :
       {Procedure{"List"}, Procedure{"Delete", true}, Procedure{"Store", false, kLeftToStore},
        Procedure{"Send", false, kLeftToSend},
        Procedure{"Store and send", false, kLeftToStore | kMessageToSend}}) {
    const GoodRun run = RecordGoodRun(procedure);
    for (std::size_t at = 0; at < run.lines.size(); ++at, ++cases) WalkOneNoise(procedure, run, at);
  }
  RecordProperty("cases", cases);
  std::cout << "noise: " << cases << " places\n";
}

}  // namespace
}  // namespace celldesk::message_fault_walk
