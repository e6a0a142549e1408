#include "data/record_file.h"

#include <gtest/gtest.h>

#include "support/fake_file_system.h"
#include "support/memory/allocation_gate.h"

namespace celldesk {
namespace {

std::string Text(FieldBytes bytes) { return {bytes.begin(), bytes.end()}; }

TEST(RecordWriter, WritesRecordsOfFields) {
  FakeFileSystem files;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  EXPECT_EQ(writer.Field(u"x;y").Number(7).Field(u"").EndRecord(), S_OK);
  EXPECT_EQ(writer.EndRecord(), S_OK);
  EXPECT_EQ(writer.Close(), S_OK);
  EXPECT_EQ(files.files[u"a.adr"], "x#;y;7;;\r\n\r\n");
  EXPECT_EQ(files.open_files, 0);
}

TEST(RecordWriter, GivesTheSystemsErrorWhenTheFileCannotBeCreated) {
  FakeFileSystem files;
  files.open_error = kErrorAccessDenied;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), Status{0x80070005});
  EXPECT_EQ(writer.Field(u"x").EndRecord(), Status{0x80070005});
  EXPECT_EQ(writer.Close(), Status{0x80070005});
  EXPECT_EQ(files.writes, 0);
}

TEST(RecordWriter, TheFirstFailureSticks) {
  FakeFileSystem files;
  files.write_error = kErrorDiskFull;
  files.allowed_writes = 1;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  const std::u16string block(RecordWriter::kBlock, u'x');
  EXPECT_EQ(writer.Field(block).EndRecord(), S_OK);
  EXPECT_EQ(writer.Field(block).EndRecord(), Status{0x80070070});
  files.write_error = kErrorSuccess;
  EXPECT_EQ(writer.Field(block).EndRecord(), Status{0x80070070});
  EXPECT_EQ(writer.Close(), Status{0x80070070});
  EXPECT_EQ(files.files[u"a.adr"], std::string(RecordWriter::kBlock, 'x') + ";\r\n");
  EXPECT_EQ(files.writes, 2);
}

/// Ends a record with a field for which there is no memory.
Status EndWithoutMemory(RecordWriter& writer) {
  const std::u16string large(5000, u'x');
  AllocationGate gate;
  gate.Refuse();
  return writer.Field(large).EndRecord();
}

TEST(RecordWriter, AFieldThatFindsNoMemoryEndsTheFileBeforeIt) {
  FakeFileSystem files;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  EXPECT_EQ(EndWithoutMemory(writer.Field(u"one")), E_OUTOFMEMORY);
  EXPECT_EQ(writer.Field(u"two").EndRecord(), E_OUTOFMEMORY);
  EXPECT_EQ(writer.Close(), E_OUTOFMEMORY);
  EXPECT_EQ(files.files[u"a.adr"], "one;");
}

TEST(RecordWriter, TheDiskTellsFirstWhenMemoryAndDiskAreFull) {
  FakeFileSystem files;
  files.write_error = kErrorDiskFull;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  EXPECT_EQ(EndWithoutMemory(writer), Status{0x80070070});
  EXPECT_EQ(writer.Close(), Status{0x80070070});
}

TEST(RecordWriter, AFieldWhoseEscapesFindNoMemoryIsNotWrittenInPart) {
  FakeFileSystem files;
  files.files[u"a.adr"].reserve(RecordWriter::kBlock);
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  EXPECT_EQ(writer.Field(std::u16string(5000, u'x')).EndRecord(), S_OK);
  const std::u16string special(100, u';');
  Status status = S_OK;
  {
    AllocationGate gate;
    gate.Refuse();
    status = writer.Field(u"one").Field(special).EndRecord();
  }
  EXPECT_EQ(status, E_OUTOFMEMORY);
  EXPECT_EQ(writer.Close(), E_OUTOFMEMORY);
  EXPECT_EQ(files.files[u"a.adr"], std::string(5000, 'x') + ";\r\none;");
}

