// The window on a simulated phone, with the machine's own threads and serial line, over and over: connect,
// load all, edit, upload and send, disconnect, and one fault at random in each round. CELLDESK_SOAK_MINUTES
// and CELLDESK_SOAK_SEED say for how long and which faults.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>

#include "ui/commands.h"
#include "ui/sms/pending_messages.h"
#include "ui/window/live_window.h"

// The sanitizer's count of what is allocated; what it keeps for itself grows for a long time.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace celldesk {
namespace {

using testing::IsSupersetOf;

constexpr int kRounds = 2;        // where no minutes are given
constexpr int kWarmUp = 5;        // rounds after which memory is measured; of few, after the first
constexpr std::size_t kKept = 3;  // messages of earlier rounds that stay in the phone
// Megabytes, from the warm-up to the end. Random bytes in a row load a font that has them, once: 0.1 to 0.3.
constexpr double kLargestGrowth = 0.5;

/// The first ones change nothing of what a command comes to.
constexpr std::size_t kHarmless = 5;
constexpr std::array kFaults = {
    "unsolicited",   "unsolicited:RING", "duplicate-line", "split:3",   "delay:1000",  "error",
    "cms-error:321", "cme-error:10",     "silence",        "half-line", "noise",       "wrong-index",
    "late",          "delay:9000",       "hang-up",        "hang-up:3", "hang-up-back"};

using Steps = std::vector<std::string>;
const Steps kConnectSteps = {"ATZE0V1",     "AT+CPBS=?#1", "AT+CPBS=\"SM\"",
                             "AT+CPBR=?#2", "AT+CPMS=?",   "AT+CMGW=?"};
const Steps kLoadSteps = {"AT+CPBS=\"SM\"#2", "AT+CPBR=?#1", "AT+CPBR=1,#1",     "AT+CPBR=21,#2",
                          "AT+CPMS=#1",       "AT+CMGL#1",   "AT+CPBS=\"ME\"#1", "AT+CMGL#2"};
const Steps kUploadSteps = {"AT+CPBS=\"SM\"#2", "AT+CPBS=\"ME\"#1", "AT+CPBW#1", "AT+CPBW#2", "AT+CPMS=#1",
                            "AT+CMGD#1",        "AT+CMGW#1",        "PDU#1",     "AT+CMGS",   "PDU#2"};

long Number(const char* name, long otherwise) {
  const char* text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtol(text, nullptr, 10);
}

std::size_t OpenDescriptors() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
}

/// Megabytes: allocated under the sanitizer, else in memory.
double MemoryInUse() {
  if (__sanitizer_get_current_allocated_bytes != nullptr) {
    return static_cast<double>(__sanitizer_get_current_allocated_bytes()) / 1e6;
  }
  std::ifstream statm("/proc/self/statm");
  double size = 0, resident = 0;
  statm >> size >> resident;
  return resident * 4096 / 1e6;
}

simulator::PhoneMemory FilledPhone() {
  simulator::PhoneMemory memory = PhoneWithMessages();
  for (const char* name : {"SM", "ME"}) {
    simulator::Phonebook& book = *memory.FindPhonebook(name);
    book.last = 45;
    for (const int location : {1, 2, 20, 21, 40, 45})
      book.entries[location] = {"0770" + std::to_string(location), simulator::kNational, u"Entry"};
  }
  return memory;
}

class Soak {
 public:
  explicit Soak(unsigned seed) : window_(FilledPhone()), random_(seed) {
    initial_numbers_ = Numbers();
    initial_messages_ = Messages();
  }

