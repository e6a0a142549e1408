#include "platform/posix/posix_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

#include "platform/posix/descriptor.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

class PosixFileSystemTest : public testing::Test {
 protected:
  std::u16string Path(const std::string& name) const { return FromUtf8((folder_.path() / name).string()); }
  std::string Content(const std::string& name) {
    SystemError error = kErrorSuccess;
    const auto file = files_.Map(Path(name), error);
    EXPECT_EQ(error, kErrorSuccess);
    if (!file) return "(no file)";
    return {file->bytes().begin(), file->bytes().end()};
  }
  static std::span<const std::uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
  }

  TemporaryFolder folder_;
  PosixFileSystem files_;
  SystemError error_ = kErrorInvalidHandle;
};

TEST_F(PosixFileSystemTest, ReadsBackWhatItWrote) {
  const auto file = files_.Create(Path("a.adr"), error_);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(error_, kErrorSuccess);
  EXPECT_EQ(file->Write(Bytes("one;")), kErrorSuccess);
  EXPECT_EQ(file->Write({}), kErrorSuccess);
  EXPECT_EQ(file->Write(Bytes(std::string("two\0;", 5))), kErrorSuccess);
  EXPECT_EQ(file->Close(), kErrorSuccess);
  EXPECT_EQ(Content("a.adr"), std::string("one;two\0;", 9));
}

TEST_F(PosixFileSystemTest, CreateReplacesAnExistingFile) {
  folder_.Write("a.adr", "something much longer");
  ASSERT_NE(files_.Create(Path("a.adr"), error_), nullptr);
  EXPECT_EQ(Content("a.adr"), "");
}

TEST_F(PosixFileSystemTest, TakesFileNamesOfAnyLanguage) {
  const auto file =
      files_.Create(FromUtf8((folder_.path() / "p\xC5\x99\xC3\xADtel\xC3\xA9.sms").string()), error_);
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(std::filesystem::exists(folder_.path() / "p\xC5\x99\xC3\xADtel\xC3\xA9.sms"));
}

TEST_F(PosixFileSystemTest, AnEmptyFileIsOpenWithoutData) {
  folder_.Write("empty", "");
  const auto file = files_.Map(Path("empty"), error_);
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->bytes().empty());
}

TEST_F(PosixFileSystemTest, TheContentStaysWhenTheFileIsCutShort) {
  folder_.Write("a", std::string(100000, 'x'));
  const auto file = files_.Map(Path("a"), error_);
  ASSERT_NE(file, nullptr);
  std::filesystem::resize_file(folder_.path() / "a", 0);
  const std::string content(file->bytes().begin(), file->bytes().end());
  EXPECT_EQ(content, std::string(100000, 'x'));
}

// The kernel's own files say that they are a page long, and end before.
TEST_F(PosixFileSystemTest, RefusesAFileThatEndsBeforeItsLength) {
  constexpr const char* kFile = "/sys/devices/system/cpu/online";
  ASSERT_GT(std::filesystem::file_size(kFile), 100U);
  EXPECT_EQ(files_.Map(FromUtf8(kFile), error_), nullptr);
  EXPECT_EQ(error_, kErrorReadFault);
}

TEST_F(PosixFileSystemTest, ReadsAllOrFailsWhileAnotherCutsTheFile) {
  constexpr std::size_t kSize = 1 << 20;
  folder_.Write("a", std::string(kSize, '\0'));
  std::atomic<bool> done = false;
  std::thread cutter([&] {
    while (!done) {
      std::filesystem::resize_file(folder_.path() / "a", 10);
      std::filesystem::resize_file(folder_.path() / "a", kSize);
    }
  });
  for (int round = 0; round < 200; ++round) {
    const auto file = files_.Map(Path("a"), error_);
    if (file == nullptr) {
      EXPECT_EQ(error_, kErrorReadFault);
    } else {
      EXPECT_TRUE(file->bytes().size() == kSize || file->bytes().size() == 10) << file->bytes().size();
    }
  }
  done = true;
  cutter.join();
}

