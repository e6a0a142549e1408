// What becomes of the settings when the machine does not play along: full disks, crashes, odd files.

#include "platform/qt/settings_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <string>

#include "config/settings_store.h"
#include "platform/qt/qt_registry.h"
#include "support/child_process.h"
#include "support/registry_data.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kKey = u"CurrentUser\\Software\\Corvane\\CellDesk";
constexpr rlim_t kLockSize = 256;  // more than a lock file takes

class SettingsFileTest : public testing::Test {
 protected:
  SettingsFileTest() {
    std::string text = "[CurrentUser/Software/Corvane/CellDesk]\nPort = string:COM4:\nKept = binary:";
    for (int i = 0; i < 400; ++i) text += "5a";
    before_ = text + "\n";
    folder_.Write("settings.ini", before_);
  }

  std::string Path() const { return (folder_.path() / "settings.ini").string(); }
  std::string Content() const {
    std::ifstream stream(Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  std::set<std::string> FileNames() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
      names.insert(entry.path().filename().string());
    return names;
  }
  SystemError SetPort(std::u16string_view port) const {
    SettingsFile file(FromUtf8(Path()));
    return file.Change([&](SettingsDocument& document) {
      document.SetValue(kKey, u"Port", StringData(port));
      return kErrorSuccess;
    });
  }
  std::optional<RegistryData> Port() const { return PortIn(SettingsFile(FromUtf8(Path()))); }
  static std::optional<RegistryData> PortIn(const SettingsFile& file) {
    const auto document = file.Read();
    return document ? document->Value(kKey, u"Port") : std::nullopt;
  }

  void SetAge(std::chrono::hours age) const {
    std::filesystem::last_write_time(Path(), std::filesystem::file_time_type::clock::now() - age);
  }

  TemporaryFolder folder_;
  std::string before_;
};

// In a child: no file may grow beyond `size`, as on a full disk. A writer that tries hears of it, or is
// killed in the middle of its write.
void LimitFiles(rlim_t size, bool killed) {
  const rlimit limit{size, size};
  if (::signal(SIGXFSZ, killed ? SIG_DFL : SIG_IGN) == SIG_ERR || ::setrlimit(RLIMIT_FSIZE, &limit) != 0)
    ::_exit(99);
}

// A content of the same size, in the file's place.
std::string WithPort(std::string text, const std::string& port) {
  return text.replace(text.find("COM4:"), 5, port);
}

TEST_F(SettingsFileTest, AFileThatHasNotChangedForAWhileIsReadOnce) {
  const SettingsFile file(FromUtf8(Path()));
  SetAge(std::chrono::hours(1));
  ASSERT_EQ(PortIn(file), StringData(u"COM4:"));
  const auto time = std::filesystem::last_write_time(Path());
  folder_.Write("settings.ini", WithPort(before_, "COM7:"));
  std::filesystem::last_write_time(Path(), time);
  EXPECT_EQ(PortIn(file), StringData(u"COM4:")) << "nothing shows that the file is another";
}

TEST_F(SettingsFileTest, AFileWithAnotherTimeIsReadAgain) {
  const SettingsFile file(FromUtf8(Path()));
  SetAge(std::chrono::hours(1));
  ASSERT_EQ(PortIn(file), StringData(u"COM4:"));
  folder_.Write("settings.ini", WithPort(before_, "COM7:"));
  EXPECT_EQ(PortIn(file), StringData(u"COM7:"));
  folder_.Write("settings.ini", WithPort(before_, "COM8:"));
  SetAge(std::chrono::hours(2));
  EXPECT_EQ(PortIn(file), StringData(u"COM8:")) << "an older one too";
}

TEST_F(SettingsFileTest, AFileWithAnotherSizeIsReadAgain) {
  const SettingsFile file(FromUtf8(Path()));
  SetAge(std::chrono::hours(1));
  ASSERT_EQ(PortIn(file), StringData(u"COM4:"));
  const auto time = std::filesystem::last_write_time(Path());
  folder_.Write("settings.ini", WithPort(before_, "COM7:") + "\n");
  std::filesystem::last_write_time(Path(), time);
  EXPECT_EQ(PortIn(file), StringData(u"COM7:"));
}

// Two changes within one step of the file system's time leave no trace in it.
TEST_F(SettingsFileTest, AYoungFileIsAlwaysReadAgain) {
  const SettingsFile file(FromUtf8(Path()));
  const auto soon = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
  std::filesystem::last_write_time(Path(), soon);
  ASSERT_EQ(PortIn(file), StringData(u"COM4:"));
  folder_.Write("settings.ini", WithPort(before_, "COM7:"));
  std::filesystem::last_write_time(Path(), soon);
  EXPECT_EQ(PortIn(file), StringData(u"COM7:"));
}

TEST_F(SettingsFileTest, AFileThatHasGoneIsAnEmptyOne) {
  const SettingsFile file(FromUtf8(Path()));
  SetAge(std::chrono::hours(1));
  ASSERT_EQ(PortIn(file), StringData(u"COM4:"));
  std::filesystem::remove(Path());
  EXPECT_EQ(PortIn(file), std::nullopt);
}

TEST_F(SettingsFileTest, AChangeStartsFromTheFileAndNotFromWhatWasRead) {
  SettingsFile file(FromUtf8(Path()));
  SetAge(std::chrono::hours(1));
  ASSERT_EQ(PortIn(file), StringData(u"COM4:"));
  const auto time = std::filesystem::last_write_time(Path());
  folder_.Write("settings.ini", WithPort(before_, "COM7:"));
  std::filesystem::last_write_time(Path(), time);
  EXPECT_EQ(file.Change([](SettingsDocument& document) {
    return document.Value(kKey, u"Port") == StringData(u"COM7:") ? kErrorSuccess : kErrorFileNotFound;
  }),
            kErrorSuccess);
}

TEST_F(SettingsFileTest, OnAFullDiskTheOldFileStaysAndTheProgramGoesOn) {
  for (const rlim_t size : {rlim_t{0}, rlim_t{10}, kLockSize, rlim_t{before_.size() - 1}}) {
    ChildProcess program([&] {
      LimitFiles(size, false);
      const bool refused = SetPort(u"COM5:x") == kErrorAccessDenied;
      return refused && Port() == StringData(u"COM4:") ? 0 : 1;
    });
    EXPECT_EQ(program.ExitCode(), 0) << size;
    EXPECT_EQ(Content(), before_) << size;
    EXPECT_EQ(FileNames(), std::set<std::string>{"settings.ini"}) << size;
  }
  EXPECT_EQ(SetPort(u"COM5:"), kErrorSuccess) << "once there is room again";
  EXPECT_EQ(Port(), StringData(u"COM5:"));
}

TEST_F(SettingsFileTest, OnAFullDiskADamagedFileIsNotReplaced) {
  const std::string damaged = before_ + "garbage\n";
  folder_.Write("settings.ini", damaged);
  ChildProcess program([&] {
    LimitFiles(damaged.size() - 1, false);
    return SetPort(u"COM5:") == kErrorAccessDenied ? 0 : 1;
  });
  EXPECT_EQ(program.ExitCode(), 0);
  EXPECT_EQ(Content(), damaged);
  EXPECT_EQ(FileNames(), std::set<std::string>{"settings.ini"}) << "half a copy is none";
}

TEST_F(SettingsFileTest, AWriterThatIsKilledAtAnyByteLeavesTheOldFile) {
  for (rlim_t size = kLockSize; size < before_.size(); size += 13) {
    ChildProcess writer([&] {
      LimitFiles(size, true);
      return SetPort(u"COM6:") == kErrorSuccess ? 0 : 1;
    });
    ASSERT_EQ(writer.ExitCode(), -1) << "it was to be killed at byte " << size;
    ASSERT_EQ(Content(), before_) << size;
  }
  EXPECT_EQ(SetPort(u"COM6:"), kErrorSuccess);
  EXPECT_EQ(Port(), StringData(u"COM6:"));
}

// What is left of its lock tells nobody's name; it is overcome by its age.
TEST_F(SettingsFileTest, AWriterThatIsKilledWhileItLocksKeepsNobodyOutForLong) {
  ChildProcess writer([&] {
    LimitFiles(2, true);
    return SetPort(u"COM6:") == kErrorSuccess ? 0 : 1;
  });
  ASSERT_EQ(writer.ExitCode(), -1);
  ASSERT_EQ(Content(), before_);
  EXPECT_EQ(SetPort(u"COM7:"), kErrorSuccess);
  EXPECT_EQ(Port(), StringData(u"COM7:"));
}

TEST_F(SettingsFileTest, APipeOrADeviceInItsPlaceIsNeitherReadNorReplaced) {
  ASSERT_EQ(::unlink(Path().c_str()), 0);
  ASSERT_EQ(::mkfifo(Path().c_str(), 0600), 0);
  EXPECT_EQ(Port(), std::nullopt);
  EXPECT_NE(SetPort(u"COM5:"), kErrorSuccess);
  EXPECT_TRUE(std::filesystem::is_fifo(Path()));
  for (const char* device : {"/dev/zero", "/dev/full"}) {
    ASSERT_EQ(::unlink(Path().c_str()), 0);
    ASSERT_EQ(::symlink(device, Path().c_str()), 0);
    EXPECT_EQ(Port(), std::nullopt) << device;
    EXPECT_NE(SetPort(u"COM5:"), kErrorSuccess) << device;
    EXPECT_TRUE(std::filesystem::is_symlink(Path())) << device;
  }
}

TEST_F(SettingsFileTest, AFileOfAGigabyteIsNeitherReadNorReplaced) {
  std::filesystem::resize_file(Path(), std::uintmax_t{1} << 30);
  EXPECT_EQ(Port(), std::nullopt);
  EXPECT_NE(SetPort(u"COM5:"), kErrorSuccess);
  EXPECT_EQ(std::filesystem::file_size(Path()), std::uintmax_t{1} << 30);
}

TEST_F(SettingsFileTest, ValuesOfAMegabyteReadAsDefaultsAndAreOverwritten) {
  QtRegistry registry(FromUtf8(Path()));
  SettingsKey key(registry);
  ASSERT_EQ(key.Create(RegistryRoot::kCurrentUser, SettingsStore::kPath), kErrorSuccess);
  const std::u16string large(1 << 20, u'7');
  for (const std::u16string_view name : {u"Port", u"DI27"})
    ASSERT_EQ(key.Value(name).SetString(large), kErrorSuccess);
  ASSERT_EQ(key.Value(u"InboxCols").SetBinary(std::vector<std::uint8_t>(1 << 20, 1)), kErrorSuccess);
  const SettingsStore store(registry);
  EXPECT_EQ(store.Load(), Settings());
  EXPECT_TRUE(store.LoadColumnWidths(SettingsStore::kInboxColumns, 4).empty());
  store.Save(Settings());
  EXPECT_EQ(key.Value(u"Port").GetString(), u"COM1:");
  EXPECT_TRUE(key.Value(u"Kept").Exists());
}

}  // namespace
}  // namespace celldesk
