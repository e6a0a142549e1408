#include "platform/qt/qt_shell.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "support/temporary_folder.h"
#include "util/text.h"

namespace celldesk {
namespace {

class QtShellTest : public testing::Test {
 protected:
  void SetUp() override { ::unsetenv("CELLDESK_HELP"); }
  void TearDown() override { ::unsetenv("CELLDESK_HELP"); }

  void UseHelp(const std::filesystem::path& path) { ::setenv("CELLDESK_HELP", path.c_str(), 1); }
  std::filesystem::path File(const std::filesystem::path& name) const {
    folder_.Write(name, "<html></html>");
    return folder_.path() / name;
  }
  std::u16string Found(const std::filesystem::path& program) const {
    return FindHelpPage(u"CellDesk.htm", FromUtf8((folder_.path() / program).string()));
  }

  TemporaryFolder folder_;
  std::vector<std::u16string> opened_;
  bool opens_ = true;
  QtShell shell_{[this](const std::u16string& url) {
    opened_.push_back(url);
    return opens_;
  }};
};

TEST_F(QtShellTest, HelpOpensThePageAtItsTopic) {
  UseHelp(File("help/CellDesk.htm").parent_path());
  EXPECT_TRUE(shell_.OpenHelp(u"file:CellDesk.htm#main_contents"));
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_EQ(opened_[0],
            FromUtf8("file://" + (folder_.path() / "help/CellDesk.htm").string() + "#main_contents"));
}

TEST_F(QtShellTest, APathWithBlanksAndSignsMakesAProperUrl) {
  UseHelp(File("my help #1/CellDesk.htm").parent_path());
  EXPECT_TRUE(shell_.OpenHelp(u"file:CellDesk.htm#main_contents"));
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_TRUE(opened_[0].ends_with(u"/my%20help%20%231/CellDesk.htm#main_contents"));
}

TEST_F(QtShellTest, ATopicNeedsNeitherSchemeNorMark) {
  UseHelp(File("CellDesk.htm"));
  EXPECT_TRUE(shell_.OpenHelp(u"CellDesk.htm"));
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_TRUE(opened_[0].ends_with(u"/CellDesk.htm"));
}

TEST_F(QtShellTest, AViewerThatDoesNotStartIsReported) {
  UseHelp(File("CellDesk.htm"));
  opens_ = false;
  EXPECT_FALSE(shell_.OpenHelp(u"file:CellDesk.htm#main_contents"));
}

TEST_F(QtShellTest, APageThatIsNowhereOpensNothing) {
  EXPECT_FALSE(shell_.OpenHelp(u"file:NoSuchPage.htm#main_contents"));
  EXPECT_TRUE(opened_.empty());
}

TEST_F(QtShellTest, TheInstalledPageIsFoundBesideTheProgram) {
  const auto page = File("usr/share/celldesk/help/CellDesk.htm");
  EXPECT_EQ(Found("usr/bin/celldesk"), FromUtf8(page.string()));
}

TEST_F(QtShellTest, AProgramInABuildFolderFindsThePageOfItsSourceTree) {
  const auto page = File("tree/src/ui/resources/help/CellDesk.htm");
  EXPECT_EQ(Found("tree/build/dev/bin/celldesk"), FromUtf8(page.string()));
  EXPECT_EQ(Found("elsewhere/bin/celldesk"), u"");
}

TEST_F(QtShellTest, TheEnvironmentComesBeforeTheInstalledPage) {
  (void)File("usr/share/celldesk/help/CellDesk.htm");
  const auto given = File("given/CellDesk.htm");
  UseHelp(given.parent_path());
  EXPECT_EQ(Found("usr/bin/celldesk"), FromUtf8(given.string()));
}

TEST_F(QtShellTest, TheProgramKnowsItsOwnPath) {
  EXPECT_EQ(shell_.ProgramPath(), std::filesystem::canonical("/proc/self/exe").u16string());
  EXPECT_TRUE(std::filesystem::exists(shell_.ProgramPath()));
}

TEST_F(QtShellTest, FileTypesComeWithThePackage) { EXPECT_FALSE(shell_.RegistersFileTypes()); }

TEST_F(QtShellTest, TheUsersFilesAreInTheDataFolder) {
  const char* found = ::getenv("XDG_DATA_HOME");
  const std::string before = found ? found : "";
  ::setenv("XDG_DATA_HOME", folder_.path().c_str(), 1);
  EXPECT_EQ(shell_.DataFolder(), FromUtf8((folder_.path() / "celldesk").string()));
  found ? ::setenv("XDG_DATA_HOME", before.c_str(), 1) : ::unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace celldesk
