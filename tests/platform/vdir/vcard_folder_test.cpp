#include "platform/vdir/vcard_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <utility>

#include "support/child_process.h"
#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Optional;

TEST(VcardFileNames, AreTheVisibleRegularFilesThatEndInVcfSorted) {
  const TemporaryFolder folder;
  for (const char* name : {"b.vcf", "a.VCF", "C.vcf", "a.vcf", "\xC5\x98.vcf", "bad\xFF.vcf", ".hidden.vcf",
                           ".vcf", "a.vcf.tmp", "a.txt", "vcf", "sub.d/x.vcf"})
    folder.Write(name, "x");
  fs::create_directory(folder.path() / "folder.vcf");
  fs::create_symlink("b.vcf", folder.path() / "link.vcf");
  fs::create_symlink("nowhere", folder.path() / "dangling.vcf");
  ASSERT_EQ(::mkfifo((folder.path() / "pipe.vcf").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", folder.path() / "device.vcf");
  EXPECT_THAT(
      VcardFileNames(folder.path()),
      Optional(ElementsAre("C.vcf", "a.VCF", "a.vcf", "b.vcf", "bad\xFF.vcf", "link.vcf", "\xC5\x98.vcf")));
}

TEST(VcardFileNames, AreNoneWithoutAFolder) {
  const TemporaryFolder folder;
  folder.Write("file.vcf", "x");
  EXPECT_EQ(VcardFileNames(folder.path() / "missing"), std::nullopt);
  EXPECT_EQ(VcardFileNames(folder.path() / "file.vcf"), std::nullopt);
  EXPECT_EQ(VcardFileNames(""), std::nullopt);
}

TEST(VcardFileNames, AreNoneWhereTheFolderMayNotBeRead) {
  const TemporaryFolder folder;
  folder.Write("a.vcf", "x");
  ASSERT_EQ(::chmod(folder.path().c_str(), 0300), 0);
  ChildProcess user([&] {
    BecomeOrdinaryUser();
    return VcardFileNames(folder.path()) ? 1 : 0;
  });
  EXPECT_EQ(user.ExitCode(), 0);
}

/// A home of its own while the object lives.
class DefaultContactsFolderTest : public testing::Test {
 protected:
  DefaultContactsFolderTest() {
    for (const char* name : {"HOME", "XDG_DATA_HOME"}) {
      const char* value = ::getenv(name);
      before_.emplace_back(name, value != nullptr ? std::optional<std::string>(value) : std::nullopt);
    }
    Set("HOME", home_.path().string());
    Set("XDG_DATA_HOME", std::nullopt);
  }
  ~DefaultContactsFolderTest() override {
    for (const auto& [name, value] : before_) Set(name, value);
  }

  static void Set(const char* name, const std::optional<std::string>& value) {
    EXPECT_EQ(value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name), 0);
  }
  std::string InHome(const fs::path& path) const { return (home_.path() / path).string(); }
  static std::string Default() { return ToUtf8(DefaultContactsFolder()); }

  const TemporaryFolder home_;
  std::vector<std::pair<const char*, std::optional<std::string>>> before_;
};

TEST_F(DefaultContactsFolderTest, IsMadeInTheDataFolderForTheUserAlone) {
  EXPECT_EQ(Default(), InHome(".local/share/contacts"));
  struct stat facts {};
  ASSERT_EQ(::stat(InHome(".local/share/contacts").c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777, 0700U);
  EXPECT_EQ(Default(), InHome(".local/share/contacts")) << "and used from then on";
}

TEST_F(DefaultContactsFolderTest, AFolderThatIsThereKeepsItsRights) {
  fs::create_directories(InHome(".local/share/contacts"));
  fs::permissions(InHome(".local/share/contacts"), fs::perms(0750));
  EXPECT_EQ(Default(), InHome(".local/share/contacts"));
  EXPECT_EQ(fs::status(InHome(".local/share/contacts")).permissions(), fs::perms(0750));
}

TEST_F(DefaultContactsFolderTest, FollowsTheDataFolderOfTheEnvironment) {
  Set("XDG_DATA_HOME", InHome("data"));
  EXPECT_EQ(Default(), InHome("data/contacts"));
  Set("XDG_DATA_HOME", "relative/is/no/setting");
  EXPECT_EQ(Default(), InHome(".local/share/contacts"));
  Set("XDG_DATA_HOME", "");
  EXPECT_EQ(Default(), InHome(".local/share/contacts"));
}

TEST_F(DefaultContactsFolderTest, AFolderWithVcardsIsPreferred) {
  fs::create_directories(InHome(".local/share/contacts/empty"));
  home_.Write(".contacts/a.vcf", "x");
  EXPECT_EQ(Default(), InHome(".contacts"));
  home_.Write(".local/share/contacts/a.vcf", "x");
  EXPECT_EQ(Default(), InHome(".local/share/contacts"));
}

TEST_F(DefaultContactsFolderTest, ACollectionInASubfolderIsFound) {
  home_.Write(".contacts/.git/a.vcf", "x");
  home_.Write(".contacts/b.txt", "x");
  home_.Write(".contacts/office/a.vcf", "x");
  home_.Write(".contacts/friends/a.vcf", "x");
  home_.Write(".contacts/aunts/a.txt", "x");
  EXPECT_EQ(Default(), InHome(".contacts/friends"));
}

TEST_F(DefaultContactsFolderTest, IsEmptyWhereNoneCanBe) {
  home_.Write(".local", "a file in the way");
  EXPECT_EQ(Default(), "");
  Set("HOME", std::nullopt);
  EXPECT_EQ(Default(), "");
}

}  // namespace
}  // namespace celldesk
