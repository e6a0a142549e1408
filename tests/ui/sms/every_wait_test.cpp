#include <QAbstractButton>
#include <QTest>
#include <array>
#include <iostream>

#include "ui/framework/application.h"
#include "ui/framework/qt/native.h"
#include "ui/sms/pending_messages.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr milliseconds kTick{50};

constexpr int kEveryCommand[] = {command::kNew,       command::kOpen,           command::kDelete,
                                 command::kDeleteAll, command::kConnect,        command::kSettings,
                                 command::kImport,    command::kExport,         command::kLoadData,
                                 command::kUpload,    command::kReply,          command::kForward,
                                 command::kShowNames, command::kItemAssignment, command::kDisconnect,
                                 command::kSendSms,   command::kConnection,     command::kUploadSelected};

constexpr Qt::Key kEveryKey[] = {Qt::Key_N, Qt::Key_O, Qt::Key_D, Qt::Key_E, Qt::Key_I, Qt::Key_L,
                                 Qt::Key_P, Qt::Key_S, Qt::Key_U, Qt::Key_R, Qt::Key_F};

/// A procedure of the window, with what has to be done before it.
struct Procedure {
  const char* name;
  int folder;
  int command;
  bool connected = true;
  std::uint32_t message = 0;  // flags of a message that waits
  bool entry = false;         // an entry that waits
};

constexpr Procedure kProcedures[] = {
    {"Connect", kSimTab, command::kConnect, false},
    {"Disconnect", kSimTab, command::kDisconnect},
    {"AnotherPortInTheSettings", kSimTab, command::kSettings},
    {"LoadTheSimBook", kSimTab, command::kLoadData},
    {"LoadThePhonesBook", kPhoneTab, command::kLoadData},
    {"LoadMessages", kInboxTab, command::kLoadData},
    {"UploadTheSimBook", kSimTab, command::kUpload, true, 0, true},
    {"UploadThePhonesBook", kPhoneTab, command::kUpload, true, 0, true},
    {"UploadTheSelectionOfThePhonesBook", kPhoneTab, command::kUploadSelected, true, 0, true},
    {"UploadTheSelection", kSimTab, command::kUploadSelected, true, 0, true},
    {"Store", kOutboxTab, command::kUpload, true, kLeftToStore},
    {"Send", kOutboxTab, command::kUpload, true, kLeftToSend},
    {"StoreAndSend", kOutboxTab, command::kUpload, true, kLeftToStore | kMessageToSend},
    {"DeleteInThePhone", kInboxTab, command::kUpload, true,
     kMessageInUse | kMessageChanged | kMessageToDelete},
};

/// The window before the procedure.
class Prepared : public WindowSession {
 public:
  explicit Prepared(const Procedure& procedure) : WindowSession(PhoneWithMessages()), procedure_(procedure) {
    phone().AddLatency(60);  // so that a tick falls into every wait
    port_list.Add(u"COM1:", u"Data cable", u"/dev/ttyUSB0");
    port_list.Add(u"COM2:", u"Modem board", u"/dev/ttyAMA0");
    EXPECT_TRUE(Start());
    if (!procedure.connected) return;
    Command(command::kConnect);
    if (procedure.command == command::kSettings) registry.PutString(u"Port", u"COM2:");
    ShowFolder(procedure.folder);
    if (procedure.entry) PrepareEntry();
    if (procedure.message != 0) PrepareMessage();
    before_ = phone().received_lines().size();
  }

  /// Runs the procedure; `disturb` is called every 50 ms of its waits.
  void Run(std::function<void(int tick)> disturb) {
    running_ = true;
    Dialog::SetModalHook([this](Dialog& dialog) { WorkDialog(dialog); });
    disturb_ = std::move(disturb);
    ScheduleTick();
    Command(procedure_.command);
    running_ = false;
  }
  int ticks() const { return tick_; }
  ListView& ListOf(int folder) {
    const std::array lists = {&sim().list(), &phone_book().list(), &frame().inbox().list(),
                              &frame().outbox().list()};
    return *lists[static_cast<std::size_t>(folder)];
  }
  /// Dialogs that opened although the procedure has none of its own.
  int stray_dialogs() const { return stray_dialogs_; }