  void Round() {
    ++round_;
    const Steps& faulty = *std::array{&kConnectSteps, &kLoadSteps, &kUploadSteps}[random_() % 3];
    if (&faulty == &kConnectSteps) {
      Arm(faulty);
      Command(command::kConnect);
      Recover();
    }
    ConnectWell();
    if (&faulty == &kLoadSteps) {
      Arm(faulty);
      LoadAll();
      Recover();
      ConnectWell();
    }
    LoadAll();
    ExpectAgreement();
    Edit();
    const bool harmed = &faulty == &kUploadSteps && Arm(faulty);
    const std::size_t stored = Messages().size();
    UploadAll();
    EXPECT_LE(Messages().size(), stored + 1) << "stored once at most";
    if (!harmed) ExpectAllUploaded();
    EXPECT_LE(TimesSent(), 1) << "nobody was asked";
    Recover();
    // As the program's own loop does, which does not run here.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Numbers(), initial_numbers_) << "no entry moved, came or went";
    EXPECT_THAT(Messages(), IsSupersetOf(initial_messages_)) << "nothing went that was not deleted";
  }

  /// What the program shows after a reading is what the phone holds.
  void CheckTheEnd() {
    ConnectWell();
    LoadAll();
    ExpectAgreement();
    Command(command::kDisconnect);
  }
  int rounds() const { return round_; }

 private:
  /// A fault at one of these steps. Whether it may do harm.
  bool Arm(const Steps& steps) {
    const std::string& step = steps[random_() % steps.size()];
    const std::size_t kind = random_() % kFaults.size();
    const std::string fault = step + ":" + kFaults[kind];
    std::cout << "round " << round_ << ": " << fault << std::endl;
    window_.phone.ChangePhone([&](simulator::SimulatedPhone& phone) {
      EXPECT_TRUE(phone.AddFault(fault));
      return std::vector<simulator::Emission>();
    });
    return kind >= kHarmless;
  }

  void Command(int command) {
    MessageBoxScript skip;  // No to a question about a failed message: go on with the next
    window_.Command(command);
    EXPECT_FALSE(window_.frame().IsBusy());
  }

  /// The phone is well again, and everything of this round's line is forgotten.
  void Recover() {
    window_.phone.ChangePhone([](simulator::SimulatedPhone& phone) {
      phone.ClearFaults();
      phone.ForgetReceived();
      phone.memory().sent.clear();
      return std::vector<simulator::Emission>();
    });
    MessageBoxScript yes;
    for (int i = 0; i < 4; ++i) yes.Answer(kAnswerYes);
    window_.Command(command::kDisconnect);
    EXPECT_FALSE(window_.frame().IsConnected());
    window_.FollowPhone();
  }

  void ConnectWell() {
    Command(command::kConnect);
    EXPECT_TRUE(window_.frame().IsConnected());
  }

  void LoadAll() {
    for (int folder = 0; folder < 3; ++folder) {
      window_.frame().pages().Select(folder);
      MessageBoxScript yes;
      for (int i = 0; i < 4; ++i) yes.Answer(kAnswerYes);
      window_.Command(command::kLoadData);
    }
  }

  void UploadAll() {
    for (int folder = 0; folder < 3; ++folder) {
      window_.frame().pages().Select(folder);
      Command(command::kUpload);
    }
  }

  SmsStore& messages() { return window_.frame().inbox().sms().messages(); }

  void Edit() {
    for (AddressBookView* view : {&window_.sim(), &window_.frame().phone_view()}) {
      const int position = std::vector{0, 1, 19, 44}[random_() % 4];
      AddressEntry& entry = view->book().At(position);
      entry.name = u"Name " + std::u16string(1 + random_() % 8, u'x');
      entry.flags |= AddressEntry::kModified;
    }
    DeleteOldMessages();
    MakePending(messages(), u"Soak", kLeftToStore);
    const std::u16string text = FromUtf8(std::to_string(round_)) + u" rounds";
    to_send_ = Utf8(MakePending(messages(), text, kLeftToSend).pdu_text);
  }

  void DeleteOldMessages() {
    std::size_t left = 0;
    for (int position = messages().count() - 1; position >= 0; --position) {
      SmsMessage& message = messages().At(position);
      if (message.text == u"Soak" && ++left > kKept) message.flags |= kMessageChanged | kMessageToDelete;
    }
  }

