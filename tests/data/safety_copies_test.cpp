#include "data/safety_copies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "support/fake_file_system.h"

namespace celldesk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr CalendarTime kNow{2026, 11, 6, 21, 14, 30, 5, 120};

class SafetyCopiesTest : public testing::Test {
 protected:
  CopySource Source(std::u16string file_name, std::string content) {
    return {std::move(file_name), [this, content = std::move(content)](std::u16string_view path) {
              SystemError error = kErrorSuccess;
              const auto file = files_.Create(path, error);
              if (!file) return StatusFromSystemError(error);
              return StatusFromSystemError(
                  file->Write({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()}));
            }};
  }
  Status SaveBook(std::string content, CalendarTime now = kNow) {
    const CopySource sources[] = {Source(u"Address-SIM.adr", std::move(content))};
    return copies_.Save(sources, now);
  }
  static CalendarTime AtMinute(int minute) {
    CalendarTime time = kNow;
    time.minute = static_cast<std::uint16_t>(minute);
    return time;
  }

  FakeFileSystem files_;
  SafetyCopies copies_{files_, u"/copies"};
};

TEST_F(SafetyCopiesTest, CopiesEverySourceUnderTheDateAndItsName) {
  const CopySource sources[] = {Source(u"Address-SIM.adr", "book"), Source(u"Inbox.sms", "messages")};
  EXPECT_EQ(copies_.Save(sources, kNow), S_OK);
  EXPECT_THAT(files_.Names(u"/copies"),
              ElementsAre(u"2026-11-21 14.30.05.120 Address-SIM.adr", u"2026-11-21 14.30.05.120 Inbox.sms"));
  EXPECT_EQ(files_.files[u"/copies/2026-11-21 14.30.05.120 Inbox.sms"], "messages");
}

TEST_F(SafetyCopiesTest, DoesNotCopyAgainWhatIsCopiedAlready) {
  EXPECT_EQ(SaveBook("book"), S_OK);
  EXPECT_EQ(SaveBook("book", AtMinute(31)), S_OK);
  EXPECT_THAT(files_.Names(u"/copies"), SizeIs(1));
}

TEST_F(SafetyCopiesTest, ComparesWithTheNewestCopyOfTheSameBook) {
  EXPECT_EQ(SaveBook("first"), S_OK);
  EXPECT_EQ(SaveBook("second", AtMinute(31)), S_OK);
  EXPECT_EQ(SaveBook("first", AtMinute(32)), S_OK);
  const CopySource other[] = {Source(u"Address-MT.adr", "first")};
  EXPECT_EQ(copies_.Save(other, AtMinute(33)), S_OK);
  EXPECT_THAT(files_.Names(u"/copies"), SizeIs(4));
}

TEST_F(SafetyCopiesTest, TwoCopiesInOneMillisecondAreTwoFilesInOrder) {
  EXPECT_EQ(SaveBook("first"), S_OK);
  EXPECT_EQ(SaveBook("second"), S_OK);
  EXPECT_EQ(files_.files[u"/copies/2026-11-21 14.30.05.120 Address-SIM.adr"], "first");
  EXPECT_EQ(files_.files[u"/copies/2026-11-21 14.30.05.121 Address-SIM.adr"], "second");
}

TEST_F(SafetyCopiesTest, TwoCopiesInTheLastMillisecondOfAYearAreTwoFilesInOrder) {
  const CalendarTime last{2026, 12, 4, 31, 23, 59, 59, 999};
  EXPECT_EQ(SaveBook("first", last), S_OK);
  EXPECT_EQ(SaveBook("second", last), S_OK);
  EXPECT_EQ(files_.files[u"/copies/2026-12-31 23.59.59.999 Address-SIM.adr"], "first");
  EXPECT_EQ(files_.files[u"/copies/2027-01-01 00.00.00.000 Address-SIM.adr"], "second");
}

