#include "platform/posix/posix_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

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

TEST(FromErrno, GivesTheSystemsCodes) {
  EXPECT_EQ(FromErrno(0), kErrorSuccess);
  EXPECT_EQ(FromErrno(ENOENT), 2U);
  EXPECT_EQ(FromErrno(ENOTDIR), 3U);
  EXPECT_EQ(FromErrno(EMFILE), 4U);
  EXPECT_EQ(FromErrno(EACCES), 5U);
  EXPECT_EQ(FromErrno(EROFS), 5U);
  EXPECT_EQ(FromErrno(EBADF), 6U);
  EXPECT_EQ(FromErrno(ENOMEM), 8U);
  EXPECT_EQ(FromErrno(ENOSPC), 112U);
  EXPECT_EQ(FromErrno(ENAMETOOLONG), 123U);
  EXPECT_EQ(FromErrno(EIO), 31U);
}

}  // namespace
}  // namespace celldesk