TEST(RecordWriter, TheCloseReportsThatTheLastRecordsWereNotWritten) {
  FakeFileSystem files;
  files.write_error = kErrorDiskFull;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  EXPECT_EQ(writer.Field(u"one").EndRecord(), S_OK);
  EXPECT_EQ(writer.Close(), Status{0x80070070});
  EXPECT_EQ(files.open_files, 0);
}

TEST(RecordWriter, WritesSmallRecordsTogether) {
  FakeFileSystem files;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  std::string expected;
  while (expected.size() < 2 * RecordWriter::kBlock) {
    EXPECT_EQ(writer.Field(u"one").EndRecord(), S_OK);
    expected += "one;\r\n";
  }
  EXPECT_EQ(writer.Close(), S_OK);
  EXPECT_EQ(files.files[u"a.adr"], expected);
  EXPECT_EQ(files.writes, 2);
}

TEST(RecordWriter, ReportsWhatOnlyTheCloseTells) {
  FakeFileSystem files;
  files.close_error = kErrorDiskFull;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  EXPECT_EQ(writer.Field(u"one").EndRecord(), S_OK);
  EXPECT_EQ(writer.Close(), Status{0x80070070});
}

TEST(RecordWriter, WritesALongRecordWhole) {
  FakeFileSystem files;
  RecordWriter writer(files);
  EXPECT_EQ(writer.Create(u"a.adr"), S_OK);
  EXPECT_EQ(writer.Field(std::u16string(100000, u'x')).EndRecord(), S_OK);
  EXPECT_EQ(files.files[u"a.adr"].size(), 100003U);
}

TEST(RecordFile, MapsAFile) {
  FakeFileSystem files;
  files.files[u"a"] = "x;\r\ny\n;\r\n";
  RecordFile file;
  EXPECT_EQ(file.Open(files, u"a"), S_OK);
  EXPECT_EQ(Text(file.bytes()), "x;\r\ny\n;\r\n");
}

TEST(RecordFile, OpensAnEmptyFileWithoutData) {
  FakeFileSystem files;
  files.files[u"a"] = "";
  RecordFile file;
  EXPECT_EQ(file.Open(files, u"a"), S_OK);
  EXPECT_TRUE(file.bytes().empty());
}

TEST(RecordFile, ReadsBareLineFeedsAsLineEnds) {
  FakeFileSystem files;
  files.files[u"a"] = "x;\ny;\n";
  RecordFile file;
  EXPECT_EQ(file.Open(files, u"a"), S_OK);
  EXPECT_EQ(Text(file.bytes()), "x;\r\ny;\r\n");
}

TEST(RecordFile, BareLineFeedsTakeTwiceTheFileAtMost) {
  constexpr std::size_t kSize = 1'000'000;
  FakeFileSystem files;
  files.files[u"a"].assign(kSize, '\n');
  RecordFile file;
  const AllocationGate gate;
  EXPECT_EQ(file.Open(files, u"a"), S_OK);
  EXPECT_EQ(file.bytes().size(), 2 * kSize);
  EXPECT_LT(gate.peak(), 3 * kSize + 10'000);  // with the file itself
}

TEST(RecordFile, FailsWhenThereIsNoMemoryForLineEnds) {
  struct OneFile : FakeFileSystem {
    std::unique_ptr<MappedFile> Map(std::u16string_view, SystemError& error) override {
      error = kErrorSuccess;
      return std::move(mapped);
    }
    std::unique_ptr<MappedFile> mapped;
  };
  FakeFileSystem source;
  source.files[u"a"] = std::string(100, 'x') + ";\n";
  OneFile files;
  SystemError error = kErrorSuccess;
  files.mapped = source.Map(u"a", error);
  RecordFile file;
  Status status = S_OK;
  {
    AllocationGate gate;
    gate.Refuse();
    status = file.Open(files, u"a");
  }
  EXPECT_EQ(status, E_OUTOFMEMORY);
}

TEST(RecordFile, GivesTheSystemsErrorWhenTheFileIsNotThere) {
  FakeFileSystem files;
  RecordFile file;
  EXPECT_EQ(file.Open(files, u"a"), Status{0x80070002});
  EXPECT_TRUE(file.bytes().empty());
}

}  // namespace
}  // namespace celldesk
