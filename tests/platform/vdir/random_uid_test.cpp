#include "platform/vdir/random_uid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace celldesk {
namespace {

TEST(RandomUid, IsARandomUuidAndEachOneAnother) {
  std::set<std::string> seen;
  for (int i = 0; i < 200; ++i) {
    const std::string uid = RandomUid();
    EXPECT_THAT(uid,
                testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
    seen.insert(uid);
  }
  EXPECT_EQ(seen.size(), 200U);
}

}  // namespace
}  // namespace celldesk
