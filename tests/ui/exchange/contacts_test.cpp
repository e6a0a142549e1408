#include <QApplication>
#include <QEvent>
#include <QProgressBar>
#include <QTableView>
#include <QWidget>
#include <set>

#include "ui/exchange/exchange_window.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

ContactRecord Contact(std::u16string_view surname, std::u16string_view mobile) {
  return {{kContactSurname, std::u16string(surname)}, {kContactMobileNumber, std::u16string(mobile)}};
}

/// Notes the titles that windows get, what a progress window shows each time it is painted, and how often the
/// list is painted meanwhile.
class ScreenWatch : public QObject {
 public:
  explicit ScreenWatch(ListView& list) : list_(list.native()->table->viewport()) {
    qApp->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    Dialog* progress = Application::Get()->modeless_dialog();
    if (event->type() == QEvent::Paint && progress != nullptr) {
      const bool has_begun = !progress->Text(1001).empty();
      if (watched == list_ && has_begun) ++paints;
      NoteProgress(*progress);
    }
    if (event->type() == QEvent::WindowTitleChange && watched->isWidgetType())
      titles.push_back(static_cast<QWidget*>(watched)->windowTitle().toStdString());
    return false;
  }

  std::vector<std::string> titles;
  std::set<std::string> lines;
  std::set<int> percentages;
  std::size_t paints = 0;

 private:
  void NoteProgress(Dialog& progress) {
    lines.insert(Utf8(progress.Text(1001)));
    const int percentage = WidgetOf(&progress)->findChild<QProgressBar*>()->value();
    if (percentage >= 0) percentages.insert(percentage);
  }

  QWidget* list_;
};

TEST(ContactsExport, WritesEveryEntryAsAContact) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  const auto& records = window.MakeContacts();
  ScreenWatch screen(window.sim().list());
  window.Export(export_choice::kContacts);
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0], (ContactRecord{{kContactSurname, u"Anna"},
                                       {kContactMobileNumber, u"+447700900101"},
                                       {kContactFileAs, u"Anna"}}));
  EXPECT_THAT(screen.titles, testing::Contains("Exporting address book..."));
  EXPECT_THAT(screen.lines, testing::Contains("Exporting address book..."));
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
  EXPECT_EQ(window.contacts.open_tables, 0);
}

TEST(ContactsExport, TheBarFollowsThePositionsOfTheBook) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.MakeContacts();
  ScreenWatch screen(window.sim().list());
  window.Export(export_choice::kContacts);
  ASSERT_EQ(window.sim().book().count(), 5);
  EXPECT_THAT(screen.percentages, ElementsAre(0, 25, 50, 75)) << "the last step begins anew";
}

TEST(ContactsImport, AddsToTheBook) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.MakeContacts() = {Contact(u"Dora", u"(0) 555"), Contact(u"Short", u"12")};
  ScreenWatch screen(window.sim().list());
  window.Import(import_choice::kAddContacts);
  EXPECT_THAT(window.SimRows(),
              ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044", "2|Dora |0555"));
  EXPECT_THAT(screen.titles, testing::Contains("Loading address book..."));
  EXPECT_THAT(screen.lines, testing::Contains("Loading address book..."));
  EXPECT_TRUE(window.sim().HasUnsavedChanges());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(ContactsImport, ReplacesTheBook) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.MakeContacts() = {Contact(u"Dora", u"5555"), Contact(u"Emil", u"6666")};
  window.Import(import_choice::kImportContacts);
  EXPECT_THAT(window.SimRows(), ElementsAre("0|Dora |5555", "1|Emil |6666"));
}

TEST(ContactsImport, ContactsWithoutNumbersLeaveAChangedEmptyBook) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.MakeContacts() = {Contact(u"Short", u"12")};
  window.Import(import_choice::kImportContacts);
  EXPECT_THAT(window.SimRows(), IsEmpty());
  EXPECT_TRUE(window.sim().HasUnsavedChanges());
}

TEST(ContactsImport, RepaintsTheListAfterEverySixth) {
  for (const std::size_t count : {5U, 6U}) {
    ExchangeWindow window;
    window.MakeContacts().assign(count, Contact(u"Dora", u"5555"));
    ScreenWatch screen(window.sim().list());
    window.Import(import_choice::kAddContacts);
    EXPECT_EQ(window.SimRows().size(), count);
    EXPECT_EQ(screen.paints, count / 6);
  }
}

TEST(ContactsImport, NothingHappensWithoutADatabase) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  const auto try_all = [&] {
    window.Import(import_choice::kImportContacts);
    window.Import(import_choice::kAddContacts);
    window.Export(export_choice::kContacts);
    EXPECT_EQ(window.SimRows().size(), 3U);
    EXPECT_FALSE(window.sim().HasUnsavedChanges());
    EXPECT_THAT(window.TakeAsked(), IsEmpty());
  };
  try_all();
  window.MakeContacts().push_back(Contact(u"Dora", u"5555"));
  window.contacts.can_open = false;
  try_all();
}

TEST(ContactsImport, NothingHappensWhereTheContactsCannotBeCounted) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.MakeContacts().push_back(Contact(u"Dora", u"5555"));
  window.contacts.can_count = false;
  window.Import(import_choice::kImportContacts);
  EXPECT_EQ(window.SimRows().size(), 3U);
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
}

}  // namespace
}  // namespace celldesk
