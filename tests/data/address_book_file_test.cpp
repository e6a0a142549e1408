#include "data/address_book_file.h"
#include "data/record_file.h"

#include <gtest/gtest.h>

#include <random>

#include "book_fixture.h"
#include "support/fake_file_system.h"
#include "support/memory/allocation_gate.h"

namespace celldesk {
namespace {

using Texts = std::vector<std::u16string>;

constexpr std::u16string_view kPath = u"book.adr";

/// What a file of `text` makes of `book`.
class AddressBookFile : public testing::Test {
 protected:
  Status Read(std::string_view text) {
    files_.files[std::u16string(kPath)] = text;
    return ReadAddressBookFile(files_, kPath, [this](std::u16string_view memory) {
      memory_ = memory;
      return AddressBookTarget{&book_, &observer_};
    });
  }
  std::string Written() {
    EXPECT_EQ(WriteAddressBookFile(files_, kPath, book_), S_OK);
    EXPECT_EQ(files_.open_files, 0);
    return files_.files[std::u16string(kPath)];
  }

  FakeFileSystem files_;
  AddressBook book_{u"SM", true};
  RecordingObserver observer_;
  std::u16string memory_;
};

TEST_F(AddressBookFile, HoldsAHeaderAndALineForEachEntry) {
  book_ = LoadedBook(250);
  Fill(book_, 0, u"Home", u"+12345");
  book_.Erase(3);
  Fill(book_, 9, u"", u"112");
  EXPECT_EQ(Written(), "AddrArchive10;SM;1;250;\r\n1;Home;+12345;\r\n10;;112;\r\n");
}

TEST_F(AddressBookFile, WritesTheIdThatAnEntryHas) {
  book_ = LoadedBook(2);
  Fill(book_, 0, u"A", u"1");
  book_.At(0).id = u"77";
  EXPECT_EQ(Written(), "AddrArchive10;SM;1;2;\r\n77;A;1;\r\n");
}

TEST_F(AddressBookFile, NamesTheMemoryOfTheBook) {
  book_ = LoadedBook(2, u"ME");
  EXPECT_EQ(Written(), "AddrArchive10;ME;1;2;\r\n");
}

TEST_F(AddressBookFile, EscapesTheSpecialCharactersOfAName) {
  book_ = LoadedBook(1);
  Fill(book_, 0, u"A#B;C", u"1");
  EXPECT_EQ(Written(), "AddrArchive10;SM;1;1;\r\n1;A# B#;C;1;\r\n");
  book_ = AddressBook(u"SM", true);
  EXPECT_EQ(Read(files_.files[std::u16string(kPath)]), S_OK);
  EXPECT_EQ(book_.At(0).name, u"A#B;C");
}

TEST_F(AddressBookFile, WritingStopsAtTheFirstFailure) {
  book_ = LoadedBook(3);
  const std::u16string long_name(RecordWriter::kBlock, u'A');
  for (int position = 0; position < 3; ++position) Fill(book_, position, long_name, u"1");
  files_.write_error = kErrorDiskFull;
  files_.allowed_writes = 2;
  EXPECT_EQ(WriteAddressBookFile(files_, kPath, book_), Status{0x80070070});
  EXPECT_EQ(files_.writes, 3);
  const std::string name(RecordWriter::kBlock, 'A');
  EXPECT_EQ(files_.files[std::u16string(kPath)],
            "AddrArchive10;SM;1;3;\r\n1;" + name + ";1;\r\n2;" + name + ";1;\r\n");
  files_.allowed_writes = 0;
  files_.writes = 0;
  EXPECT_EQ(WriteAddressBookFile(files_, kPath, book_), Status{0x80070070});
  EXPECT_EQ(files_.writes, 1);
  files_.open_error = kErrorPathNotFound;
  EXPECT_EQ(WriteAddressBookFile(files_, kPath, book_), Status{0x80070003});
}

TEST_F(AddressBookFile, ReadsEntriesIntoTheirSlots) {
  EXPECT_EQ(Read("AddrArchive10;SM;1;250;\r\n1;Home;+12345;\r\n3;Work;112;\r\n"), S_OK);
  EXPECT_EQ(memory_, u"SM");
  EXPECT_EQ(book_.memory().first, 1);
  EXPECT_EQ(book_.memory().last, 250);
  EXPECT_EQ(Names(book_), (Texts{u"Home", u"", u"Work"}));
  EXPECT_EQ(Ids(book_), (Texts{u"1", u"", u"3"}));
  EXPECT_EQ(Flags(book_), (std::vector<std::uint32_t>{3, 2, 3}));
  EXPECT_EQ(book_.At(0).number, u"+12345");
  EXPECT_EQ(observer_.rows, (std::vector<int>{0, 2}));
}

TEST_F(AddressBookFile, TheTargetChoosesByTheMemoryName) {
  files_.files[u"me.adr"] = "AddrArchive10;ME;1;5;\r\n1;A;1;\r\n";
  AddressBook phone(u"ME", false);
  const auto choose = [&](std::u16string_view memory) {
    return AddressBookTarget{memory == u"ME" ? &phone : nullptr, nullptr};
  };
  EXPECT_EQ(ReadAddressBookFile(files_, u"me.adr", choose), S_OK);
  EXPECT_EQ(phone.count(), 1);
  files_.files[u"me.adr"] = "AddrArchive10;XX;1;5;\r\n1;A;1;\r\n";
  EXPECT_EQ(ReadAddressBookFile(files_, u"me.adr", choose), S_OK);
  EXPECT_EQ(phone.count(), 1);
}

TEST_F(AddressBookFile, TakesTheRangeOfAnotherMemorysFileAllTheSame) {
  book_ = LoadedBook(10);
  EXPECT_EQ(Read("AddrArchive10;ME;5;99;\r\n7;A;1;\r\n"), S_OK);
  EXPECT_EQ(book_.memory().name, u"SM");
  EXPECT_EQ(book_.memory().first, 5);
  EXPECT_EQ(book_.memory().last, 99);
  EXPECT_EQ(book_.At(2).id, u"7");
}

TEST_F(AddressBookFile, KeepsTheRangeWhereTheHeaderEndsBefore) {
  book_ = LoadedBook(10);
  EXPECT_EQ(Read("AddrArchive10;SM;\r\n2;A;1;\r\n"), S_OK);
  EXPECT_EQ(book_.memory().last, 10);
  EXPECT_EQ(Read("AddrArchive10;SM;4;\r\n"), S_OK);
  EXPECT_EQ(book_.memory().first, 4);
  EXPECT_EQ(book_.memory().last, 10);
}

TEST_F(AddressBookFile, FillsFreeSlotsWhereIdsCollideOrAreTooLow) {
  book_ = LoadedBook(4);
  Fill(book_, 0, u"mine", u"9");
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n1;A;1;\r\n0;B;2;\r\n-9;C;3;\r\nx;D;4;\r\n"), S_OK);
  EXPECT_EQ(Names(book_), (Texts{u"mine", u"A", u"B", u"C", u"D"}));
  EXPECT_EQ(Ids(book_), (Texts{u"1", u"2", u"3", u"4", u"5"}));
}

TEST_F(AddressBookFile, MarksWhatItPutsIntoFreeSlotsForTheNextUpload) {
  book_ = LoadedBook(3);
  EXPECT_EQ(Read("AddrArchive10;SM;1;3;\r\n2;A;1;\r\n"), S_OK);
  EXPECT_EQ(Flags(book_), (std::vector<std::uint32_t>{0, 3, 0}));
}

TEST_F(AddressBookFile, TheFirstFreeSlotMayBeTheFirstSlot) {
  book_ = LoadedBook(3);
  EXPECT_EQ(Read("AddrArchive10;SM;1;3;\r\n2;A;1;\r\n0;B;2;\r\n0;C;3;\r\n"), S_OK);
  EXPECT_EQ(Names(book_), (Texts{u"B", u"A", u"C"}));
}

TEST_F(AddressBookFile, KeepsTheOtherFlagsOfAFreeSlot) {
  book_ = LoadedBook(1);
  book_.At(0).flags = AddressEntry::kAssigned;
  EXPECT_EQ(Read("AddrArchive10;SM;1;1;\r\n1;A;1;\r\n"), S_OK);
  EXPECT_EQ(Flags(book_), (std::vector<std::uint32_t>{7}));
}

TEST_F(AddressBookFile, FillsFreeSlotsForIdsThatNoBookCanHave) {
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n99999999;A;1;\r\n99999999999999;B;2;\r\n"), S_OK);
  EXPECT_EQ(Ids(book_), (Texts{u"1", u"2"}));
}

TEST_F(AddressBookFile, TheLongestBookEndsBeforeTheFirstIdThatFillsAFreeSlot) {
  const std::string last = std::to_string(AddressBook::kLimit),
                    beyond = std::to_string(AddressBook::kLimit + 1);
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n" + beyond + ";A;1;\r\n" + last + ";B;2;\r\n"), S_OK);
  EXPECT_EQ(book_.count(), AddressBook::kLimit);
  EXPECT_EQ(book_.At(0).name, u"A");
  EXPECT_EQ(book_.At(AddressBook::kLimit - 1).name, u"B");
}

TEST_F(AddressBookFile, StopsWhenTheBookIsFull) {
  ASSERT_EQ(book_.Resize(AddressBook::kLimit), S_OK);
  book_.MarkAll(AddressEntry::kOccupied);
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n1;A;1;\r\n"), E_OUTOFMEMORY);
  EXPECT_TRUE(observer_.rows.empty());
}

TEST_F(AddressBookFile, StopsWhenMemoryIsShort) {
  const std::string text = "AddrArchive10;SM;1;4;\r\n1;A name of some length;1;\r\n";
  const ChooseAddressBook choose = [this](std::u16string_view) {
    return AddressBookTarget{&book_, &observer_};
  };
  const FieldBytes bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  Status status = S_OK;
  {
    AllocationGate gate;
    gate.Refuse();
    status = ReadAddressBook(bytes, choose);
  }
  EXPECT_EQ(status, E_OUTOFMEMORY);
  EXPECT_TRUE(observer_.rows.empty());
  EXPECT_EQ(ReadAddressBook(bytes, choose), S_OK);
}

TEST_F(AddressBookFile, KeepsNamesAndNumbersOfAThousandCharacters) {
  book_ = LoadedBook(1);
  const std::u16string name = std::u16string(998, u'n') + u"\";#";
  Fill(book_, 0, name, u'+' + std::u16string(1000, u'7'));
  const std::string text = Written();
  book_ = AddressBook(u"SM", true);
  EXPECT_EQ(Read(text), S_OK);
  EXPECT_EQ(book_.At(0).name, name);
  EXPECT_EQ(book_.At(0).number, u'+' + std::u16string(1000, u'7'));
}

TEST_F(AddressBookFile, TakesTheDiacriticsOffNames) {
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n1;\xC8\x65\xF2\xECk M\xFCller;1;\r\n"), S_OK);
  EXPECT_EQ(book_.At(0).name, u"Cenek M\u00fcller");
}

TEST_F(AddressBookFile, EndsAtALineThatBeginsWithAnAt) {
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n1;A;1;\r\n@\r\n2;B;2;\r\n"), S_OK);
  EXPECT_EQ(Names(book_), (Texts{u"A"}));
}

TEST_F(AddressBookFile, SkipsCommentsAndBlankLines) {
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n\r\n// a list\r\n// of two\r\n\r\n1;A;1;\r\n//\r\n2;B;2;\r\n"),
            S_OK);
  EXPECT_EQ(Names(book_), (Texts{u"A", u"B"}));
}

TEST_F(AddressBookFile, KeepsWhatALineHasBeforeItBreaksOff) {
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\r\n1;Anna;\r\n2;\r\n3;C;3;\r\n4;D;4"), S_OK);
  EXPECT_EQ(Names(book_), (Texts{u"Anna", u"", u"C", u"D"}));
  EXPECT_EQ(Flags(book_), (std::vector<std::uint32_t>{3, 2, 3, 3}));
  EXPECT_EQ(book_.At(3).number, u"");
}

TEST_F(AddressBookFile, ReadsAHandMadeFileWithBareLineFeeds) {
  EXPECT_EQ(Read("AddrArchive10;SM;1;4;\n1;A;1;\n2;B;2;\n"), S_OK);
  EXPECT_EQ(Names(book_), (Texts{u"A", u"B"}));
}

TEST_F(AddressBookFile, RefusesAFileOfAnotherKind) {
  book_ = LoadedBook(1);
  Fill(book_, 0, u"mine", u"9");
  for (const char* text :
       {"", "AddrArchive11;SM;1;4;\r\n", "SMSArchive11;Inbox;\r\n", "AddrArchive10", "\r\n", ";"}) {
    EXPECT_EQ(Read(text), E_INVALIDARG) << text;
  }
  EXPECT_EQ(Names(book_), (Texts{u"mine"}));
  EXPECT_EQ(book_.memory().last, 1);
}

TEST_F(AddressBookFile, GivesTheSystemsErrorWhenTheFileIsNotThere) {
  const auto choose = [](std::u16string_view) { return AddressBookTarget{}; };
  EXPECT_EQ(ReadAddressBookFile(files_, u"none.adr", choose), Status{0x80070002});
}

TEST_F(AddressBookFile, WritesAForeignCharacterAsAnotherOne) {
  book_ = LoadedBook(1);
  Fill(book_, 0, u"\u0416\u20ac", u"1");
  const std::string text = Written();
  book_ = AddressBook(u"SM", true);
  EXPECT_EQ(Read(text), S_OK);
  EXPECT_EQ(book_.At(0).name, u"\x16\u00ac");
}

TEST_F(AddressBookFile, AHeaderThatClaimsManyEntriesTakesNoRoomForThem) {
  const std::string text = "AddrArchive10;SM;1;65536;\r\n1;A;1;\r\n";
  const FieldBytes bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  const AllocationGate gate;
  EXPECT_EQ(ReadAddressBook(bytes,
                            [this](std::u16string_view) {
                              return AddressBookTarget{&book_, nullptr};
                            }),
            S_OK);
  EXPECT_LT(gate.peak(), 50'000U);
}

TEST_F(AddressBookFile, ReadingTakesThreeTimesTheFileAtMost) {
  constexpr std::size_t kSize = 1'000'000;
  const std::string header = "AddrArchive10;SM;1;4;";
  for (const std::string& text :
       {header + std::string(kSize, 'x'), header + "\r\n1;" + std::string(kSize, 'x') + ";1;\r\n",
        header + "\r\n1;x;" + std::string(kSize, '#') + ";\r\n", header + std::string(kSize, ';'),
        header + std::string(kSize, '\n')}) {
    files_.files[std::u16string(kPath)] = text;
    AddressBook book(u"SM", true);
    const AllocationGate gate;
    EXPECT_EQ(ReadAddressBookFile(files_, kPath,
                                  [&book](std::u16string_view) {
                                    return AddressBookTarget{&book, nullptr};
                                  }),
              S_OK);
    EXPECT_LT(gate.peak(), 3 * text.size() + 50'000) << text.substr(0, 40);
  }
}

/// A text of characters that a file keeps: with the special ones, line ends (not at the start) and letters.
std::u16string RandomText(std::mt19937& random) {
  constexpr std::u16string_view kAlphabet = u"ab #;;##@/\r\n\u00fc\u0142\u00df+0123";
  std::u16string text;
  const std::size_t length = random() % 12;
  while (text.size() < length) text += kAlphabet[random() % kAlphabet.size()];
  return text.starts_with(u"\r\n") ? text.substr(2) : text;
}

TEST_F(AddressBookFile, ReadsBackWhatWasWritten) {
  std::mt19937 random(20030305);
  for (int round = 0; round < 200; ++round) {
    book_ = LoadedBook(1 + static_cast<int>(random() % 30));
    for (int position = 0; position < book_.count(); ++position) {
      if (random() % 3 != 0) Fill(book_, position, RandomText(random), RandomText(random));
    }
    const std::string text = Written();
    const AddressBook before = std::exchange(book_, AddressBook(u"SM", true));
    ASSERT_EQ(Read(text), S_OK);
    ASSERT_EQ(book_.memory().last, before.memory().last);
    for (const AddressEntry& entry : before.entries()) {
      if (!entry.is_occupied()) continue;
      const AddressEntry& read = book_.At(ParseDecimal(entry.id) - 1);
      ASSERT_EQ(read.id, entry.id);
      ASSERT_EQ(read.name, entry.name);
      ASSERT_EQ(read.number, entry.number);
    }
    ASSERT_EQ(Written(), text);
  }
}

TEST_F(AddressBookFile, ReadsAnyBytesWithoutHarm) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::string text = round % 2 == 0 ? "AddrArchive10;SM;" : "AddrArchive10;SM;1;9;\r\n";
    for (int i = 0; i < 60; ++i) text += "#;;\r\n/@19-\xE8"[random() % 11];
    book_ = AddressBook(u"SM", true);
    ASSERT_EQ(Read(text), S_OK);
    ASSERT_LE(book_.count(), AddressBook::kLimit);
  }
}

}  // namespace
}  // namespace celldesk
