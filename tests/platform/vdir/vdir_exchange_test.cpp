#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "data/contacts_fixture.h"
#include "platform/posix/posix_file.h"
#include "platform/posix/posix_file_adder.h"
#include "platform/vdir/vcards.h"
#include "platform/vdir/vdir_contacts_database.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

/// The exchange with a real folder.
class VdirExchange : public testing::Test {
 protected:
  VdirExchange() { Offer(folder_.path()); }

  void Offer(const fs::path& folder) {
    EXPECT_EQ(OfferContactsDatabase(registry_, [&] { return FromUtf8(folder.string()); }), S_OK);
  }
  void Export() { ExportToContacts(registry_, database_, book_, log_.view()); }
  void Import() { ImportFromContacts(registry_, database_, book_, log_.view()); }
  std::string Content(const fs::path& file) const {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  /// The vCard files, the hidden ones left out.
  std::vector<fs::path> Files() const {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder_.path()))
      if (!entry.path().filename().string().starts_with(".")) files.push_back(entry.path());
    return files;
  }

  const TemporaryFolder folder_;
  PosixFileSystem files_;
  PosixFileAdder adder_;
  VdirContactsDatabase database_{files_, adder_};
  FakeRegistry registry_;
  AddressBook book_ = LoadedBook(4);
  ExchangeLog log_;
};

TEST_F(VdirExchange, ExportWritesOneWholeVcardForEveryEntry) {
  Fill(book_, 0, u"Home", u"+12345");
  Fill(book_, 3, u"\u0158ez\u00E1\u010D; J", u"112");
  Export();
  const auto files = Files();
  ASSERT_EQ(files.size(), 2U);
  std::vector<ContactRecord> contacts;
  for (const fs::path& file : files) {
    EXPECT_EQ(file.extension(), ".vcf");
    const auto read = ReadVcards(Content(file));
    ASSERT_EQ(read.size(), 1U);
    contacts.push_back(read[0]);
  }
  const auto person = [](std::u16string name, std::u16string number) {
    return ContactRecord{{kContactSurname, name}, {kContactMobileNumber, number}, {kContactFileAs, name}};
  };
  EXPECT_THAT(contacts,
              UnorderedElementsAre(person(u"Home", u"+12345"), person(u"\u0158ez\u00E1\u010D; J", u"112")));
  EXPECT_THAT(log_.events, ElementsAre("open export 0 3", "step", "step", "step", "step", "close"));
}

TEST_F(VdirExchange, WhatWasExportedComesBack) {
  Fill(book_, 0, u"Home, sweet; home\\", u"+12345");
  Fill(book_, 1, u"", u"67890");
  Export();
  book_ = LoadedBook(2);
  Import();
  EXPECT_THAT(Names(book_), UnorderedElementsAre(u"Home, sweet; home\\ ", u""));
  EXPECT_THAT(Flags(book_), Each(3U));
}

TEST_F(VdirExchange, ExportingTwiceDoublesTheFiles) {
  Fill(book_, 0, u"Home", u"+12345");
  Export();
  Export();
  EXPECT_THAT(Files(), SizeIs(2));
}

TEST_F(VdirExchange, ImportReadsWhatOtherProgramsWrote) {
  folder_.Write("1.vcf", Vcard("N:Li;;;;\r\nFN:Li\r\nORG:Acme;Sales\r\nTEL;TYPE=CELL: (0) 123 \r\n"
                               "TEL;TYPE=HOME:456789\r\n"));
  folder_.Write("2.vcf", Vcard("N:Short;;;;\r\nTEL;TYPE=CELL:12\r\nTEL;TYPE=HOME:456789\r\n"));
  folder_.Write("3.vcf", "no vCard");
  folder_.Write("4.vcf", Vcard("N;CHARSET=windows-1250;QUOTED-PRINTABLE:=8Aim=F9nek;Ji=F8=\r\n=ED\r\n"
                               "TEL;WORK;VOICE:+420 603 123\r\n",
                               "2.1"));
  folder_.Write("5.vcf", Vcard("FN:Jane Doe\r\nTEL;VALUE=uri;TYPE=home:tel:+1-555-0100\r\n", "4.0"));
  Import();
  EXPECT_THAT(Names(book_), ElementsAre(u"Li Acme", u"Simunek Jiri ", u"Jane Doe ", u""));
  EXPECT_THAT(Ids(book_), ElementsAre(u"0", u"1", u"2", u""));
  EXPECT_EQ(book_.At(0).number, u"0123");
  EXPECT_EQ(book_.At(1).number, u"+420603123");
  EXPECT_EQ(book_.At(2).number, u"+15550100");
  EXPECT_THAT(log_.events,
              ElementsAre("open import 0 5", "row 0", "step", "row 1", "step", "row 2", "step", "close"));
}

