#include "ui/exchange/exchange_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

simulator::PhoneMemory TwoBooks() {
  return PhoneWith({{1, "+447700900101", u"Anna"}, {2, "112", u"Bert"}, {4, "0044", u"Carl"}}, 5,
                   {{2, "555", u"Dora"}, {3, "666", u"Emil"}}, 4);
}

TEST(PartnerCopy, AddsTheWholeBookToThePartners) {
  ExchangeWindow window(TwoBooks());
  window.ShowFolder(kPhoneTab);
  window.Load();
  window.ShowFolder(kSimTab);
  window.Load();
  window.Export(export_choice::kBook);
  EXPECT_THAT(window.PhoneRows(),
              ElementsAre("2|Dora|555", "3|Emil|666", "1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044"));
  EXPECT_EQ(window.phone_book().book().count(), 5);
  EXPECT_EQ(window.phone_book().book().At(0).flags, 3U);
  EXPECT_TRUE(window.phone_book().HasUnsavedChanges());
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(PartnerCopy, AddsTheSelectedEntriesOnly) {
  ExchangeWindow window(TwoBooks());
  window.Load();
  window.SelectRows(window.sim(), {0, 2});
  window.Export(export_choice::kBook);
  window.ShowFolder(kPhoneTab);
  EXPECT_THAT(window.PhoneRows(), ElementsAre("1|Anna|+447700900101", "4|Carl|0044"));
}

TEST(PartnerCopy, TakesTheSelectionInTheOrderOfTheList) {
  ExchangeWindow window(TwoBooks());
  window.Load();
  ClickHeader(window.sim().list(), 1);
  ClickHeader(window.sim().list(), 1);
  window.SelectRows(window.sim(), {0, 2});
  window.Export(export_choice::kBook);
  window.ShowFolder(kPhoneTab);
  const auto rows = window.SimRows();
  EXPECT_THAT(window.PhoneRows(), ElementsAre(rows[0], rows[2]));
}

TEST(PartnerCopy, ShowsInAFolderThatIsOpenedLater) {
  ExchangeWindow window(TwoBooks());
  window.Load();
  window.Export(export_choice::kBook);
  EXPECT_FALSE(window.phone_book().IsAttached());
  window.ShowFolder(kPhoneTab);
  EXPECT_EQ(window.PhoneRows(), window.SimRows());
}

TEST(PartnerCopy, AddsThePartnersBookToThisOne) {
  ExchangeWindow window(TwoBooks());
  window.Load();
  window.ShowFolder(kPhoneTab);
  window.Load();
  window.SelectRows(window.phone_book(), {1});
  window.ShowFolder(kSimTab);
  window.Import(import_choice::kAddBook);
  EXPECT_THAT(window.SimRows(),
              ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044", "3|Emil|666"));
  EXPECT_THAT(window.SimFlags(), ElementsAre(1, 1, 3, 1, 0));
}

TEST(PartnerCopy, ReplacesThisBookByThePartners) {
  ExchangeWindow window(TwoBooks());
  window.ShowFolder(kPhoneTab);
  window.Load();
  window.ShowFolder(kSimTab);
  window.Load();
  window.Import(import_choice::kImportBook);
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Dora|555", "3|Emil|666"));
  EXPECT_THAT(window.SimFlags(), ElementsAre(3, 3, 0, 0, 0));
}

TEST(PartnerCopy, AnEmptyPartnerLeavesAChangedEmptyBook) {
  ExchangeWindow window(TwoBooks());
  window.Load();
  window.Import(import_choice::kImportBook);
  EXPECT_THAT(window.SimRows(), IsEmpty());
  EXPECT_TRUE(window.sim().HasUnsavedChanges());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(PartnerCopy, StopsWithAMessageWhenThePartnersBookIsFull) {
  ExchangeWindow window(TwoBooks());
  window.Load();
  ASSERT_EQ(window.phone_book().book().Resize(AddressBook::kLimit), S_OK);
  window.phone_book().book().MarkAll(AddressEntry::kOccupied);
  window.Export(export_choice::kBook);
  EXPECT_THAT(window.LastBox(), IsCommunicationError("There is not enough room for so many entries."));
}

}  // namespace
}  // namespace celldesk
