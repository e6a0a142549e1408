#include "simulator/posix/port_entry.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "temporary_folder.h"

namespace celldesk::simulator {
namespace {

namespace fs = std::filesystem;

TEST(PortEntry, TheFolderIsInTheRuntimeDirectory) {
  const TemporaryFolder folder;
  EXPECT_EQ(PortFolder(), folder.path() + "/celldesk/ports");
}

TEST(PortEntry, WithoutARuntimeDirectoryTheFolderIsPrivateBelowTmp) {
  const TemporaryFolder folder;
  const std::string expected = "/tmp/celldesk-" + std::to_string(getuid()) + "/ports";
  unsetenv("XDG_RUNTIME_DIR");
  EXPECT_EQ(PortFolder(), expected);
  setenv("XDG_RUNTIME_DIR", "", 1);
  EXPECT_EQ(PortFolder(), expected);
}

TEST(PortEntry, IsALinkToItsDeviceWhileItLives) {
  const TemporaryFolder folder;
  const std::string path = PortFolder() + "/Phone";
  {
    PortEntry entry;
    ASSERT_TRUE(entry.Place("Phone", "/dev/pts/900"));
    EXPECT_EQ(fs::read_symlink(path), "/dev/pts/900");
    EXPECT_EQ(fs::status(PortFolder()).permissions(), fs::perms::owner_all);
  }
  EXPECT_FALSE(fs::is_symlink(path));
  EXPECT_TRUE(fs::is_empty(PortFolder()));
}

TEST(PortEntry, TakesThePlaceOfAStaleOne) {
  const TemporaryFolder folder;
  fs::create_directories(PortFolder());
  fs::create_symlink("/dev/pts/gone", PortFolder() + "/Phone");
  PortEntry entry;
  ASSERT_TRUE(entry.Place("Phone", "/dev/pts/900"));
  EXPECT_EQ(fs::read_symlink(PortFolder() + "/Phone"), "/dev/pts/900");
}

TEST(PortEntry, LeavesTheEntryOfAnotherProgramAlone) {
  const TemporaryFolder folder;
  PortEntry older;
  PortEntry newer;
  ASSERT_TRUE(older.Place("Phone", "/dev/pts/900"));
  ASSERT_TRUE(newer.Place("Phone", "/dev/pts/901"));
  older.Remove();
  EXPECT_EQ(fs::read_symlink(PortFolder() + "/Phone"), "/dev/pts/901");
}

TEST(PortEntry, AFileInTheWayIsAFailure) {
  const TemporaryFolder folder;
  std::ofstream(folder.File("celldesk")) << "in the way";
  PortEntry entry;
  EXPECT_FALSE(entry.Place("Phone", "/dev/pts/900"));
}

}  // namespace
}  // namespace celldesk::simulator
