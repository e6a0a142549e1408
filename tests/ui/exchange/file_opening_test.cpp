#include "ui/file_opening.h"

#include "ui/exchange/exchange_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileOpening : public testing::Test {
 protected:
  void Open(std::u16string_view path, const std::string& content) {
    window_.files.files[std::u16string(path)] = content;
    Open(path);
  }
  void Open(std::u16string_view path) {
    OpenFile(window_.frame(), window_.files, path);
    window_.Pump();
  }
  int Folder() { return window_.frame().pages().Current(); }
  SmsStore& messages() { return window_.frame().inbox().sms().messages(); }

  ExchangeWindow window_;
};

TEST_F(FileOpening, ShowsTheBookOfTheMemoryThatTheFileNames) {
  Open(u"/home/a.b/phone.adr", "AddrArchive10;ME;1;9;\r\n2;Dora;+420;\r\n");
  EXPECT_EQ(Folder(), kPhoneTab);
  EXPECT_THAT(window_.PhoneRows(), ElementsAre("2|Dora|+420"));
  EXPECT_TRUE(window_.phone_book().HasUnsavedChanges());
  Open(u"sim.adr", "AddrArchive10;SM;1;9;\r\n3;Emil;1;\r\n");
  EXPECT_EQ(Folder(), kSimTab);
  EXPECT_THAT(window_.SimRows(), ElementsAre("3|Emil|1"));
  EXPECT_THAT(window_.TakeAsked(), IsEmpty());
}

TEST_F(FileOpening, AFileWithoutEntriesStillChangesTheBook) {
  Open(u"phone.adr", "AddrArchive10;ME;1;9;\r\n");
  EXPECT_EQ(Folder(), kPhoneTab);
  EXPECT_TRUE(window_.phone_book().HasUnsavedChanges());
  EXPECT_FALSE(window_.sim().HasUnsavedChanges());
}

TEST_F(FileOpening, ShowsTheFolderThatTheFileNames) {
  Open(u"out.sms", "SMSArchive11;Outbox;\r\n+420601000001;See you;\r\n");
  EXPECT_EQ(Folder(), kOutboxTab);
  EXPECT_EQ(window_.frame().outbox().list().RowCount(), 1);
  Open(
      u"in.sms",
      "SMSArchive11;Inbox;\r\n+1;x;23;0;07913366003051F5040B913366304381F900005180719120348004D4F29C0E;\r\n");
  EXPECT_EQ(Folder(), kInboxTab);
  EXPECT_EQ(window_.frame().inbox().list().RowCount(), 1);
  EXPECT_EQ(window_.frame().outbox().list().RowCount(), 1);
}

TEST_F(FileOpening, NewMessagesGetThePresentSettings) {
  window_.frame().inbox().sms().SetOptions(true, true, false, 11);
  Open(u"out.sms", "SMSArchive11;Outbox;\r\n+420601000001;See you;\r\n");
  ASSERT_EQ(messages().count(), 1);
  EXPECT_EQ(messages().At(0).first_octet, 0xB1U);
  EXPECT_EQ(messages().At(0).submit.relative_validity, 11);
}

TEST_F(FileOpening, TakesExtensionsInAnyLetterCase) {
  Open(u"PHONE.ADR", "AddrArchive10;ME;1;9;\r\n2;Dora;+420;\r\n");
  EXPECT_EQ(window_.PhoneRows().size(), 1U);
  Open(u"out.Sms", "SMSArchive11;Outbox;\r\n+420601000001;See you;\r\n");
  EXPECT_EQ(messages().count(), 1);
}

TEST_F(FileOpening, OpensNothingUnderAnotherNameAndSaysNothing) {
  for (const std::u16string_view path :
       {u"", u"adr", u"phone", u"phone.adr.txt", u"phone.adr/sub", u"phone.", u"x.adrs"})
    Open(path, "AddrArchive10;ME;1;9;\r\n2;Dora;+420;\r\n");
  EXPECT_EQ(Folder(), kSimTab);
  EXPECT_EQ(window_.phone_book().book().count(), 0);
  EXPECT_THAT(window_.TakeAsked(), IsEmpty());
}

TEST_F(FileOpening, AMemoryOrFolderThatNobodyHasChangesNothing) {
  Open(u"x.adr", "AddrArchive10;FD;1;9;\r\n2;Dora;+420;\r\n");
  Open(u"x.sms", "SMSArchive11;Drafts;\r\n+420601000001;See you;\r\n");
  EXPECT_EQ(Folder(), kSimTab);
  EXPECT_EQ(window_.sim().book().count(), 0);
  EXPECT_FALSE(window_.sim().HasUnsavedChanges());
  EXPECT_EQ(messages().count(), 0);
  EXPECT_THAT(window_.TakeAsked(), IsEmpty());
}

TEST_F(FileOpening, AFileOfAnotherKindIsTold) {
  Open(u"x.adr", "SMSArchive11;Outbox;\r\n");
  EXPECT_THAT(window_.LastBox(), IsErrorBox("Invalid file format."));
  Open(u"x.sms", "");
  EXPECT_THAT(window_.LastBox(), IsErrorBox("Invalid file format."));
  EXPECT_EQ(window_.boxes.asked().size(), 2U);
  EXPECT_EQ(Folder(), kSimTab);
}

TEST_F(FileOpening, AFileThatIsNotThereIsTold) {
  Open(u"none.adr");
  EXPECT_THAT(window_.LastBox(), IsFileError("none.adr", "The file does not exist."));
  Open(u"none.sms");
  EXPECT_THAT(window_.LastBox(), IsFileError("none.sms", "The file does not exist."));
}

TEST(FileOpeningAtStart, OpensTheFileThatTheProgramIsStartedWith) {
  WindowSession session;
  session.files.files[u"phone.adr"] = "AddrArchive10;ME;1;9;\r\n2;Dora;+420;\r\n";
  ASSERT_TRUE(session.application->InitInstance(u"phone.adr", true));
  EXPECT_EQ(session.frame().pages().Current(), kPhoneTab);
  EXPECT_THAT(WindowSession::Rows(session.phone_book()), ElementsAre("2|Dora|+420"));
}

TEST(FileOpeningAtStart, TheProgramRunsOnWhenTheFileCannotBeOpened) {
  WindowSession session;
  session.files.files[u"bad.sms"] = "nothing";
  ASSERT_TRUE(session.application->InitInstance(u"bad.sms", true));
  ASSERT_EQ(session.boxes.asked().size(), 1U);
  EXPECT_THAT(session.boxes.asked().front(), IsErrorBox("Invalid file format."));
  EXPECT_TRUE(session.frame().IsVisible());
}

}  // namespace
}  // namespace celldesk
