#include "platform/posix/posix_file_adder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/child_process.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

class PosixFileAdderTest : public testing::Test {
 protected:
  std::u16string Path(const std::string& name) const { return FromUtf8((folder_.path() / name).string()); }
  std::string Content(const std::string& name) const {
    std::ifstream stream(folder_.path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  std::size_t FileCount() const {
    const std::filesystem::directory_iterator files(folder_.path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  TemporaryFolder folder_;
  PosixFileAdder adder_;
};

TEST_F(PosixFileAdderTest, AddsAFileAndNothingBesides) {
  const std::string content("one\r\n\0two", 9);
  EXPECT_EQ(adder_.Add(Path("a.vcf"), content), kErrorSuccess);
  EXPECT_EQ(Content("a.vcf"), content);
  EXPECT_EQ(adder_.Add(Path("empty.vcf"), ""), kErrorSuccess);
  EXPECT_EQ(FileCount(), 2U);
}

TEST_F(PosixFileAdderTest, TakesFileNamesOfAnyLanguage) {
  EXPECT_EQ(adder_.Add(Path("p\xC5\x99\xC3\xADtel.vcf"), "x"), kErrorSuccess);
  EXPECT_EQ(Content("p\xC5\x99\xC3\xADtel.vcf"), "x");
}

TEST_F(PosixFileAdderTest, WritesLargeContentWhole) {
  const std::string content(3'000'000, 'x');
  EXPECT_EQ(adder_.Add(Path("large.vcf"), content), kErrorSuccess);
  EXPECT_TRUE(Content("large.vcf") == content);
}

TEST_F(PosixFileAdderTest, ANewFileHasTheRightsThatTheUserGivesNewFiles) {
  const mode_t before = ::umask(027);
  EXPECT_EQ(adder_.Add(Path("a.vcf"), "x"), kErrorSuccess);
  ::umask(before);
  struct stat facts {};
  ASSERT_EQ(::stat((folder_.path() / "a.vcf").c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777, 0640U);
}

TEST_F(PosixFileAdderTest, ANameThatIsTakenKeepsWhatItHas) {
  folder_.Write("a.vcf", "old");
  std::filesystem::create_directory(folder_.path() / "folder.vcf");
  std::filesystem::create_symlink("nowhere", folder_.path() / "link.vcf");
  EXPECT_EQ(adder_.Add(Path("a.vcf"), "new"), kErrorFileExists);
  EXPECT_EQ(adder_.Add(Path("folder.vcf"), "new"), kErrorFileExists);
  EXPECT_EQ(adder_.Add(Path("link.vcf"), "new"), kErrorFileExists);
  EXPECT_EQ(Content("a.vcf"), "old");
  EXPECT_EQ(FileCount(), 3U);
}

TEST_F(PosixFileAdderTest, AHiddenFileInTheWayIsNotWrittenTo) {
  folder_.Write("target", "old");
  std::filesystem::create_symlink("target", folder_.path() / ".a.vcf.tmp");
  EXPECT_EQ(adder_.Add(Path("a.vcf"), "new"), kErrorFileExists);
  EXPECT_EQ(Content("target"), "old");
}

TEST_F(PosixFileAdderTest, AFolderThatIsNotThereOrNoFolderIsAnError) {
  folder_.Write("file", "x");
  EXPECT_EQ(adder_.Add(Path("missing/a.vcf"), "x"), kErrorFileNotFound);
  EXPECT_EQ(adder_.Add(Path("file/a.vcf"), "x"), kErrorPathNotFound);
  EXPECT_EQ(FileCount(), 1U);
}

TEST_F(PosixFileAdderTest, AFolderThatMayNotBeWrittenIsAnError) {
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0555), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    return adder_.Add(Path("a.vcf"), "x") == kErrorAccessDenied ? 0 : 1;
  });
  EXPECT_EQ(user.ExitCode(), 0);
  EXPECT_EQ(FileCount(), 0U);
}

TEST_F(PosixFileAdderTest, AWriteThatFailsLeavesNothing) {
  ChildProcess limited([&] {
    std::signal(SIGXFSZ, SIG_DFL);
    const rlimit limit{1000, 1000};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 1;
    return adder_.Add(Path("a.vcf"), std::string(2000, 'x')) == kErrorDiskFull ? 0 : 2;
  });
  EXPECT_EQ(limited.ExitCode(), 0);
  EXPECT_EQ(FileCount(), 0U);
}

}  // namespace
}  // namespace celldesk
