// The documents are part of the phone: what they name exists, and what exists is named.

#include <gtest/gtest.h>

#include "phone_driver.h"
#include "simulator/phone_state.h"
#include "simulator/posix/state_file.h"
#include "support/paths.h"

namespace celldesk::simulator {
namespace {

std::string Document(const std::string& name) {
  const auto text = ReadFile(SourceFolder() + "/docs/" + name);
  EXPECT_TRUE(text.has_value()) << name;
  return text.value_or("");
}

/// The text between the n-th pair of code fences, from 0.
std::string CodeBlock(const std::string& text, int n) {
  std::size_t at = 0;
  for (int fence = 0; fence < n * 2; ++fence) at = text.find("```", at) + 3;
  const std::size_t begin = text.find('\n', text.find("```", at)) + 1;
  return text.substr(begin, text.find("```", begin) - begin);
}

TEST(Documents, NameEveryProfileAndFault) {
  const std::string text = Document("simulator.md");
  for (const ProfileInfo& info : Profiles()) {
    EXPECT_NE(text.find("| `" + std::string(info.name) + "` | " + std::string(info.description)), text.npos)
        << info.name;
  }
  for (const std::string& kind : FaultKindNames())
    EXPECT_NE(text.find("| `" + kind + "` |"), text.npos) << kind;
}

TEST(Documents, NameEveryExtendedCommand) {
  const std::string text = Document("simulator.md");
  SimulatedPhone phone = QuietPhone();
  const std::string list = Ask(phone, "AT+CLAC");
  int names = 0;
  for (std::size_t at = list.find("AT+"); at != list.npos; at = list.find("AT+", at + 1)) {
    const std::string name = list.substr(at + 2, list.find('\r', at) - at - 2);
    EXPECT_NE(text.find(name), text.npos) << name;
    ++names;
  }
  EXPECT_GT(names, 40);
}

TEST(Documents, TheExampleOfTheStateFormatLoads) {
  std::string error;
  const auto memory = LoadState(CodeBlock(Document("formats/phone_state.md"), 1), &error);
  ASSERT_TRUE(memory.has_value()) << error;
  EXPECT_EQ(memory->FindPhonebook("SM")->entries.at(4).name, u"Dieter J\u00E4ger");
  SimulatedPhone phone = QuietPhone("default", *memory);
  EXPECT_EQ(Ask(phone, "AT+CPBR=?"), Answer({"+CPBR: (1-99999999),40,20"}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=1").substr(0, 14), "\r\n+CMGR: 1,,44");
}

}  // namespace
}  // namespace celldesk::simulator
