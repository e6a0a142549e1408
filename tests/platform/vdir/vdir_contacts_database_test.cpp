#include "platform/vdir/vdir_contacts_database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "platform/contacts_database_contract.h"
#include "platform/posix/posix_file.h"
#include "platform/posix/posix_file_adder.h"
#include "platform/vdir/vcards.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class FolderContacts {
 public:
  ContactsDatabase& database() { return database_; }
  std::u16string name() const { return FromUtf8(folder_.path().string()); }
  std::u16string missing_name() const { return name() + u"/missing"; }

 private:
  TemporaryFolder folder_;
  PosixFileSystem files_;
  PosixFileAdder adder_;
  VdirContactsDatabase database_{files_, adder_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Vdir, ContactsDatabaseContract, FolderContacts);

class VdirContactsDatabaseTest : public testing::Test {
 protected:
  static constexpr std::array<ContactPropertyId, 1> kSurname = {kContactSurname};

  std::u16string Name() const { return FromUtf8(folder_.path().string()); }
  std::unique_ptr<ContactsTable> Open() {
    auto table = database_.Open(Name());
    EXPECT_NE(table, nullptr);
    return table;
  }
  void WritePerson(const std::string& file, const std::string& surname) {
    folder_.Write(file, Vcard("N:" + surname + "\r\n"));
  }
  std::vector<std::string> Surnames(ContactsTable& table) {
    std::vector<std::string> surnames;
    while (const auto record = table.ReadNext(kSurname))
      surnames.push_back(ToUtf8((*record)[0].text.value_or(u"-")));
    return surnames;
  }
  std::vector<std::string> Surnames() { return Surnames(*Open()); }
  std::string Content(const fs::path& file) const {
    std::ifstream stream(folder_.path() / file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  std::vector<std::string> FileNames() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }

  const ContactRecord person_ = {{kContactSurname, u"Smith"}};
  const TemporaryFolder folder_;
  PosixFileSystem files_;
  PosixFileAdder adder_;
  VdirContactsDatabase database_{files_, adder_};
};

TEST_F(VdirContactsDatabaseTest, ReadsTheFilesInTheOrderOfTheirNames) {
  WritePerson("b.vcf", "Bee");
  WritePerson("a.vcf", "Ant");
  WritePerson("B.vcf", "Bear");
  EXPECT_THAT(Surnames(), ElementsAre("Bear", "Ant", "Bee"));
}

TEST_F(VdirContactsDatabaseTest, ANewFileIsNamedAfterItsUid) {
  VdirContactsDatabase database(files_, adder_, [] { return std::string("the-uid"); });
  ASSERT_EQ(database.Open(Name())->Append(person_), S_OK);
  EXPECT_THAT(FileNames(), ElementsAre("the-uid.vcf"));
  EXPECT_THAT(Content("the-uid.vcf"), testing::HasSubstr("\r\nUID:the-uid\r\n"));
  EXPECT_THAT(Content("the-uid.vcf"), testing::EndsWith("\r\nEND:VCARD\r\n"));
}

TEST_F(VdirContactsDatabaseTest, AUidThatIsTakenIsReplacedByAnother) {
  WritePerson("1.vcf", "Other");
  const std::string before = Content("1.vcf");
  int uid = 0;
  VdirContactsDatabase database(files_, adder_, [&uid] { return std::to_string(++uid); });
  EXPECT_EQ(database.Open(Name())->Append(person_), S_OK);
  EXPECT_EQ(Content("1.vcf"), before);
  EXPECT_THAT(Surnames(), ElementsAre("Other", "Smith"));
}

TEST_F(VdirContactsDatabaseTest, WithoutANewUidNothingIsWritten) {
  WritePerson("1.vcf", "Other");
  VdirContactsDatabase same(files_, adder_, [] { return std::string("1"); });
  EXPECT_EQ(same.Open(Name())->Append(person_), StatusFromSystemError(kErrorFileExists));
  VdirContactsDatabase none(files_, adder_, [] { return std::string(); });
  EXPECT_EQ(none.Open(Name())->Append(person_), E_FAIL);
  EXPECT_THAT(FileNames(), ElementsAre("1.vcf"));
}

TEST_F(VdirContactsDatabaseTest, FilesOfOtherProgramsAreNeverChanged) {
  const std::string foreign = Vcard("N:Smith\nX-OTHER;X=1:kept\nPHOTO;ENCODING=b:AAAA\n", "4.0");
  folder_.Write("other.vcf", foreign);
  folder_.Write("notes.txt", "kept");
  const auto time = fs::last_write_time(folder_.path() / "other.vcf");
  const auto table = Open();
  EXPECT_THAT(Surnames(*table), ElementsAre("Smith"));
  EXPECT_EQ(table->Append(person_), S_OK);
  EXPECT_EQ(Content("other.vcf"), foreign);
  EXPECT_EQ(fs::last_write_time(folder_.path() / "other.vcf"), time);
  EXPECT_EQ(Content("notes.txt"), "kept");
}

TEST_F(VdirContactsDatabaseTest, FilesWithoutAVcardArePassedOver) {
  WritePerson("a.vcf", "Ant");
  folder_.Write("b.vcf", "");
  folder_.Write("c.vcf", "hello");
  folder_.Write("d.vcf", "BEGIN:VCARD\nN:Cut\n");
  folder_.Write("e.vcf", std::string(100'000, '\0'));
  WritePerson("f.vcf", "Fly");
  EXPECT_EQ(Open()->Count(), 6);
  EXPECT_THAT(Surnames(), ElementsAre("Ant", "Fly"));
}

TEST_F(VdirContactsDatabaseTest, EveryVcardOfAFileIsARecord) {
  folder_.Write("a.vcf", Vcard("N:Ant\n") + Vcard("N:Bee\n"));
  WritePerson("b.vcf", "Cat");
  EXPECT_THAT(Surnames(), ElementsAre("Ant", "Bee", "Cat"));
}

TEST_F(VdirContactsDatabaseTest, AVcardWithoutKnownPropertiesIsARecord) {
  folder_.Write("a.vcf", Vcard("EMAIL:x@example.org\n"));
  EXPECT_THAT(Surnames(), ElementsAre("-"));
}

TEST_F(VdirContactsDatabaseTest, AFileThatHasGoneOrChangedIsReadAsItIsNow) {
  for (const char* name : {"a", "b", "c", "d"}) WritePerson(std::string(name) + ".vcf", name);
  const auto table = Open();
  fs::remove(folder_.path() / "a.vcf");
  WritePerson("b.vcf", "other");
  fs::remove(folder_.path() / "c.vcf");
  fs::create_directory(folder_.path() / "c.vcf");
  fs::resize_file(folder_.path() / "d.vcf", 30);
  EXPECT_THAT(Surnames(*table), ElementsAre("other"));
}

TEST_F(VdirContactsDatabaseTest, AFileThatBecameAPipeOrADeviceIsNotWaitedFor) {
  for (const char* name : {"a", "b", "c"}) WritePerson(std::string(name) + ".vcf", name);
  const auto table = Open();
  fs::remove(folder_.path() / "a.vcf");
  fs::remove(folder_.path() / "b.vcf");
  ASSERT_EQ(::mkfifo((folder_.path() / "a.vcf").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", folder_.path() / "b.vcf");
  EXPECT_THAT(Surnames(*table), ElementsAre("c"));
}

TEST_F(VdirContactsDatabaseTest, AFileOfAGigabyteIsPassedOver) {
  WritePerson("a.vcf", "Ant");
  fs::resize_file(folder_.path() / "a.vcf", std::uintmax_t{1} << 30);
  WritePerson("b.vcf", "Bee");
  EXPECT_THAT(Surnames(), ElementsAre("Bee"));
}

TEST_F(VdirContactsDatabaseTest, AFileThatMayNotBeReadIsPassedOver) {
  WritePerson("a.vcf", "Ant");
  WritePerson("b.vcf", "Bee");
  ASSERT_EQ(::chmod((folder_.path() / "a.vcf").c_str(), 0), 0);
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    return Surnames() == std::vector<std::string>{"Bee"} ? 0 : 1;
  });
  EXPECT_EQ(user.ExitCode(), 0);
}

TEST_F(VdirContactsDatabaseTest, AFolderThatHasGoneEndsReadingAndTakesNoContact) {
  WritePerson("a.vcf", "Ant");
  const auto table = Open();
  fs::remove_all(folder_.path());
  EXPECT_EQ(table->ReadNext(kSurname), std::nullopt);
  EXPECT_EQ(table->Append(person_), StatusFromSystemError(kErrorFileNotFound));
  EXPECT_FALSE(fs::exists(folder_.path()));
}

TEST_F(VdirContactsDatabaseTest, AFolderThatMayNotBeWrittenTakesNoContact) {
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0555), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    return Open()->Append(person_) == StatusFromSystemError(kErrorAccessDenied) ? 0 : 1;
  });
  EXPECT_EQ(user.ExitCode(), 0);
}

