#include <mutex>
#include <utility>

#include "ui/sms/pending_messages.h"
#include "ui/window/book_window.h"
#include "ui/window/live_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Asked(const LiveWindow& window) {
  std::vector<std::string> texts;
  for (const BoxQuestion& box : window.boxes.asked()) texts.push_back(Utf8(box.text));
  return texts;
}

TEST(TakenPort, IsNamedAndConnectsOnceItIsFree) {
  LiveWindow window(ThreeEntries());
  FakePortList ports;
  ports.ports = {{u"COM1:", u"Phone", FromUtf8(window.phone.device()), u"phone"}};
  PosixPortOpener other(ports);
  std::unique_ptr<SerialPort> held = other.Open(u"COM1:", nullptr);
  ASSERT_NE(held, nullptr);
  window.Command(command::kConnect);
  EXPECT_FALSE(window.frame().IsConnected());
  EXPECT_FALSE(window.frame().IsBusy());
  EXPECT_THAT(Asked(window), ElementsAre("Cannot open communication port 'COM1:'"));
  held.reset();
  window.Command(command::kConnect);
  EXPECT_TRUE(window.frame().IsConnected());
}

TEST(TakenPort, StaysWithTheProgramThatHasIt) {
  LiveWindow window(ThreeEntries());
  window.Command(command::kConnect);
  ASSERT_TRUE(window.frame().IsConnected());
  FakePortList ports;
  ports.ports = {{u"COM1:", u"Phone", FromUtf8(window.phone.device()), u"phone"}};
  PosixPortOpener other(ports);
  OpenProblem problem = OpenProblem::kNone;
  EXPECT_EQ(other.Open(u"COM1:", &problem), nullptr);
  EXPECT_EQ(problem, OpenProblem::kInUse);
  window.Command(command::kLoadData);
  EXPECT_EQ(window.sim().list().RowCount(), 3);
  EXPECT_THAT(Asked(window), IsEmpty());
}

/// Another program, which asks for the port each time that bytes reach the phone: whenever the window waits
/// for an answer. In the phone's thread.
class OtherProgram {
 public:
  OtherProgram() : opener_(ports_) {}

  simulator::PtyOptions Options() {
    simulator::PtyOptions options;
    options.on_bytes = [this](char direction, const std::string&) {
      if (direction == '>') Ask();
    };
    return options;
  }
  void SetPort(const std::string& device) {
    const std::lock_guard lock(mutex_);
    ports_.ports = {{u"COM1:", u"Phone", FromUtf8(device), u"phone"}};
  }
  void Ask() {
    const std::lock_guard lock(mutex_);
    ++asked_;
    OpenProblem problem = OpenProblem::kNone;
    EXPECT_EQ(opener_.Open(u"COM1:", &problem), nullptr);
    EXPECT_EQ(problem, OpenProblem::kInUse);
  }
  /// How often it asked since the last call.
  int TakeAsked() {
    const std::lock_guard lock(mutex_);
    return std::exchange(asked_, 0);
  }
  bool GetsThePort() { return opener_.Open(u"COM1:", nullptr) != nullptr; }

 private:
  std::mutex mutex_;
  FakePortList ports_;
  PosixPortOpener opener_;
  int asked_ = 0;
};

void ConfirmTheSettings() {
  Dialog::SetModalHook([](Dialog& dialog) { ClickDialogButton(dialog, kIdOk); });
}

// It does not get the port, and disturbs nothing.
TEST(TakenPort, IsKeptThroughEveryProcedure) {
  OtherProgram other;
  simulator::PhoneMemory memory = PhoneWithMessages();
  for (const char* book : {"SM", "ME"})
    memory.FindPhonebook(book)->entries[1] = {"110", simulator::kNational, u"Help"};
  LiveWindow window(std::move(memory), 0, other.Options());
  other.SetPort(window.phone.device());
  window.ports.Add(u"COM2:", u"The same by another name", FromUtf8(window.phone.device()));
  SmsStore& messages = window.frame().inbox().sms().messages();
  const auto run = [&](int folder, int command) {
    window.frame().pages().Select(folder);
    window.Command(command);
    EXPECT_THAT(Asked(window), IsEmpty());
    return other.TakeAsked();
  };

  EXPECT_GT(run(kSimTab, command::kConnect), 0);
  for (const int folder : {kSimTab, kPhoneTab, kInboxTab}) EXPECT_GT(run(folder, command::kLoadData), 0);
  EXPECT_EQ(window.sim().list().RowCount(), 2);
  EXPECT_EQ(window.frame().phone_view().list().RowCount(), 1);
  for (AddressBookView* view : {&window.sim(), &window.frame().phone_view()}) {
    view->book().At(0).flags |= AddressEntry::kModified;
    EXPECT_GT(run(view == &window.sim() ? kSimTab : kPhoneTab, command::kUpload), 0);
    EXPECT_FALSE(view->book().IsModified());
  }
  const int before = messages.count();
  messages.At(0).flags |= kMessageChanged | kMessageToDelete;
  MakePending(messages, u"Both", kLeftToStore | kMessageToSend);
  EXPECT_GT(run(kInboxTab, command::kUpload), 0);
  EXPECT_EQ(messages.count(), before) << "one gone, one stored";
  window.registry.PutString(u"Port", u"COM2:");
  ConfirmTheSettings();
  EXPECT_GT(run(kInboxTab, command::kSettings), 0);
  EXPECT_EQ(Utf8(window.application().link().port_name()), "COM2:");

  window.Once([&] { return window.frame().IsBusy() && window.frame().IsConnected(); }, [&] { other.Ask(); });
  EXPECT_EQ(run(kInboxTab, command::kDisconnect), 1);
  EXPECT_FALSE(window.frame().IsConnected());
  EXPECT_TRUE(other.GetsThePort()) << "free again";
}

TEST(TakenPort, IsNamedWhenTheSettingsChooseIt) {
  LiveWindow window(ThreeEntries());
  simulator::PtyPhone second(simulator::SimulatedPhone{ThreeEntries()});
  ASSERT_TRUE(second.Start());
  window.ports.Add(u"COM2:", u"Another phone", FromUtf8(second.device()));
  PosixPortOpener other(window.ports);
  std::unique_ptr<SerialPort> held = other.Open(u"COM2:", nullptr);
  ASSERT_NE(held, nullptr);
  window.Command(command::kConnect);
  window.registry.PutString(u"Port", u"COM2:");
  ConfirmTheSettings();
  window.Command(command::kSettings);
  EXPECT_THAT(Asked(window), ElementsAre("Cannot open communication port 'COM2:'"));
  EXPECT_FALSE(window.frame().IsConnected());
  EXPECT_NE(other.Open(u"COM1:", nullptr), nullptr) << "the old one is free";
  held.reset();
  window.Command(command::kConnect);
  EXPECT_TRUE(window.frame().IsConnected());
  EXPECT_EQ(Utf8(window.application().link().port_name()), "COM2:");
}

}  // namespace
}  // namespace celldesk
