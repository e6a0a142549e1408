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

// Another program that asks for the port at any wait of a procedure does not get it, and disturbs nothing.
TEST(TakenPort, IsKeptThroughEveryProcedure) {
  LiveWindow window(ThreeEntries());
  FakePortList ports;
  ports.ports = {{u"COM1:", u"Phone", FromUtf8(window.phone.device()), u"phone"}};
  PosixPortOpener other(ports);
  for (const int command : {command::kConnect, command::kLoadData, command::kUpload, command::kDisconnect}) {
    SCOPED_TRACE(command);
    if (command == command::kUpload) window.sim().book().At(0).flags |= AddressEntry::kModified;
    OpenProblem problem = OpenProblem::kNone;
    bool asked = false;
    const auto held = [&] { return window.frame().IsBusy() && window.frame().IsConnected(); };
    window.Once(held, [&] {
      asked = true;
      EXPECT_EQ(other.Open(u"COM1:", &problem), nullptr);
    });
    window.Command(command);
    EXPECT_TRUE(asked);
    EXPECT_EQ(problem, OpenProblem::kInUse);
    EXPECT_THAT(Asked(window), IsEmpty());
  }
  EXPECT_EQ(window.sim().list().RowCount(), 3);
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_FALSE(window.frame().IsConnected());
  EXPECT_NE(other.Open(u"COM1:", nullptr), nullptr) << "free again";
}

}  // namespace
}  // namespace celldesk
