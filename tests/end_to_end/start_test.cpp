// What a first start leaves on the disk.

#include <gtest/gtest.h>

#include <QTest>
#include <fstream>
#include <iterator>
#include <string>

#include "end_to_end/program_session.h"

namespace celldesk {
namespace {

std::string TextOf(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Start, OffersAContactsFolderOnceTheWindowIsPainted) {
  const FreshHome home;
  const std::string settings = home.File("config/celldesk/settings.ini"), before = TextOf(settings);
  ASSERT_EQ(before.find("ContactsDatabase"), before.npos);
  const ProgramSession session;
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return TextOf(settings).find("ContactsDatabase = string:/") != before.npos; }, 30000));
}

}  // namespace
}  // namespace celldesk