TEST_F(SafetyCopiesTest, AClockWithoutADateStillGivesANameOnce) {
  EXPECT_EQ(SaveBook("first", CalendarTime{}), S_OK);
  EXPECT_EQ(SaveBook("second", CalendarTime{}), S_OK);
  EXPECT_EQ(files_.files[u"/copies/0000-00-00 00.00.00.000 Address-SIM.adr"], "second");
  EXPECT_THAT(files_.Names(u"/copies"), SizeIs(1));
}

TEST_F(SafetyCopiesTest, KeepsTheNewestTwenty) {
  for (int minute = 0; minute < 25; ++minute)
    EXPECT_EQ(SaveBook(std::to_string(minute), AtMinute(minute)), S_OK);
  const auto names = files_.Names(u"/copies");
  EXPECT_THAT(names, SizeIs(20));
  EXPECT_EQ(names.front(), u"2026-11-21 14.05.05.120 Address-SIM.adr");
  EXPECT_EQ(names.back(), u"2026-11-21 14.24.05.120 Address-SIM.adr");
}

TEST_F(SafetyCopiesTest, KeepsTheNewestTwentyOfBooksAndFoldersTogether) {
  for (int minute = 0; minute < 15; ++minute) {
    const std::string content = std::to_string(minute);
    const CopySource sources[] = {Source(u"Address-SIM.adr", content), Source(u"Inbox.sms", content)};
    EXPECT_EQ(copies_.Save(sources, AtMinute(minute)), S_OK);
  }
  const auto names = files_.Names(u"/copies");
  EXPECT_THAT(names, SizeIs(20));
  EXPECT_EQ(names.front(), u"2026-11-21 14.05.05.120 Address-SIM.adr");
  EXPECT_EQ(names[1], u"2026-11-21 14.05.05.120 Inbox.sms");
}

/// A folder lists its files in any order.
struct BackwardFiles : FakeFileSystem {
  std::vector<std::u16string> Names(std::u16string_view folder) override {
    auto names = FakeFileSystem::Names(folder);
    std::reverse(names.begin(), names.end());
    return names;
  }
};

TEST_F(SafetyCopiesTest, TheOrderOfTheFolderIsNoMatter) {
  BackwardFiles files;
  SafetyCopies copies(files, u"/copies");
  for (int minute = 0; minute < 25; ++minute) {
    const CopySource source{u"Address-SIM.adr", [&files, minute](std::u16string_view path) {
                              files.files[std::u16string(path)] = std::to_string(minute);
                              return S_OK;
                            }};
    EXPECT_EQ(copies.Save({&source, 1}, AtMinute(minute)), S_OK);
    EXPECT_EQ(copies.Save({&source, 1}, AtMinute(minute + 1)), S_OK) << "the newest is the same";
  }
  const auto names = files.Names(u"/copies");
  EXPECT_THAT(names, SizeIs(20));
  EXPECT_EQ(names.back(), u"2026-11-21 14.05.05.120 Address-SIM.adr");
}

TEST_F(SafetyCopiesTest, ACopyThatCannotBeReadIsNotTheSame) {
  /// Opens no file whose name ends like this.
  struct NoReading : FakeFileSystem {
    std::unique_ptr<MappedFile> Map(std::u16string_view path, SystemError& error) override {
      if (!path.ends_with(unreadable)) return FakeFileSystem::Map(path, error);
      error = kErrorAccessDenied;
      return nullptr;
    }
    std::u16string_view unreadable;
  };
  // The copy of before; the one that was just written, which has no name yet.
  for (const std::u16string_view unreadable : {u".adr", u".unfinished"}) {
    NoReading files;
    SafetyCopies copies(files, u"/copies");
    std::u16string written;
    const CopySource source{u"Address-SIM.adr", [&](std::u16string_view path) {
                              written = path;
                              files.files[written] = "book";
                              return S_OK;
                            }};
    EXPECT_EQ(copies.Save({&source, 1}, AtMinute(0)), S_OK);
    EXPECT_TRUE(written.ends_with(u".unfinished"));
    files.unreadable = unreadable;
    EXPECT_EQ(copies.Save({&source, 1}, AtMinute(1)), S_OK);
    EXPECT_THAT(files.Names(u"/copies"), SizeIs(2));
  }
}

