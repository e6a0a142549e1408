#include "tour.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <iostream>

#include "ui/framework/message_box.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_text.h"

namespace celldesk {
namespace {

constexpr int kPatience = 20000;

QMessageBox::StandardButton ButtonFor(int answer) {
  switch (answer) {
    case kAnswerYes:
      return QMessageBox::Yes;
    case kAnswerNo:
      return QMessageBox::No;
    case kAnswerCancel:
      return QMessageBox::Cancel;
    default:
      return QMessageBox::Ok;
  }
}

QWidget* ControlOf(Dialog& dialog, int id) {
  for (const char* name : {"control_%1", "button_%1"}) {
    auto* control = WidgetOf(&dialog)->findChild<QWidget*>(QString(name).arg(id));
    if (control != nullptr) return control;
  }
  return nullptr;
}

QPoint PlaceOf(QTableView& table, int row) {
  const QModelIndex cell = table.model()->index(row, 0);
  table.scrollTo(cell);
  return table.visualRect(cell).center();
}

QPalette DarkPalette() {
  QPalette dark(QColor(53, 53, 56), QColor(45, 45, 48));  // frames and edges follow from these
  dark.setColor(QPalette::Window, QColor(45, 45, 48));
  dark.setColor(QPalette::WindowText, Qt::white);
  dark.setColor(QPalette::Base, QColor(30, 30, 32));
  dark.setColor(QPalette::AlternateBase, QColor(45, 45, 48));
  dark.setColor(QPalette::Text, Qt::white);
  dark.setColor(QPalette::PlaceholderText, QColor(160, 160, 160));
  dark.setColor(QPalette::Button, QColor(53, 53, 56));
  dark.setColor(QPalette::ButtonText, Qt::white);
  dark.setColor(QPalette::ToolTipBase, QColor(53, 53, 56));
  dark.setColor(QPalette::ToolTipText, Qt::white);
  dark.setColor(QPalette::Highlight, QColor(31, 138, 112));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(QPalette::Disabled, role, QColor(120, 120, 120));
  }
  return dark;
}

}  // namespace

Tour::Tour(int& argument_count, char** arguments, const QString& folder)
    : folder_(folder), report_((folder + "/report.txt").toStdString()) {
  program_ = std::make_unique<Program>(argument_count, arguments);
}

Tour::~Tour() {
  program_.reset();
  if (phone_.state() != QProcess::NotRunning) {
    phone_.terminate();
    phone_.waitForFinished(kPatience);
  }
}

bool Tour::StartPhone(const QString& program) {
  phone_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  phone_.start(program, {"--filled", "--state", folder_ + "/phone.txt"});
  while (!phone_.canReadLine()) {
    if (!phone_.waitForReadyRead(kPatience)) return false;
  }
  return phone_.readLine().startsWith("/dev/");
}

std::string Tour::PhoneState() {
  QFile state(folder_ + "/phone.txt");
  return state.open(QIODevice::ReadOnly) ? state.readAll().toStdString() : std::string();
}

void Tour::Step(const char* name, const std::function<bool()>& step) {
  const bool passed = step();
  if (!passed) ++failures_;
  const std::string line = std::string(passed ? "[ok] " : "[FAILED] ") + name;
  report_ << line << std::endl;
  std::cout << line << std::endl;
}

MainFrame& Tour::frame() { return *application().frame(); }

void Tour::Click(int command) {
  Settle();
  auto* button = WidgetOf(&frame())->findChild<QToolButton*>(QStringLiteral("button_%1").arg(command));
  if (button != nullptr) QTest::mouseClick(button, Qt::LeftButton);
}

// What the event loop of the program does between two clicks of the user.
void Tour::Settle() {
  QCoreApplication::processEvents();
  application().IdleLoop();
  QCoreApplication::processEvents();
}

void Tour::Choose(int command) {
  Settle();
  frame().Surface().QueryState();
  if (QAction* action = frame().Surface().native()->menu_actions.value(command)) action->trigger();
}

