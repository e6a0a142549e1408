#include <iostream>
#include <map>

#include "ui/sms/pending_messages.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// What a command of a procedure is for.
enum class Step {
  kSelectToDelete,
  kDelete,
  kSelectToStore,
  kSelectToSend,
  kSubmit,
  kPdu,
  kSelectToList,
  kList
};

/// What a fault does to the command's reply.
enum class Effect { kHarmless, kError, kCmsError, kCmeError, kNoReply, kTooLate, kLineGone };

struct FaultCase {
  std::string text;
  Effect effect;
  bool garbles_rows = false;  // of a listing
};

const std::vector<FaultCase>& FaultCases() {
  static const std::vector<FaultCase> kCases = {
      {"error", Effect::kError},
      {"cms-error:321", Effect::kCmsError},
      {"cme-error:10", Effect::kCmeError},
      {"silence", Effect::kNoReply},
      {"half-line", Effect::kNoReply},
      {"noise:1", Effect::kHarmless, true},
      {"unsolicited", Effect::kHarmless, true},
      {"unsolicited:RING", Effect::kHarmless, true},
      {"wrong-index", Effect::kHarmless, true},
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

bool IsRefused(Effect effect) {
  return effect == Effect::kError || effect == Effect::kCmsError || effect == Effect::kCmeError;
}

/// An upload (or a mere listing) of the folders, with what it has to do.
struct Procedure {
  std::string name;
  bool deletes = false;
  std::uint32_t flags = 0;  // of a new message; 0: there is none

  bool uploads() const { return deletes || flags != 0; }
  bool stores() const { return (flags & kMessageToStore) != 0; }
  bool sends() const { return (flags & kMessageToSend) != 0; }
};

constexpr std::u16string_view kText = u"Pending text";
constexpr std::u16string_view kDeletedText = u"Coffee at ten?";

class Walk : public SmsWindow {
 public:
  explicit Walk(const Procedure& procedure) : procedure_(procedure) {
    Load();
    if (procedure.deletes) {
      for (int row = 0; row < inbox().list().RowCount(); ++row)
        if (Cell(inbox(), row, 3) == Utf8(kDeletedText)) Select(inbox(), {row});
      Command(command::kDelete);
    }
    if (procedure.flags != 0) pdu_ = Utf8(MakePending(messages(), kText, procedure.flags).pdu_text);
    TakeAsked();
    TakePhoneLines();
    lines_before_ = phone().received_lines().size();
    stored_before_ = Stored();
  }

  /// Answers what is asked with `answer`.
  void RunProcedure(int answer) {
    for (int i = 0; i < 2; ++i) boxes.Answer(answer);
    Command(procedure_.uploads() ? command::kUpload : command::kLoadData);
  }
  std::size_t lines_before() const { return lines_before_; }
  int TimesSent() { return pdu_.empty() ? 0 : celldesk::TimesSent(*this, pdu_); }

  /// "memory index PDU" of all that the phone holds; the phone itself marks messages as read.
  std::vector<std::string> Stored() {
    std::vector<std::string> all;
    for (const simulator::MessageStore& store : phone().memory().stores) {
      for (const auto& [index, stored] : store.messages)
        all.push_back(store.name + " " + std::to_string(index) + " " + stored.pdu);
    }
    return all;
  }
  const std::vector<std::string>& stored_before() const { return stored_before_; }
  std::vector<std::string> Texts() {
    std::vector<std::string> texts = InboxTexts();
    ShowFolder(kOutboxTab);
    for (const std::string& text : OutboxTexts()) texts.push_back(text);
    ShowFolder(kInboxTab);
    return texts;
  }

 private:
  const Procedure& procedure_;
  std::string pdu_;
  std::size_t lines_before_ = 0;
  std::vector<std::string> stored_before_;
};

/// The commands of a run without faults, found by running it.
struct GoodRun {
  std::vector<std::string> lines;
  std::vector<Step> steps;
};

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

GoodRun RecordGoodRun(const Procedure& procedure) {
  Walk walk(procedure);
  walk.RunProcedure(kAnswerNo);
  EXPECT_THAT(walk.TakeAsked(), IsEmpty());
  GoodRun run{walk.TakePhoneLines(), {}};
  run.steps = StepsOf(run.lines);
  return run;
}

struct Place {
  const Procedure& procedure;
  const GoodRun& run;
  std::size_t at;
  const FaultCase& fault;

  Step step() const { return run.steps[at]; }
  Effect effect() const { return fault.effect; }
  bool is_last() const { return at + 1 == run.steps.size(); }
  bool submits() const { return step() == Step::kSubmit || step() == Step::kPdu; }
  /// The message cannot be stored or sent, or nobody knows whether it was.
  bool submission_fails() const {
    if (effect() == Effect::kHarmless) return false;
    // The program does not wait for the prompt; a lost one is not missed.
    const bool prompt_lost = effect() == Effect::kNoReply || effect() == Effect::kTooLate;
    if (step() == Step::kSubmit) return !prompt_lost;
    return step() == Step::kPdu || step() == Step::kSelectToStore || step() == Step::kSelectToSend;
  }
  /// The place belongs to the sending of a message that is stored too.
  bool in_sending() const {
    return step() == Step::kSelectToSend || (submits() && LastSubmission().starts_with("AT+CMGS="));
  }
  std::string LastSubmission() const {
    std::size_t i = at;
    while (run.steps[i] != Step::kSubmit && i > 0) --i;
    return run.lines[i];
  }
  /// The procedure ends in a communication error without a question.
  bool ends_in_error() const {
    if (effect() == Effect::kHarmless) return false;
    if (step() == Step::kSelectToDelete || step() == Step::kSelectToList) return true;
    if (effect() == Effect::kLineGone) return true;
    return step() == Step::kList && is_last();
  }
  /// Commands up to this one that the phone has carried out, of those that begin with `start`.
  bool CarriesOut(const std::string& start, Step last) const {
    bool named = false;
    for (std::size_t i = 0; i <= at; ++i) {
      if (run.lines[i].starts_with(start)) named = true;
      if (!named || run.steps[i] != last) continue;
      return i < at || !IsRefused(effect());
    }
    return false;
  }
};

/// The first line of a box's text tells what it is.
void ExpectMessages(Walk& walk, const Place& place, int answer) {
  const std::vector<std::string> texts = walk.TakeAsked();
  if (place.submission_fails()) {
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_THAT(texts[0], StartsWith("When sending SMS \"Pending text\"  for +447700900555"));
    if (answer == kAnswerNo) {
      EXPECT_THAT(texts[1], StartsWith("You made changes that will be lost if you load new SMS"));
    } else {
      EXPECT_EQ(walk.LastBox().caption, u"Communication error");
    }
    return;
  }
  if (!place.ends_in_error()) {
    EXPECT_THAT(texts, IsEmpty());
    return;
  }
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_EQ(walk.LastBox().caption, u"Communication error");
  const std::map<Effect, std::string> refusals = {{Effect::kError, "ERROR"},
                                                  {Effect::kCmsError, "+CMS ERROR: 321"},
                                                  {Effect::kCmeError, "+CME ERROR: 10"}};
  const auto refusal = refusals.find(place.effect());
  if (refusal != refusals.end()) {
    EXPECT_EQ(texts[0], refusal->second);
  }
}

void ExpectAtRest(Walk& walk) {
  EXPECT_FALSE(walk.frame().IsBusy());
  EXPECT_EQ(walk.StatusLine(), "Connected to COM1:");
  const MenuState menu = walk.frame().Surface().QueryState();
  for (const int command : {command::kLoadData, command::kUpload, command::kDisconnect, command::kSettings})
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
    expected.erase(std::find_if(expected.begin(), expected.end(),
                                [](const auto& text) { return text.starts_with("SM 1 "); }));
  const bool lost_prompt = place.step() == Step::kSubmit && !place.submission_fails();
  const bool stored = place.procedure.stores() &&
                      (fine || lost_prompt || place.CarriesOut("AT+CMGW=", Step::kPdu) || place.in_sending());
  std::vector<std::string> present = walk.Stored();
  EXPECT_EQ(TimesStored(walk, kText), stored ? 1 : 0);
  EXPECT_EQ(present.size(), expected.size() + (stored ? 1 : 0));
  EXPECT_THAT(present, testing::IsSupersetOf(expected));
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
  EXPECT_EQ(IsPending(walk, kDeletedText, kMessageToDelete), not_deleted);
  if (place.effect() == Effect::kHarmless && !place.fault.garbles_rows) {
    EXPECT_EQ(walk.Texts().size(), walk.Stored().size());
  }
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
TEST(MessageFaultWalk, Storing) { WalkAllFaults({"Store", false, kLeftToStore}); }
TEST(MessageFaultWalk, Sending) { WalkAllFaults({"Send", false, kLeftToSend}); }
TEST(MessageFaultWalk, StoringAndSending) {
  WalkAllFaults({"Store and send", false, kLeftToStore | kMessageToSend});
}

}  // namespace
}  // namespace celldesk
