// What a command replaces or empties is in the backups folder first, as files that the program reads.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/address_book_file.h"
#include "ui/commands.h"
#include "ui/window_session.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::u16string_view kBackups = u"/home/user/.local/share/celldesk/backups";

class CopiesTest : public testing::Test {
 protected:
  CopiesTest() : session_(PhoneWith({{1, "+420777", u"Ann"}, {2, "123", u"Bob"}})) {
    EXPECT_TRUE(session_.Start());
  }
  void Load() {
    session_.Command(command::kConnect);
    session_.Command(command::kLoadData);
  }
  /// Changes what is in the book, so that a copy of it is new.
  void Change() {
    AddressEntry& entry = session_.sim().book().At(0);
    entry.name = std::u16string(entry.name) + u'!';
    entry.flags |= AddressEntry::kModified;
  }
  std::vector<std::string> Copies() {
    std::vector<std::string> names;
    for (const auto& name : session_.files.Names(kBackups)) names.push_back(Utf8(name));
    return names;
  }
  std::string LastCopy() {
    const auto names = session_.files.Names(kBackups);
    return names.empty() ? "(no copy)" : session_.files.files[std::u16string(kBackups) + u'/' + names.back()];
  }

  WindowSession session_;
};

TEST_F(CopiesTest, NothingIsCopiedBeforeThereIsAnything) {
  Load();
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(CopiesTest, LoadDataCopiesWhatItReplaces) {
  Load();
  Change();
  session_.boxes.Answer(kAnswerYes);
  session_.Command(command::kLoadData);
  EXPECT_THAT(Copies(), ElementsAre(EndsWith(" Address-SIM.adr")));
  EXPECT_EQ(LastCopy(), "AddrArchive10;SM;1;50;\r\n1;Ann!;+420777;\r\n2;Bob;123;\r\n");
}

TEST_F(CopiesTest, ARefusedLoadDataCopiesNothing) {
  Load();
  Change();
  session_.boxes.Answer(kAnswerNo);
  session_.Command(command::kLoadData);
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(CopiesTest, UploadCopiesWhatGoesToThePhone) {
  Load();
  Change();
  session_.Command(command::kUpload);
  EXPECT_THAT(LastCopy(), HasSubstr("1;Ann!;+420777;"));
}

TEST_F(CopiesTest, DeleteCopiesWhatWasThere) {
  Load();
  WindowSession::SelectRows(session_.sim(), {1});
  session_.boxes.Answer(kAnswerYes);
  session_.Command(command::kDelete);
  EXPECT_THAT(LastCopy(), HasSubstr("2;Bob;123;"));
}

TEST_F(CopiesTest, DeleteAllCopiesWhatWasThereWhateverTheAnswer) {
  Load();
  session_.boxes.Answer(kAnswerNo);
  session_.Command(command::kDeleteAll);
  EXPECT_THAT(LastCopy(), HasSubstr("2;Bob;123;"));
}

TEST_F(CopiesTest, NewCopiesTheEntriesThatThePhoneHasNoPlaceFor) {
  Load();
  AddressBook& book = session_.sim().book();
  ASSERT_EQ(book.memory().Capacity(), 50);
  AddressEntry& entry = book.At(50);
  entry.id = u"51";
  entry.name = u"Zoe";
  entry.flags = AddressEntry::kOccupied;
  session_.InNextDialog([](Dialog& dialog) { dialog.EndDialog(kIdCancel); });
  session_.Command(command::kNew);
  EXPECT_THAT(LastCopy(), HasSubstr("51;Zoe;"));
}

TEST_F(CopiesTest, LeavingWithUnsavedChangesCopiesThem) {
  Load();
  Change();
  for (const int leaving : {command::kDisconnect, command::kExit}) {
    session_.boxes.Answer(kAnswerYes);
    session_.Command(leaving);
  }
  EXPECT_THAT(LastCopy(), HasSubstr("1;Ann!;+420777;"));
}

TEST_F(CopiesTest, ACopyIsAFileThatTheProgramImports) {
  Load();
  Change();
  session_.Command(command::kUpload);
  AddressBook book(u"SM", true);
  const auto name = session_.files.Names(kBackups).back();
  EXPECT_EQ(ReadAddressBookFile(session_.files, std::u16string(kBackups) + u'/' + name,
                                [&](std::u16string_view) {
                                  return AddressBookTarget{&book, nullptr};
                                }),
            S_OK);
  EXPECT_EQ(book.At(0).name, u"Ann!");
}

TEST_F(CopiesTest, AFailedCopyIsSaidOnceAndStopsNothing) {
  Load();
  Change();
  session_.files.write_error = kErrorDiskFull;
  session_.Command(command::kUpload);
  EXPECT_THAT(Utf8(session_.frame().StatusText()),
              HasSubstr("No safety copy could be made. The disk is full."));
  EXPECT_EQ(session_.phone().memory().FindPhonebook("SM")->entries.at(1).name, u"Ann!");
  Change();
  session_.Command(command::kUpload);
  EXPECT_EQ(Utf8(session_.frame().StatusText()), "Connected to COM1:");
  EXPECT_EQ(session_.phone().memory().FindPhonebook("SM")->entries.at(1).name, u"Ann!!");
}

}  // namespace
}  // namespace celldesk