TEST_F(PosixFileSystemTest, RefusesAFileBeyondTheLimitAtOnce) {
  folder_.Write("huge", "AddrArchive10;");
  std::filesystem::resize_file(folder_.path() / "huge", std::uintmax_t{1} << 30);
  EXPECT_EQ(files_.Map(Path("huge"), error_), nullptr);
  EXPECT_EQ(error_, kErrorFileTooLarge);
  std::filesystem::resize_file(folder_.path() / "huge", FileSystem::kLargestFile);
  const auto largest = files_.Map(Path("huge"), error_);
  ASSERT_NE(largest, nullptr);
  EXPECT_EQ(largest->bytes().size(), FileSystem::kLargestFile);
}

// Root may read everything, so it looks with another user's eyes.
TEST_F(PosixFileSystemTest, TellsThatAFileMayNotBeRead) {
  constexpr uid_t kNobody = 65534;
  folder_.Write("secret", "x");
  ASSERT_EQ(::chmod((folder_.path() / "secret").c_str(), 0), 0);
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
  const uid_t user = ::geteuid();
  if (user == 0) {
    ASSERT_EQ(::seteuid(kNobody), 0);
  }
  EXPECT_EQ(files_.Map(Path("secret"), error_), nullptr);
  EXPECT_EQ(error_, kErrorAccessDenied);
  EXPECT_EQ(files_.Create(Path("secret"), error_), nullptr);
  EXPECT_EQ(error_, kErrorAccessDenied);
  ASSERT_EQ(::seteuid(user), 0);
}

TEST_F(PosixFileSystemTest, MapsALargeFileWhole) {
  folder_.Write("large", std::string(3000001, 'x'));
  EXPECT_EQ(Content("large").size(), 3000001U);
}

TEST_F(PosixFileSystemTest, AMappingOutlivesTheFilesName) {
  folder_.Write("a", "content");
  const auto file = files_.Map(Path("a"), error_);
  std::filesystem::remove(folder_.path() / "a");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->bytes().size(), 7U);
}

TEST_F(PosixFileSystemTest, TellsThatAFileOrItsFolderIsMissing) {
  EXPECT_EQ(files_.Map(Path("none"), error_), nullptr);
  EXPECT_EQ(error_, kErrorFileNotFound);
  EXPECT_EQ(files_.Create(Path("none/a"), error_), nullptr);
  EXPECT_EQ(error_, kErrorPathNotFound);
  folder_.Write("file", "");
  EXPECT_EQ(files_.Create(Path("file/a"), error_), nullptr);
  EXPECT_EQ(error_, kErrorPathNotFound);
  EXPECT_EQ(files_.Map({}, error_), nullptr);
  EXPECT_EQ(error_, kErrorFileNotFound);
}

