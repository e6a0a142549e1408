#include "ui/import_options.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QTest>

#include "ui/exchange/exchange_window.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

constexpr QSize kSmallestScreen(640, 240);

class ImportOptionsTest : public testing::Test {
 protected:
  /// Runs the dialog over three choices.
  std::optional<int> Choose(const std::function<void(Dialog& dialog)>& work) {
    window_.InNextDialog([work](Dialog& dialog) {
      work(dialog);
      if (dialog.IsVisible()) dialog.EndDialog(kIdCancel);
    });
    return ImportOptions(u"first;sec#;ond;third;").Choose(window_.frame());
  }

  ExchangeWindow window_;
};

TEST_F(ImportOptionsTest, ListsItsChoicesWithTheFirstOneSelected) {
  Choose([](Dialog& dialog) {
    EXPECT_EQ(Utf8(dialog.Title()), "Choose export/import type:");
    EXPECT_THAT(ExchangeWindow::Choices(dialog), ElementsAre("first", "sec;ond", "third"));
    EXPECT_THAT(dialog.List(kChoiceList).SelectedRows(), ElementsAre(0));
    EXPECT_TRUE(dialog.IsEnabled(kIdOk));
    EXPECT_FALSE(dialog.List(kChoiceList).native()->table->horizontalHeader()->isVisible());
  });
}

TEST_F(ImportOptionsTest, OkTakesTheChoice) {
  EXPECT_EQ(Choose([](Dialog& dialog) { ClickDialogButton(dialog, kIdOk); }), 0);
  EXPECT_EQ(Choose([](Dialog& dialog) {
              ClickRow(dialog.List(kChoiceList), 2);
              ClickDialogButton(dialog, kIdOk);
            }),
            2);
}

TEST_F(ImportOptionsTest, ADoubleClickTakesTheChoice) {
  EXPECT_EQ(Choose([](Dialog& dialog) { DoubleClickRow(dialog.List(kChoiceList), 1); }), 1);
}

TEST_F(ImportOptionsTest, TheKeyboardTakesTheChoice) {
  EXPECT_EQ(Choose([](Dialog& dialog) {
              PressKey(dialog, Qt::Key_Down);
              PressKey(dialog, Qt::Key_Down);
              PressKey(dialog, Qt::Key_Up);
              PressKey(dialog, Qt::Key_Return);
            }),
            1);
}

TEST_F(ImportOptionsTest, CancelAndEscapeTakeNone) {
  EXPECT_EQ(Choose([](Dialog& dialog) { ClickDialogButton(dialog, kIdCancel); }), std::nullopt);
  EXPECT_EQ(Choose([](Dialog& dialog) { PressKey(dialog, Qt::Key_Escape); }), std::nullopt);
}

TEST_F(ImportOptionsTest, OkNeedsAChoice) {
  EXPECT_EQ(Choose([](Dialog& dialog) {
              dialog.List(kChoiceList).ClearSelection();
              EXPECT_FALSE(dialog.IsEnabled(kIdOk));
              PressKey(dialog, Qt::Key_Return);
              EXPECT_TRUE(dialog.IsVisible());
            }),
            std::nullopt);
}

TEST_F(ImportOptionsTest, OneChoiceIsSelectedAtATime) {
  Choose([](Dialog& dialog) {
    ClickRow(dialog.List(kChoiceList), 1, Qt::ControlModifier);
    ClickRow(dialog.List(kChoiceList), 2, Qt::ShiftModifier);
    EXPECT_THAT(dialog.List(kChoiceList).SelectedRows(), ElementsAre(2));
  });
}

TEST_F(ImportOptionsTest, FitsTheSmallestScreenWithEveryImport) {
  window_.InOptions(command::kImport, [](Dialog& dialog) {
    QWidget* widget = WidgetOf(&dialog);
    EXPECT_LE(widget->width(), kSmallestScreen.width());
    EXPECT_LE(widget->height(), kSmallestScreen.height());
    widget->resize(kSmallestScreen);
    EXPECT_EQ(widget->size(), kSmallestScreen);
    QCoreApplication::processEvents();
    const QTableView* table = dialog.List(kChoiceList).native()->table;
    const QRect last = table->visualRect(table->model()->index(5, 0));
    EXPECT_TRUE(table->viewport()->rect().contains(last.center()));
    const QString folder = qEnvironmentVariable("CELLDESK_SCREENSHOTS");
    if (folder.isEmpty()) return;
    EXPECT_TRUE(widget->grab().save(folder + QStringLiteral("/import_options.png")));
  });
}

}  // namespace
}  // namespace celldesk