TEST_F(VdirContactsDatabaseTest, AFileOrAnImpossibleNameIsNoDatabase) {
  WritePerson("a.vcf", "Ant");
  EXPECT_EQ(database_.Open(Name() + u"/a.vcf"), nullptr);
  EXPECT_EQ(database_.Open(std::u16string(5000, u'x')), nullptr);
  EXPECT_EQ(database_.Open(u"\xD83D"), nullptr);
}

TEST_F(VdirContactsDatabaseTest, AFolderOfAnyLanguageIsADatabase) {
  const fs::path folder = folder_.path() / "p\xC5\x99\xC3\xA1tel\xC3\xA9 a rodina";
  fs::create_directory(folder);
  const std::u16string name = FromUtf8(folder.string());
  ASSERT_EQ(database_.Open(name)->Append(person_), S_OK);
  EXPECT_THAT(Surnames(*database_.Open(name + u"/")), ElementsAre("Smith"));
}

TEST_F(VdirContactsDatabaseTest, AThousandContactsAreAllRead) {
  std::vector<std::string> expected;
  for (int i = 1000; i < 2000; ++i) {
    expected.push_back("P" + std::to_string(i));
    WritePerson(std::to_string(i) + ".vcf", expected.back());
  }
  EXPECT_EQ(Open()->Count(), 1000);
  EXPECT_EQ(Surnames(), expected);
}

}  // namespace
}  // namespace celldesk
