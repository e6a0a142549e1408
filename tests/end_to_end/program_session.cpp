#include "end_to_end/program_session.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QPlainTextEdit>
#include <QTest>

#include "support/paths.h"
#include "ui/commands.h"
#include "ui/user_actions.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kRecipient = 1001, kBody = 1003, kRelativeChoice = 1012, kReplyPathCheck = 1015,
              kReportCheck = 1016, kSaveTo = 1053, kAdapter = 1023;

template <typename Control>
Control* Find(const Window& window, int id) {
  auto* control = qobject_cast<Control*>(ControlOf(window, QStringLiteral("control_%1").arg(id)));
  EXPECT_NE(control, nullptr) << id;
  return control;
}

void Pick(const Window& window, int id, int index) {
  auto* list = Find<QComboBox>(window, id);
  ASSERT_NE(list, nullptr);
  QTest::keyClick(list, Qt::Key_Home);
  for (int i = 0; i < index; ++i) QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(list->currentIndex(), index);
}

void Check(const Window& window, int id, bool on) {
  auto* box = Find<QAbstractButton>(window, id);
  if (box != nullptr && box->isChecked() != on) box->click();
}

// As an input method gives it: keys for characters beyond ASCII do not exist everywhere.
void Type(const Window& window, int id, std::u16string_view text) {
  auto* field = Find<QPlainTextEdit>(window, id);
  ASSERT_NE(field, nullptr);
  QInputMethodEvent event;
  event.setCommitString(QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())));
  QCoreApplication::sendEvent(field, &event);
}

}  // namespace

FreshHome::FreshHome() {
  std::filesystem::create_directories(File("run"));
  std::filesystem::permissions(File("run"), std::filesystem::perms::owner_all);
  std::filesystem::create_directories(File("config/celldesk"));
  std::filesystem::copy_file(SourceFolder() + "/tools/lib/first_settings.ini",
                             File("config/celldesk/settings.ini"));
  qputenv("XDG_CONFIG_HOME", File("config").c_str());
  qputenv("XDG_RUNTIME_DIR", File("run").c_str());
}

ProgramSession::ProgramSession() : program_(std::make_unique<Program>(argument_count_, arguments_)) {
  EXPECT_TRUE(program_->application().InitInstance({}, true));
  Pump();
}

ProgramSession::~ProgramSession() {
  Dialog::SetModalHook({});
  program_->application().ExitInstance(0);
}

void ProgramSession::Pump() {
  program_->application().PumpMessages();
  program_->application().IdleLoop();
}

void ProgramSession::Command(int command) {
  frame().Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
  Pump();
}

void ProgramSession::ShowFolder(int index) {
  ClickTab(frame(), index);
  Pump();
}

void ProgramSession::InDialog(int command, const std::function<void(Dialog& dialog)>& work) {
  bool opened = false;
  Dialog::SetModalHook([&](Dialog& dialog) {
    Dialog::SetModalHook({});
    opened = true;
    work(dialog);
    if (dialog.IsVisible()) dialog.EndDialog(kIdCancel);
  });
  Command(command);
  Dialog::SetModalHook({});
  EXPECT_TRUE(opened);
}

void ProgramSession::UseAdapter() {
  InDialog(command::kSettings, [](Dialog& dialog) {
    Check(dialog, kAdapter, true);
    ClickDialogButton(dialog, kIdOk);
  });
}

std::vector<std::string> ProgramSession::Asked() const {
  std::vector<std::string> texts;
  for (const BoxQuestion& question : boxes_.asked()) texts.push_back(ToUtf8(question.text));
  return texts;
}

void ProgramSession::Write(const Writing& writing) {
  InDialog(command::kNew, [&](Dialog& dialog) {
    TypeInto(dialog, kRecipient, QString::fromStdString(writing.number));
    Type(dialog, kBody, writing.text);
    Pick(dialog, kRelativeChoice, writing.validity);
    Check(dialog, kReportCheck, writing.report);
    Check(dialog, kReplyPathCheck, writing.reply_path);
    Pick(dialog, kSaveTo, writing.save_to);
    ClickBarButton(dialog, command::kSend);
    EXPECT_FALSE(dialog.IsVisible());
  });
}

}  // namespace celldesk