void Tour::ClickIn(Dialog& dialog, int id) {
  QWidget* control = ControlOf(dialog, id);
  if (auto* button = qobject_cast<QAbstractButton*>(control)) button->click();
}

void Tour::TypeIn(Dialog& dialog, int id, std::u16string_view text) {
  QWidget* field = ControlOf(dialog, id);
  if (field == nullptr) return;
  field->setFocus();
  if (auto* memo = qobject_cast<QPlainTextEdit*>(field)) memo->moveCursor(QTextCursor::End);
  QTest::keyClicks(field, ToQt(text));
}

void Tour::PickIn(Dialog& dialog, int id, int choice) {
  auto* list = qobject_cast<QComboBox*>(ControlOf(dialog, id));
  if (list == nullptr) return;
  QTest::keyClick(list, Qt::Key_Home);
  for (int i = 0; i < choice; ++i) QTest::keyClick(list, Qt::Key_Down);
}

void Tour::ClickRow(ListView& list, int row) {
  QTableView& table = *list.native()->table;
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, PlaceOf(table, row));
  Settle();
}

void Tour::DoubleClickRow(ListView& list, int row) {
  ClickRow(list, row);
  QTableView& table = *list.native()->table;
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, PlaceOf(table, row));
}

// Off-screen a window need not be active again when its dialog has gone; its focus is where it was.
void Tour::PressKey(int key, Qt::KeyboardModifiers modifiers) {
  QWidget* target = QApplication::focusWidget();
  if (target == nullptr) target = WidgetOf(&frame())->focusWidget();
  if (target == nullptr) target = WidgetOf(&frame());
  QTest::keyClick(target, static_cast<Qt::Key>(key), modifiers);
}

void Tour::ShowFolder(int index) {
  auto* tabs = WidgetOf(&frame())->findChild<QTabBar*>();
  QTest::mouseClick(tabs, Qt::LeftButton, Qt::NoModifier, tabs->tabRect(index).center());
  QCoreApplication::processEvents();
}

void Tour::ExpectBox(const QString& text, int answer, const QString& picture) {
  ++open_expectations_;
  auto* watch = new QTimer(qApp);
  watch->setInterval(10);
  QObject::connect(watch, &QTimer::timeout, qApp, [this, watch, text, answer, picture] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    watch->deleteLater();
    watch->stop();
    if (box->text().contains(text)) --open_expectations_;
    if (!picture.isEmpty()) Picture(picture, *box);
    QAbstractButton* button = box->button(ButtonFor(answer));
    if (button == nullptr) button = box->buttons().constFirst();
    button->click();
  });
  watch->start();
}

void Tour::InNextDialog(std::function<void(Dialog&)> work) {
  Dialog::SetModalHook([work = std::move(work)](Dialog& dialog) {
    const auto now = work;
    Dialog::SetModalHook({});
    const auto is_active = [&dialog] { return QApplication::activeWindow() == WidgetOf(&dialog); };
    if (QTest::qWaitFor(is_active, kPatience)) now(dialog);
  });
}

bool Tour::WaitUntil(const std::function<bool()>& condition, int patience) {
  return QTest::qWaitFor(condition, patience);
}

bool Tour::Picture(const QString& name) {
  Settle();
  QWidget* top = QApplication::activeModalWidget();
  return Picture(name, top == nullptr ? *WidgetOf(&frame()) : *top);
}

bool Tour::Picture(const QString& name, QWidget& window) {
  const bool saved = window.isVisible() && window.grab().save(folder_ + "/" + name + ".png");
  if (!saved) Step(("The picture " + name + " is taken").toUtf8().constData(), [] { return false; });
  return saved;
}

void Tour::Resize(int width, int height) {
  WidgetOf(&frame())->resize(width, height);
  QCoreApplication::processEvents();
}

void Tour::SetDark(bool dark) {
  QApplication::setPalette(dark ? DarkPalette() : QPalette());
  QCoreApplication::processEvents();
}

}  // namespace celldesk
