#include "ui/settings/settings_window.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

namespace celldesk {
namespace {

QString NameOf(int id) { return QStringLiteral("control_%1").arg(id); }

QComboBox* ListOf(const Dialog& dialog, int id) {
  return dynamic_cast<QComboBox*>(ControlOf(dialog, NameOf(id)));
}

}  // namespace

SettingsWindow::SettingsWindow() {
  port_list.Add(u"COM1:", u"Data cable", u"/dev/ttyUSB0");
  port_list.Add(u"COM2:", u"Modem board", u"/dev/ttyAMA0");
  EXPECT_TRUE(Start());
}

void SettingsWindow::Edit(const Work& work, int end) {
  bool opened = false;
  InNextDialog([&](Dialog& dialog) {
    opened = true;
    work(dynamic_cast<SettingsDialog&>(dialog));
    ClickDialogButton(dialog, end);
  });
  Command(command::kSettings);
  Dialog::SetModalHook({});
  EXPECT_TRUE(opened) << "the settings do not open";
}

void SettingsWindow::EditPort(SettingsDialog& settings, const std::function<void(PortDialog& dialog)>& work,
                              int end) {
  bool opened = false;
  InNextDialog([&](Dialog& dialog) {
    opened = true;
    work(dynamic_cast<PortDialog&>(dialog));
    ClickDialogButton(dialog, end);
  });
  ClickDialogButton(settings.general(), GeneralPage::kPortSettings);
  Dialog::SetModalHook({});
  EXPECT_TRUE(opened) << "the port dialog does not open";
}

void Pick(Dialog& dialog, int id, const std::string& text) {
  QComboBox* list = ListOf(dialog, id);
  ASSERT_NE(list, nullptr);
  const int index = list->findText(QString::fromStdString(text));
  ASSERT_GE(index, 0) << "no choice " << text;
  list->showPopup();
  list->view()->setCurrentIndex(list->model()->index(index, 0));
  QTest::keyClick(list->view(), Qt::Key_Return);
  EXPECT_EQ(list->currentText().toStdString(), text);
}

std::vector<std::string> Choices(const Dialog& dialog, int id) {
  std::vector<std::string> texts;
  for (int i = 0; i < dialog.ChoiceCount(id); ++i) texts.push_back(Utf8(dialog.ChoiceText(id, i)));
  return texts;
}

std::string TextOf(const Dialog& dialog, int id) { return Utf8(dialog.Text(id)); }

void PickOperator(SettingsDialog& dialog, const std::string& country, const std::string& name) {
  ClickTab(dialog, kOperatorTab);
  Pick(dialog.operators(), OperatorPage::kCountry, country);
  Pick(dialog.operators(), OperatorPage::kOperator, name);
}

void ClickSwitch(Dialog& dialog, int id) {
  auto* button = dynamic_cast<QAbstractButton*>(ControlOf(dialog, NameOf(id)));
  ASSERT_NE(button, nullptr);
  button->click();
}

void TypeIntoList(Dialog& dialog, int id, const QString& text) {
  QComboBox* list = ListOf(dialog, id);
  ASSERT_NE(list, nullptr);
  ASSERT_TRUE(list->isEditable());
  list->lineEdit()->selectAll();
  QTest::keyClicks(list, text);
}

}  // namespace celldesk