TEST_F(SafetyCopiesTest, LeavesOtherFilesOfTheFolderAlone) {
  files_.files[u"/copies/My book.adr"] = "mine";
  files_.files[u"/copies/2026-11-21 14.30.05.120 Address-SIM.txt"] = "mine";
  files_.files[u"/copies/2026-11-21 14.30.05,120 Address-SIM.adr"] = "mine";
  files_.files[u"/copies/2026-11-2x 14.30.05.120 Address-SIM.adr"] = "mine";
  files_.files[u"/copies/2026-11-2! 14.30.05.120 Address-SIM.adr"] = "mine";
  for (int minute = 0; minute < 25; ++minute)
    EXPECT_EQ(SaveBook(std::to_string(minute), AtMinute(minute)), S_OK);
  EXPECT_THAT(files_.Names(u"/copies"), SizeIs(25));
}

TEST_F(SafetyCopiesTest, KeepsTheCopyJustMadeWhenTheClockWasSetBack) {
  for (int minute = 30; minute < 50; ++minute)
    EXPECT_EQ(SaveBook(std::to_string(minute), AtMinute(minute)), S_OK);
  EXPECT_EQ(SaveBook("after", AtMinute(1)), S_OK);
  const auto names = files_.Names(u"/copies");
  EXPECT_THAT(names, SizeIs(20));
  EXPECT_THAT(names, Contains(u"2026-11-21 14.01.05.120 Address-SIM.adr"));
  EXPECT_THAT(names, Not(Contains(u"2026-11-21 14.30.05.120 Address-SIM.adr")));
}

TEST_F(SafetyCopiesTest, AFailureIsToldAndTheOthersAreCopiedAllTheSame) {
  const CopySource sources[] = {{u"Address-SIM.adr", [](std::u16string_view) { return E_FAIL; }},
                                Source(u"Inbox.sms", "messages")};
  EXPECT_EQ(copies_.Save(sources, kNow), E_FAIL);
  EXPECT_THAT(files_.Names(u"/copies"), ElementsAre(u"2026-11-21 14.30.05.120 Inbox.sms"));
}

TEST_F(SafetyCopiesTest, AHalfWrittenCopyIsNotKept) {
  EXPECT_EQ(SaveBook("first"), S_OK);
  files_.write_error = kErrorDiskFull;
  EXPECT_EQ(SaveBook("second", AtMinute(31)), StatusFromSystemError(kErrorDiskFull));
  EXPECT_THAT(files_.Names(u"/copies"), ElementsAre(u"2026-11-21 14.30.05.120 Address-SIM.adr"));
}

TEST_F(SafetyCopiesTest, ACopyThatCannotBeNamedIsNotKeptAndNoOtherGoesForIt) {
  for (int minute = 0; minute < 20; ++minute)
    EXPECT_EQ(SaveBook(std::to_string(minute), AtMinute(minute)), S_OK);
  files_.rename_error = kErrorAccessDenied;
  EXPECT_EQ(SaveBook("more", AtMinute(20)), StatusFromSystemError(kErrorAccessDenied));
  const auto names = files_.Names(u"/copies");
  EXPECT_THAT(names, SizeIs(20));
  EXPECT_EQ(names.front(), u"2026-11-21 14.00.05.120 Address-SIM.adr");
}

TEST_F(SafetyCopiesTest, AFolderThatCannotBeMadeIsTold) {
  files_.open_error = kErrorAccessDenied;
  EXPECT_EQ(SaveBook("book"), StatusFromSystemError(kErrorAccessDenied));
  EXPECT_THAT(files_.Names(u"/copies"), IsEmpty());
}

TEST_F(SafetyCopiesTest, NothingToCopyMakesNoFolder) {
  files_.open_error = kErrorAccessDenied;
  EXPECT_EQ(copies_.Save({}, kNow), S_OK);
}

}  // namespace
}  // namespace celldesk