  simulator::PhoneMemory Memory() {
    simulator::PhoneMemory memory;
    window_.phone.ChangePhone([&](simulator::SimulatedPhone& phone) {
      memory = phone.memory();
      return std::vector<simulator::Emission>();
    });
    return memory;
  }
  /// "memory location number" of both books.
  std::vector<std::string> Numbers() {
    std::vector<std::string> all;
    const simulator::PhoneMemory memory = Memory();
    for (const simulator::Phonebook& book : memory.phonebooks) {
      for (const auto& [location, entry] : book.entries)
        all.push_back(book.name + " " + std::to_string(location) + " " + entry.number);
    }
    return all;
  }
  /// "memory index PDU" of every message.
  std::vector<std::string> Messages() {
    std::vector<std::string> all;
    const simulator::PhoneMemory memory = Memory();
    for (const simulator::MessageStore& store : memory.stores) {
      for (const auto& [index, message] : store.messages)
        all.push_back(store.name + " " + std::to_string(index) + " " + message.pdu);
    }
    return all;
  }

  /// How often the network saw this round's message.
  long TimesSent() {
    const simulator::PhoneMemory memory = Memory();
    return std::count_if(memory.sent.begin(), memory.sent.end(),
                         [this](const auto& sent) { return sent.body.ends_with(to_send_); });
  }

  void ExpectAllUploaded() {
    EXPECT_FALSE(window_.sim().book().IsModified());
    EXPECT_FALSE(window_.frame().phone_view().book().IsModified());
    for (int position = 0; position < messages().count(); ++position)
      EXPECT_EQ(messages().At(position).flags & kMessageChanged, 0U);
    EXPECT_EQ(TimesSent(), 1);
    ExpectAgreement();
  }

  void ExpectAgreement() {
    const simulator::PhoneMemory memory = Memory();
    ExpectBook(window_.sim(), memory, "SM");
    ExpectBook(window_.frame().phone_view(), memory, "ME");
    std::vector<std::string> shown;
    for (int position = 0; position < messages().count(); ++position) {
      const SmsMessage& message = messages().At(position);
      shown.push_back(Utf8(kMessageMemories[static_cast<std::size_t>(message.memory)]) + " " +
                      std::to_string(message.memory_index) + " " + Utf8(message.pdu_text));
    }
    EXPECT_EQ(shown, Messages());
  }

  static void ExpectBook(AddressBookView& view, const simulator::PhoneMemory& memory, const char* name) {
    std::vector<std::string> rows;
    for (const auto& [location, entry] : memory.FindPhonebook(name)->entries)
      rows.push_back(std::to_string(location) + "|" + Utf8(entry.name) + "|" + entry.number);
    EXPECT_EQ(WindowSession::Rows(view), rows);
  }

  LiveWindow window_;
  std::mt19937 random_;
  int round_ = 0;
  std::vector<std::string> initial_numbers_;
  std::vector<std::string> initial_messages_;
  std::string to_send_;  // the PDU of this round's message
};

TEST(Soak, MemoryAndDescriptorsStayFlatAndPhoneAndProgramAgree) {
  using Clock = std::chrono::steady_clock;
  const auto minutes = std::chrono::minutes(Number("CELLDESK_SOAK_MINUTES", 0));
  const auto seed = static_cast<unsigned>(Number("CELLDESK_SOAK_SEED", 1));
  const Clock::time_point end = Clock::now() + minutes;
  Soak soak(seed);
  const int warm_up = minutes.count() == 0 ? 1 : kWarmUp;
  double memory = 0;
  std::size_t descriptors = 0;
  while (soak.rounds() < kRounds || Clock::now() < end) {
    soak.Round();
    if (soak.rounds() == 1) descriptors = OpenDescriptors();
    if (soak.rounds() <= warm_up) memory = MemoryInUse();
    std::cout << "  " << MemoryInUse() << " MB" << std::endl;
    EXPECT_EQ(OpenDescriptors(), descriptors) << "round " << soak.rounds();
  }
  soak.CheckTheEnd();
  std::cout << "seed " << seed << ", " << soak.rounds() << " rounds, " << memory << " MB after the warm-up, "
            << MemoryInUse() << " MB at the end, " << descriptors << " descriptors\n";
  EXPECT_LT(MemoryInUse() - memory, kLargestGrowth);
}

}  // namespace
}  // namespace celldesk