TEST_F(PosixFileSystemTest, RefusesFoldersAndPipesAtOnce) {
  EXPECT_EQ(files_.Map(Path(""), error_), nullptr);
  EXPECT_EQ(error_, kErrorAccessDenied);
  EXPECT_EQ(files_.Create(Path(""), error_), nullptr);
  EXPECT_EQ(error_, kErrorAccessDenied);
  ASSERT_EQ(::mkfifo((folder_.path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(files_.Map(Path("pipe"), error_), nullptr);
  EXPECT_EQ(error_, kErrorAccessDenied);
  EXPECT_EQ(files_.Create(Path("pipe"), error_), nullptr);
  EXPECT_EQ(error_, kErrorAccessDenied);
}

TEST_F(PosixFileSystemTest, RefusesDevicesAtOnce) {
  for (const std::u16string_view device : {u"/dev/zero", u"/dev/null", u"/dev/tty", u"/dev/random"}) {
    EXPECT_EQ(files_.Map(device, error_), nullptr);
    EXPECT_NE(error_, kErrorSuccess);
  }
}

TEST_F(PosixFileSystemTest, WritesToNoPipeThatIsRead) {
  const std::string pipe = (folder_.path() / "pipe").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const Descriptor reader(::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  ASSERT_TRUE(reader.valid());
  EXPECT_EQ(files_.Create(Path("pipe"), error_), nullptr);
  EXPECT_EQ(error_, kErrorAccessDenied);
}

TEST_F(PosixFileSystemTest, AFileSizeLimitIsAFullDisk) {
  std::signal(SIGXFSZ, SIG_DFL);
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  rlimit limit = before;
  limit.rlim_cur = 1000;
  const auto file = files_.Create(Path("a"), error_);
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  const SystemError error = file->Write(Bytes(std::string(5000, 'x')));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  EXPECT_EQ(error, kErrorDiskFull);
  EXPECT_EQ(Content("a"), std::string(1000, 'x'));
}

TEST_F(PosixFileSystemTest, TellsThatTheDiskIsFull) {
  const auto file = files_.Create(u"/dev/full", error_);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->Write(Bytes("x")), kErrorDiskFull);
}

TEST_F(PosixFileSystemTest, TakesNoWritesAfterTheClose) {
  const auto file = files_.Create(Path("a"), error_);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->Close(), kErrorSuccess);
  EXPECT_EQ(file->Write(Bytes("x")), kErrorInvalidHandle);
  EXPECT_EQ(file->Close(), kErrorSuccess);
}

/// The descriptor of an open file; -1 when there is none.
int DescriptorOf(const std::filesystem::path& path) {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code error;
    if (std::filesystem::read_symlink(entry.path(), error) == path)
      return std::stoi(entry.path().filename().string());
  }
  return -1;
}

TEST_F(PosixFileSystemTest, TellsWhatOnlyTheCloseFinds) {
  const auto file = files_.Create(Path("a"), error_);
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(::close(DescriptorOf(folder_.path() / "a")), 0);
  EXPECT_EQ(file->Close(), kErrorInvalidHandle);
}

TEST(FromErrno, GivesTheSystemsCodes) {
  EXPECT_EQ(FromErrno(0), kErrorSuccess);
  EXPECT_EQ(FromErrno(ENOENT), 2U);
  EXPECT_EQ(FromErrno(ENOTDIR), 3U);
  for (const int code : {EMFILE, ENFILE}) EXPECT_EQ(FromErrno(code), 4U) << code;
  for (const int code : {EACCES, EPERM, EROFS, EISDIR, ENXIO, ETXTBSY})
    EXPECT_EQ(FromErrno(code), 5U) << code;
  EXPECT_EQ(FromErrno(EBADF), 6U);
  EXPECT_EQ(FromErrno(ENOMEM), 8U);
  for (const int code : {ENOSPC, EDQUOT, EFBIG}) EXPECT_EQ(FromErrno(code), 112U) << code;
  for (const int code : {ENAMETOOLONG, ELOOP}) EXPECT_EQ(FromErrno(code), 123U) << code;
  EXPECT_EQ(FromErrno(EIO), 31U);
}

TEST_F(PosixFileSystemTest, MakesFoldersOnTheWay) {
  EXPECT_EQ(files_.MakeFolder(Path("a/b/c")), kErrorSuccess);
  EXPECT_EQ(files_.MakeFolder(Path("a/b/c")), kErrorSuccess);
  EXPECT_TRUE(std::filesystem::is_directory(folder_.path() / "a" / "b" / "c"));
  folder_.Write("file", "x");
  EXPECT_NE(files_.MakeFolder(Path("file/b")), kErrorSuccess);
}

TEST_F(PosixFileSystemTest, NamesWhatAFolderHolds) {
  folder_.Write("\xC4\x8D.adr", "x");
  EXPECT_EQ(files_.Names(Path("")), std::vector<std::u16string>{u"\u010D.adr"});
  EXPECT_TRUE(files_.Names(Path("nothing")).empty());
}

TEST_F(PosixFileSystemTest, RenamesAndRemoves) {
  folder_.Write("a", "new");
  folder_.Write("b", "old");
  EXPECT_EQ(files_.Rename(Path("a"), Path("b")), kErrorSuccess);
  EXPECT_EQ(Content("b"), "new");
  EXPECT_EQ(files_.Rename(Path("a"), Path("b")), kErrorFileNotFound);
  EXPECT_EQ(files_.Remove(Path("b")), kErrorSuccess);
  EXPECT_EQ(files_.Remove(Path("b")), kErrorFileNotFound);
}

}  // namespace
}  // namespace celldesk
