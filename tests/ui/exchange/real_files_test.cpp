#include <sys/stat.h>

#include <filesystem>

#include "platform/posix/posix_file.h"
#include "support/temporary_folder.h"
#include "ui/exchange/exchange_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

/// The window on the machine's own files.
class RealFiles : public testing::Test {
 protected:
  RealFiles() {
    window_.application->ExitInstance(0);
    window_.application.reset();
    window_.shell.data_folder = Path("data/celldesk");
    MachineServices fake = window_.Machine();
    window_.application = std::make_unique<CellDeskApplication>(
        count_, arguments_,
        MachineServices{fake.ports, fake.threads, fake.registry, fake.locale, fake.shell, fake.port_list,
                        fake.port_inspector, files_, fake.contacts, fake.waiter, fake.instances});
    EXPECT_TRUE(window_.Start());
    EXPECT_EQ(window_.sim().book().Resize(2), S_OK);
    AddressEntry& entry = window_.SimEntry(0);
    entry.id = u"1";
    entry.name = u"Anna";
    entry.number = u"112";
    window_.sim().book().MarkAll(AddressEntry::kOccupied);
  }
  std::u16string Path(const std::string& name) const { return FromUtf8((folder_.path() / name).string()); }
  /// Imports a file that cannot be used: the book stays.
  void ExpectRefused(const std::u16string& path, const char* sentence) {
    window_.ImportFile(import_choice::kLoadFile, path);
    EXPECT_THAT(window_.LastBox(), IsFileError(Utf8(path), sentence));
    EXPECT_EQ(window_.SimEntry(0).name, u"Anna");
  }

  TemporaryFolder folder_;
  PosixFileSystem files_;
  ExchangeWindow window_;

 private:
  int count_ = 1;
  char name_[9] = "celldesk";
  char* arguments_[2] = {name_, nullptr};
};

constexpr const char* kDenied = "You may not use this file, or it is not an ordinary file.";

TEST_F(RealFiles, AFileOfNoBytesIsNoAddressBook) {
  folder_.Write("empty.adr", "");
  window_.ImportFile(import_choice::kLoadFile, Path("empty.adr"));
  EXPECT_THAT(window_.LastBox(), IsErrorBox("Invalid file format."));
  EXPECT_EQ(window_.SimEntry(0).name, u"Anna");
}

TEST_F(RealFiles, FoldersPipesAndDevicesAreRefused) {
  std::filesystem::create_directory(folder_.path() / "folder.adr");
  ExpectRefused(Path("folder.adr"), kDenied);
  ASSERT_EQ(::mkfifo((folder_.path() / "pipe.adr").c_str(), 0600), 0);
  ExpectRefused(Path("pipe.adr"), kDenied);
  ExpectRefused(u"/dev/zero", kDenied);
}

TEST_F(RealFiles, AFileOfAGigabyteIsRefused) {
  folder_.Write("huge.adr", "AddrArchive10;SM;1;5;\r\n");
  std::filesystem::resize_file(folder_.path() / "huge.adr", std::uintmax_t{1} << 30);
  ExpectRefused(Path("huge.adr"), "The file is too large.");
}

TEST_F(RealFiles, AFileThatEndsTooSoonIsRefused) {
  ExpectRefused(u"/sys/devices/system/cpu/online",
                "The file cannot be read whole. Perhaps another program changes it.");
}

TEST_F(RealFiles, AFullDiskIsTold) {
  window_.ExportFile(u"/dev/full");
  EXPECT_THAT(window_.LastBox(), IsFileError("/dev/full", "The disk is full. The file is not complete."));
}

TEST_F(RealFiles, WhatAFileReplacesIsInTheBackupsFolder) {
  folder_.Write("new.adr", "AddrArchive10;SM;1;5;\r\n2;Dora;+420;\r\n");
  window_.ImportFile(import_choice::kLoadFile, Path("new.adr"));
  EXPECT_THAT(window_.SimRows(), ElementsAre("2|Dora|+420"));
  const std::vector<std::u16string> names = files_.Names(Path("data/celldesk/backups"));
  ASSERT_EQ(names.size(), 1U);
  window_.boxes.Answer(kAnswerYes);
  window_.ImportFile(import_choice::kLoadFile, Path("data/celldesk/backups/" + Utf8(names.front())));
  EXPECT_EQ(window_.SimEntry(0).name, u"Anna");
}

TEST_F(RealFiles, ABookComesBackFromItsFile) {
  window_.ExportFile(Path("book.adr"));
  window_.ImportFile(import_choice::kLoadFile, Path("book.adr"));
  EXPECT_EQ(window_.SimRows().front(), "1|Anna|112");
}

}  // namespace
}  // namespace celldesk