TEST_F(VdirExchange, WithoutTheFolderNothingHappens) {
  Fill(book_, 0, u"Home", u"+12345");
  fs::remove_all(folder_.path());
  Export();
  Import();
  EXPECT_THAT(log_.events, IsEmpty());
  EXPECT_FALSE(fs::exists(folder_.path()));
}

/// A process that exports the same book again and again until it is killed, and tells of each step.
class EndlessExport : public ExchangeLog {
 public:
  EndlessExport(Registry& registry, ContactsDatabase& database, const AddressBook& book)
      : exporter_([&]() -> int {
          ::close(pipe_.ends[0]);  // the write fails when the test goes
          for (;;) ExportToContacts(registry, database, book, view());
        }) {
    ::close(std::exchange(pipe_.ends[1], -1));
  }

  void AdvanceProgress() override {
    if (::write(pipe_.ends[1], "!", 1) != 1) ::_exit(1);
  }
  /// Waits for `count` more contacts.
  bool Hear(int count) {
    char told = 0;
    while (count > 0 && ::read(pipe_.ends[0], &told, 1) == 1) --count;
    return count == 0;
  }
  void Kill() { exporter_.Kill(); }

 private:
  struct Pipe {
    Pipe() { EXPECT_EQ(::pipe(ends), 0); }
    ~Pipe() {
      for (const int end : ends)
        if (end >= 0) ::close(end);
    }
    int ends[2] = {-1, -1};
  };

  Pipe pipe_;
  ChildProcess exporter_;
};

TEST_F(VdirExchange, AnExportThatIsKilledAtAnyMomentLeavesWholeVcards) {
  constexpr int kRounds = 40;
  const std::u16string name(20'000, u'\u017E');  // a file that takes a while to write
  folder_.Write("other.vcf", Vcard("N:Other\n"));
  for (int position = 0; position < 4; ++position) Fill(book_, position, name, u"+12345");
  std::size_t whole = 0;
  for (int round = 0; round < kRounds; ++round) {
    EndlessExport exporter(registry_, database_, book_);
    ASSERT_TRUE(exporter.Hear(1 + round % 3));
    // Some work of our own, of another length each round, moves the moment through the next write.
    for (int look = 0; look < round % 10; ++look) (void)ReadVcards(Content(Files().front()));
    exporter.Kill();
    for (const fs::path& file : Files()) {
      const auto contacts = ReadVcards(Content(file));
      ASSERT_EQ(contacts.size(), 1U) << file;
      if (file.filename() == "other.vcf") continue;
      ++whole;
      ASSERT_TRUE(contacts[0].size() == 3 && contacts[0][0].text == name) << file;
      fs::remove(file);
    }
  }
  EXPECT_GE(whole, std::size_t{kRounds});
  EXPECT_EQ(Content(folder_.path() / "other.vcf"), Vcard("N:Other\n"));
}

TEST_F(VdirExchange, WhatAKilledExportLeftIsNoContact) {
  folder_.Write(".0f5d1f0e.vcf.tmp", "BEGIN:VCARD\r\nN:Half");
  Fill(book_, 0, u"Home", u"+12345");
  Export();
  book_ = LoadedBook(4);
  Import();
  EXPECT_THAT(Names(book_), ElementsAre(u"Home ", u"", u"", u""));
}

}  // namespace
}  // namespace celldesk