  std::vector<std::string> PhoneLines() {
    const auto& all = phone().received_lines();
    return {all.begin() + static_cast<std::ptrdiff_t>(before_), all.end()};
  }
  /// What came of it: the phone's lines, the boxes, and what phone and folders hold.
  std::vector<std::string> Outcome() {
    std::vector<std::string> outcome = PhoneLines();
    for (AddressBookView* view : {&sim(), &phone_book()})
      for (const std::string& row : Rows(*view)) outcome.push_back(row);
    const SmsStore& messages = frame().inbox().sms().messages();
    for (int position = 0; position < messages.count(); ++position)
      outcome.push_back(Utf8(messages.At(position).text) + std::to_string(messages.At(position).flags));
    for (const std::string& asked : TakeAsked()) outcome.push_back(asked);
    outcome.push_back(frame().IsConnected() ? "connected" : "not connected");
    outcome.push_back(Utf8(frame().StatusText()));
    return outcome;
  }

 private:
  void ScheduleTick() {
    waiter.Post(waiter.now() + kTick, [this] {
      if (!running_) return;
      disturb_(++tick_);
      ScheduleTick();
    });
  }
  // Another window has stored another port; OK takes it over.
  void WorkDialog(Dialog& dialog) {
    if (procedure_.command == command::kSettings && !settings_opened_) {
      settings_opened_ = true;
      ClickDialogButton(dialog, kIdOk);
      return;
    }
    ++stray_dialogs_;
    dialog.EndDialog(kIdCancel);
  }
  void PrepareEntry() {
    Command(command::kLoadData);
    AddressBookView& view = procedure_.folder == kSimTab ? sim() : phone_book();
    AddressEntry& entry = view.book().At(0);
    entry.id = u"1";
    entry.name = u"Anne";
    entry.number = u"112";
    entry.flags = AddressEntry::kOccupied | AddressEntry::kModified;
    view.AddItem(0);
    SelectRows(view, {0});
  }
  void PrepareMessage() {
    Command(command::kLoadData);
    SmsStore& messages = frame().inbox().sms().messages();
    if ((procedure_.message & kMessageToDelete) != 0) {
      messages.At(0).flags |= procedure_.message;
    } else {
      MakePending(messages, u"Pending", procedure_.message);
    }
  }

  const Procedure& procedure_;
  std::size_t before_ = 0;
  std::function<void(int)> disturb_;
  bool running_ = false;
  int tick_ = 0;
  bool settings_opened_ = false;
  int stray_dialogs_ = 0;
};

/// What a procedure comes to while nobody touches the window.
struct Course {
  explicit Course(const Procedure& procedure) {
    Prepared clean(procedure);
    clean.Run([](int) {});
    lines = clean.PhoneLines();
    outcome = clean.Outcome();
    memory = clean.phone().memory();
    ticks = clean.ticks();
  }
  std::vector<std::string> lines, outcome;
  simulator::PhoneMemory memory;
  int ticks = 0;
};

class EveryWait : public testing::TestWithParam<Procedure> {};

void GiveEveryCommand(Prepared& window) {
  const MenuState menu = window.frame().Surface().QueryState();
  EXPECT_FALSE(menu.IsEnabled(command::kExit));
  for (const int command : kEveryCommand) {
    EXPECT_FALSE(menu.IsEnabled(command)) << command;
    window.Command(command);
  }
  for (const Qt::Key key : kEveryKey) PressKey(window.frame(), key, Qt::ControlModifier);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete, Qt::Key_Escape}) PressKey(window.frame(), key);
  for (QAbstractButton* button : WidgetOf(&window.frame())->findChildren<QAbstractButton*>()) {
    if (button->isVisible() && button->objectName().startsWith(QStringLiteral("button_")))
      QTest::mouseClick(button, Qt::LeftButton);
  }
  ListView& list = window.ListOf(window.frame().pages().Current());
  for (const Qt::Key key : kEveryKey) PressKey(list, key, Qt::ControlModifier);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete}) PressKey(list, key);
  if (list.RowCount() > 0) DoubleClickRow(list, 0);
}

