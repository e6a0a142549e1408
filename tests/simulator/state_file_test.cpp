#include "simulator/posix/state_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "temporary_folder.h"

namespace celldesk::simulator {
namespace {

TEST(StateFile, ReadsWhatItWrote) {
  const TemporaryFolder folder;
  const std::string text("line\n\0binary\xFF", 13);
  ASSERT_TRUE(ReplaceFile(folder.File("state"), text));
  EXPECT_EQ(ReadFile(folder.File("state")), text);
}

TEST(StateFile, ReplacesTheWholeFileAndLeavesNoOther) {
  const TemporaryFolder folder;
  ASSERT_TRUE(ReplaceFile(folder.File("state"), "a long first text"));
  ASSERT_TRUE(ReplaceFile(folder.File("state"), "short"));
  EXPECT_EQ(ReadFile(folder.File("state")), "short");
  int files = 0;
  for ([[maybe_unused]] const auto& file : std::filesystem::directory_iterator(folder.path())) ++files;
  EXPECT_EQ(files, 1);
}

TEST(StateFile, AMissingFileHasNoText) {
  const TemporaryFolder folder;
  EXPECT_FALSE(ReadFile(folder.File("nothing")).has_value());
}

TEST(StateFile, AFolderThatIsMissingIsAFailure) {
  const TemporaryFolder folder;
  EXPECT_FALSE(ReplaceFile(folder.File("no/folder"), "text"));
}

}  // namespace
}  // namespace celldesk::simulator
