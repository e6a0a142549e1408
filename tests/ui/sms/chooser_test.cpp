#include <QScrollBar>

#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

simulator::PhoneMemory TwoBooks() {
  return PhoneWith({{1, "+447700900101", u"Zoe"}, {5, "0123", u"Ben"}}, 10,
                   {{2, "0456", u"Carla"}, {10, "0789", u"Anna"}}, 20);
}

/// The editor on a new message, with both books loaded.
class ChooserWindow : public SmsWindow {
 public:
  explicit ChooserWindow(bool load = true) : SmsWindow(TwoBooks()) {
    if (!load) return;
    LoadNames();
    ShowFolder(1);
    Load();
    ShowFolder(kInboxTab);
  }
  void Choose(const Work& work, const Work& after) {
    InDialog(command::kNew, [&](Dialog& dialog) {
      TypeText(dialog, editor::kBody, QStringLiteral("typed"));
      InDialog([&] { dialog.Dispatch(Message::kCommand, editor::kBrowse, 0); }, work);
      after(dialog);
    });
  }
};

std::vector<std::string> RowsOf(Dialog& dialog) {
  ListView& list = dialog.List(chooser::kList);
  std::vector<std::string> rows;
  for (int row = 0; row < list.RowCount(); ++row) {
    std::u16string buffer;
    rows.emplace_back();
    for (int column = 0; column < list.ColumnCount(); ++column)
      rows.back() += Utf8(dialog.ColumnText(list.RecordAt(row), column, buffer)) + "|";
  }
  return rows;
}

void Nothing(Dialog& /*dialog*/) {}

TEST(AddressChooser, ListsTheEntriesOfBothBooks) {
  ChooserWindow window;
  window.Choose(
      [](Dialog& dialog) {
        EXPECT_EQ(dialog.template_number(), 209);
        EXPECT_EQ(Utf8(dialog.Title()), "Choose address entry:");
        EXPECT_THAT(RowsOf(dialog), ElementsAre("SM|1|Zoe|+447700900101|", "SM|5|Ben|0123|",
                                                "ME|2|Carla|0456|", "ME|10|Anna|0789|"));
        std::vector<std::string> captions;
        for (int column = 0; column < 4; ++column)
          captions.push_back(HeaderText(dialog.List(chooser::kList), column));
        EXPECT_THAT(captions, ElementsAre("M", "ID", "Name", "Number"));
      },
      Nothing);
}

TEST(AddressChooser, OpensWideEnoughForItsColumns) {
  ChooserWindow window;
  window.Choose(
      [](Dialog& dialog) {
        const QTableView* table = dialog.List(chooser::kList).native()->table;
        EXPECT_GE(table->viewport()->width(), 400);
        EXPECT_FALSE(table->horizontalScrollBar()->isVisible());
      },
      Nothing);
}

TEST(AddressChooser, GivesTheChosenEntryToTheEditor) {
  ChooserWindow window;
  window.Choose(
      [](Dialog& dialog) {
        ClickRow(dialog.List(chooser::kList), 2);
        ClickDialogButton(dialog, kIdOk);
      },
      [](Dialog& dialog) {
        EXPECT_EQ(TextOf(dialog, editor::kRecipient), "Carla");
        EXPECT_EQ(FontName(dialog, editor::kRecipient), "underlined");
        EXPECT_EQ(TextOf(dialog, editor::kBody), "typed");
        dialog.Dispatch(Message::kCommand, command::kSend, 0);
      });
  EXPECT_EQ(window.messages().At(0).submit.number, u"0456");
}

TEST(AddressChooser, EnterAndDoubleClickChoose) {
  ChooserWindow window;
  window.Choose([](Dialog& dialog) { DoubleClickRow(dialog.List(chooser::kList), 1); },
                [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, editor::kRecipient), "Ben"); });
  window.Choose([](Dialog& dialog) { PressKey(dialog.List(chooser::kList), Qt::Key_Return); },
                [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, editor::kRecipient), "Zoe"); });
}

TEST(AddressChooser, CancelLeavesTheRecipient) {
  ChooserWindow window;
  window.Choose([](Dialog& dialog) { PressKey(dialog, Qt::Key_Escape); },
                [](Dialog& dialog) {
                  EXPECT_EQ(TextOf(dialog, editor::kRecipient), "");
                  EXPECT_TRUE(dialog.IsVisible());
                });
}

TEST(AddressChooser, NothingCanBeChosenFromEmptyBooks) {
  ChooserWindow window(false);
  window.Choose(
      [](Dialog& dialog) {
        EXPECT_THAT(RowsOf(dialog), IsEmpty());
        EXPECT_FALSE(dialog.IsEnabled(kIdOk));
        dialog.Dispatch(Message::kCommand, kIdOk, 0);
        EXPECT_TRUE(dialog.IsVisible());
      },
      Nothing);
}

TEST(AddressChooser, OkWaitsForASelection) {
  ChooserWindow window;
  window.Choose(
      [](Dialog& dialog) {
        EXPECT_TRUE(dialog.IsEnabled(kIdOk));
        dialog.List(chooser::kList).ClearSelection();
        EXPECT_FALSE(dialog.IsEnabled(kIdOk));
      },
      Nothing);
}

TEST(AddressChooser, SortsByEveryColumn) {
  ChooserWindow window;
  window.Choose(
      [](Dialog& dialog) {
        ListView& list = dialog.List(chooser::kList);
        const auto order = [&](int column) {
          ClickHeader(list, column);
          std::string text;
          for (const std::string& row : RowsOf(dialog)) text += row.substr(3, row.find('|', 3) - 3) + " ";
          return text;
        };
        EXPECT_EQ(order(1), "1 2 5 10 ");
        EXPECT_EQ(order(2), "10 5 2 1 ");
        EXPECT_EQ(order(3), "1 5 2 10 ");
        EXPECT_EQ(order(0), "2 10 1 5 ");
      },
      Nothing);
}

}  // namespace
}  // namespace celldesk