// Menus, buttons, keys and double clicks at every 50 ms of a procedure: it takes its course as if nobody had
// touched them.
TEST_P(EveryWait, GivesNoCommand) {
  const Course course(GetParam());
  Prepared window(GetParam());
  window.Run([&](int) { GiveEveryCommand(window); });
  EXPECT_EQ(window.stray_dialogs(), 0);
  EXPECT_GT(window.ticks(), 0);
  EXPECT_EQ(window.Outcome(), course.outcome);
  EXPECT_EQ(window.phone().memory(), course.memory);
  std::cout << GetParam().name << ": " << window.ticks() << " waits\n";
}

void LookAtEveryFolder(Prepared& window) {
  const int shown = window.frame().pages().Current();
  for (int folder = kSimTab; folder <= kOutboxTab; ++folder) {
    ClickTab(window.frame(), folder);
    EXPECT_EQ(window.frame().pages().Current(), folder);
    ListView& list = window.ListOf(folder);
    ClickHeader(list, 1);
    if (list.RowCount() > 0) ClickRow(list, list.RowCount() - 1);
    PressKey(list, Qt::Key_Home);
  }
  ClickTab(window.frame(), shown);
  window.Command(command::kAbout);
  PressKey(window.frame(), Qt::Key_F1);
}

// Tabs, headers, rows, About and Help are free at each of them, and change nothing of what the procedure
// does.
TEST_P(EveryWait, LetsTheFoldersBeLookedAt) {
  const Course course(GetParam());
  Prepared window(GetParam());
  window.Run([&](int) { LookAtEveryFolder(window); });
  EXPECT_EQ(window.stray_dialogs(), window.ticks()) << "About, each time";
  EXPECT_EQ(window.shell.opened.size(), static_cast<std::size_t>(window.ticks())) << "Help, each time";
  EXPECT_EQ(window.PhoneLines(), course.lines);
  EXPECT_THAT(window.Outcome(), testing::UnorderedElementsAreArray(course.outcome)) << "rows in any order";
  EXPECT_EQ(window.phone().memory(), course.memory);
}

// A close request, or Exit, at each of them in turn: the procedure ends first, then the program asks, and
// stays on No.
TEST_P(EveryWait, ACloseRequestComesAfterTheProcedure) {
  const Course course(GetParam());
  for (int at = 1; at <= course.ticks; ++at) {
    SCOPED_TRACE(at);
    Prepared window(GetParam());
    window.Run([&](int tick) {
      if (tick != at) return;
      if (at % 2 == 0) {
        window.Command(command::kExit);
      } else {
        WidgetOf(&window.frame())->close();
      }
      EXPECT_TRUE(window.frame().IsVisible());
    });
    EXPECT_EQ(window.phone().memory(), course.memory);
    if (GetParam().command == command::kDisconnect) {
      EXPECT_FALSE(window.frame().IsAttached()) << "nothing is left to ask";
      continue;
    }
    EXPECT_THAT(window.TakeAsked(), ElementsAre(testing::HasSubstr("o you want to exit?")));
    EXPECT_TRUE(window.frame().IsAttached());
    EXPECT_TRUE(window.frame().IsConnected());
    EXPECT_FALSE(window.frame().IsBusy());
  }
}

INSTANTIATE_TEST_SUITE_P(Procedures, EveryWait, testing::ValuesIn(kProcedures),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace celldesk
