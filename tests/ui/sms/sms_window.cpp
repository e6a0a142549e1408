#include "ui/sms/sms_window.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QPlainTextEdit>
#include <QTest>

#include "ui/framework/qt/native.h"

namespace celldesk {

SmsWindow::SmsWindow(simulator::PhoneMemory memory, simulator::Profile profile)
    : WindowSession(std::move(memory), std::move(profile)) {
  if (!Start()) return;
  Command(command::kConnect);
  ShowFolder(kInboxTab);
  TakeAsked();
  TakePhoneLines();
}

void SmsWindow::LoadNames() {
  const int shown = frame().pages().Current();
  ShowFolder(kSimTab);
  Load();
  ShowFolder(shown);
  TakePhoneLines();
}

void SmsWindow::CommandAnswering(int command, int answer) {
  boxes.Answer(answer);
  Command(command);
}

void SmsWindow::Select(SmsFolderView& folder, const std::vector<int>& rows) {
  folder.list().ClearSelection();
  for (const int row : rows) folder.list().Select(row, true);
  Pump();
}

std::string SmsWindow::Cell(SmsFolderView& folder, int row, int column) {
  std::u16string buffer;
  return Utf8(folder.ColumnText(folder.list().RecordAt(row), column, buffer));
}

std::vector<std::string> SmsWindow::Rows(SmsFolderView& folder) {
  std::vector<std::string> rows;
  for (int row = 0; row < folder.list().RowCount(); ++row) {
    rows.push_back(Cell(folder, row, 0));
    for (int column = 1; column < 4; ++column) rows.back() += "|" + Cell(folder, row, column);
  }
  return rows;
}

std::vector<std::string> SmsWindow::Column(SmsFolderView& folder, int column) {
  std::vector<std::string> cells;
  for (int row = 0; row < folder.list().RowCount(); ++row) cells.push_back(Cell(folder, row, column));
  return cells;
}

void SmsWindow::InDialog(int command, const Work& work) {
  InDialog([this, command] { Command(command); }, work);
}

void SmsWindow::InDialog(const std::function<void()>& action, const Work& work) {
  bool opened = false;
  InNextDialog([&](Dialog& dialog) {
    opened = true;
    work(dialog);
    if (dialog.IsVisible()) dialog.EndDialog(kIdCancel);
  });
  action();
  Dialog::SetModalHook({});
  EXPECT_TRUE(opened) << "no dialog was opened";
}

std::vector<std::string> SmsWindow::TakePhoneLines() {
  const auto& all = phone().received_lines();
  std::vector<std::string> lines(all.begin() + static_cast<std::ptrdiff_t>(lines_seen_), all.end());
  lines_seen_ = all.size();
  return lines;
}

std::vector<std::string> SmsWindow::SentBodies() {
  std::vector<std::string> bodies;
  for (const simulator::SentMessage& sent : phone().memory().sent) bodies.push_back(sent.body);
  return bodies;
}

void PickChoice(const Window& window, int id, int index) {
  auto* list = dynamic_cast<QComboBox*>(ControlOf(window, QStringLiteral("control_%1").arg(id)));
  ASSERT_NE(list, nullptr);
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Home);
  for (int i = 0; i < index; ++i) QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(list->currentIndex(), index);
}

void TypeText(const Window& window, int id, const QString& text) {
  QWidget* field = ControlOf(window, QStringLiteral("control_%1").arg(id));
  ASSERT_NE(field, nullptr);
  field->setFocus();
  if (auto* memo = qobject_cast<QPlainTextEdit*>(field)) memo->moveCursor(QTextCursor::End);
  for (const QChar character : text) {
    if (character.unicode() < 0x80) {
      QTest::keyClick(field, character.toLatin1());
    } else {
      QInputMethodEvent event;
      event.setCommitString(character);
      QCoreApplication::sendEvent(field, &event);
    }
  }
}

void ClickSwitch(const Window& window, int id) {
  auto* button = dynamic_cast<QAbstractButton*>(ControlOf(window, QStringLiteral("control_%1").arg(id)));
  ASSERT_NE(button, nullptr);
  button->click();
}

std::string FontName(const Window& window, int id) {
  const QFont font = ControlOf(window, QStringLiteral("control_%1").arg(id))->font();
  EXPECT_EQ(font.pixelSize(), 18);
  if (font.strikeOut()) return "struck";
  return font.underline() ? "underlined" : "plain";
}

void Photograph(const Window& window, const QString& name) {
  const QString folder = qEnvironmentVariable("CELLDESK_SCREENSHOTS");
  QWidget* widget = WidgetOf(&window);
  if (folder.isEmpty() || widget == nullptr) return;
  QCoreApplication::processEvents();
  EXPECT_TRUE(widget->grab().save(folder + u'/' + name + QStringLiteral(".png")));
}

std::string TextOf(const Dialog& dialog, int id) { return Utf8(dialog.Text(id)); }

}  // namespace celldesk
