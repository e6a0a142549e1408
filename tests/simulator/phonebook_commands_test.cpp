#include <gtest/gtest.h>

#include "phone_driver.h"

namespace celldesk::simulator {
namespace {

/// A small book: three people, ten places.
PhoneMemory SmallMemory() {
  PhoneMemory memory;
  Phonebook& book = *memory.FindPhonebook("SM");
  book.last = 10;
  book.number_length = 12;
  book.name_length = 8;
  book.entries[1] = {"+447700900101", 145, u"Anna"};
  book.entries[3] = {"07700900103", 129, u"J\u00E4ger"};
  book.entries[10] = {"112", 129, u"An @"};
  return memory;
}

const Phonebook& Sim(const SimulatedPhone& phone) { return *phone.memory().FindPhonebook("SM"); }

TEST(PhonebookCommands, AnswersEachAsItShould) {
  const struct {
    std::string_view line;
    std::string answer;
  } kTable[] = {
      {"AT+CPBS=?", Answer({R"(+CPBS: ("SM","ME","ON","DC","RC","MC"))"})},
      {"AT+CPBS?", Answer({R"(+CPBS: "SM",3,10)"})},
      {"AT+CPBS=\"ME\";+CPBS?", Answer({R"(+CPBS: "ME",0,500)"})},
      {"AT+CPBS=\"sm\"", kOk},
      {"AT+CPBS=\"XX\"", CmeError(3)},
      {"AT+CPBS", CmeError(3)},
      {"AT+CPBR=?", Answer({"+CPBR: (1-10),12,8"})},
      {"AT+CPBR=1", Answer({R"(+CPBR: 1,"+447700900101",145,"Anna")"})},
      {"AT+CPBR=2", kOk},
      {"AT+CPBR=1,2", Answer({R"(+CPBR: 1,"+447700900101",145,"Anna")"})},
      {"AT+CPBR=4,9", kOk},
      {"AT+CPBR=5,1", kOk},
      {"AT+CPBR=0", CmeError(21)},
      {"AT+CPBR=11", CmeError(21)},
      {"AT+CPBR=1,11", CmeError(21)},
      {"AT+CPBR=x", CmeError(21)},
      {"AT+CPBR=", CmeError(21)},
      {"AT+CPBR", kError},
      {"AT+CPBF=?", Answer({"+CPBF: 12,8"})},
      {"AT+CPBF=\"ann\"", Answer({R"(+CPBF: 1,"+447700900101",145,"Anna")"})},
      {"AT+CPBF=\"X\"", kOk},
      {"AT+CPBF", CmeError(25)},
      {"AT+CPBW=?", Answer({"+CPBW: (1-10),12,(129,145),8"})},
      {"AT+CPBW", kError},
      {"AT+CPBW=11,\"1\"", CmeError(21)},
      {"AT+CPBW=", CmeError(21)},
      {"AT+CPBW=2,\"1234567890123\",129,\"x\"", CmeError(26)},
      {"AT+CPBW=2,\"123456789012\",129,\"x\"", kOk},
      {"AT+CPBW=2,\"+123456789012\",145,\"x\"", kOk},
      {"AT+CPBW=2,\"1\",129,\"123456789\"", CmeError(24)},
      {"AT+CPBW=2,\"1\",129,\"12345678\"", kOk},
      {"AT+CPBW=2,\"12 34\",129,\"x\"", CmeError(27)},
      {"AT+CPBW=2,\"12ab\",129,\"x\"", CmeError(27)},
      {"AT+CPBW=2,\"1\",7,\"x\"", CmeError(27)},
      {"AT+CPBW=2,\"*#100#\",255,\"x\"", kOk},
      {"AT+CPBS=\"DC\";+CPBW=1,\"1\"", CmeError(3)},
  };
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone("cme-errors", SmallMemory());
    EXPECT_EQ(Ask(phone, row.line), row.answer) << row.line;
  }
}

TEST(PhonebookCommands, WritesNamesInTheDefaultAlphabet) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  using std::string_literals::operator""s;
  EXPECT_EQ(Ask(phone, "AT+CPBR=3,10"),
            Answer({"+CPBR: 3,\"07700900103\",129,\"J\x7Bger\"", "+CPBR: 10,\"112\",129,\"An \0\""s}));
}

TEST(PhonebookCommands, WritesNamesAndNumbersInUcs2) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  EXPECT_EQ(
      Ask(phone, "AT+CSCS=\"UCS2\";+CPBR=3"),
      Answer({R"(+CPBR: 3,"00300037003700300030003900300030003100300033",129,"004A00E4006700650072")"}));
}

TEST(PhonebookCommands, TakesNamesInEveryCharacterSet) {
  const struct {
    std::string_view set;
    std::string_view arguments;
  } kTable[] = {{"GSM", "\"0770\",129,\"J\x7Bg\""},
                {"UCS2", "\"0030003700370030\",129,\"004A00E40067\""},
                {"UCS2", "\"0770\",129,\"004A00E40067\""},
                {"HEX", "\"30373730\",129,\"4A7B67\""}};
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone("default", SmallMemory());
    ASSERT_EQ(Ask(phone, "AT+CSCS=\"" + std::string(row.set) + '"'), kOk);
    EXPECT_EQ(Ask(phone, "AT+CPBW=2," + std::string(row.arguments)), kOk) << row.arguments;
    EXPECT_EQ(Sim(phone).entries.at(2), (PhonebookEntry{"0770", 129, u"J\u00E4g"})) << row.arguments;
  }
}

TEST(PhonebookCommands, RefusesAUcs2NameThatIsNone) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  EXPECT_EQ(Ask(phone, "AT+CSCS=\"UCS2\";+CPBW=2,\"0770\",129,\"Anna\""), kError);
  EXPECT_FALSE(Sim(phone).entries.contains(2));
}

TEST(PhonebookCommands, WritesReplacesAndErasesALocation) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  ASSERT_EQ(Ask(phone, "AT+CPBW=7,\"1234\",129,\"Bob\""), kOk);
  EXPECT_EQ(Sim(phone).entries.at(7), (PhonebookEntry{"1234", 129, u"Bob"}));
  ASSERT_EQ(Ask(phone, "AT+CPBW=7,\"99\",129,\"Bo\""), kOk);
  EXPECT_EQ(Sim(phone).entries.at(7), (PhonebookEntry{"99", 129, u"Bo"}));
  ASSERT_EQ(Ask(phone, "AT+CPBW=7"), kOk);
  EXPECT_FALSE(Sim(phone).entries.contains(7));
  EXPECT_EQ(Ask(phone, "AT+CPBW=7"), kOk);
}

TEST(PhonebookCommands, WithoutALocationTheFirstFreeOneIsTaken) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  ASSERT_EQ(Ask(phone, "AT+CPBW=,\"1234\",129,\"Bob\""), kOk);
  EXPECT_EQ(Sim(phone).entries.at(2).name, u"Bob");
}

TEST(PhonebookCommands, AFullBookTakesNothingNew) {
  PhoneMemory memory = SmallMemory();
  memory.FindPhonebook("SM")->last = 3;
  memory.FindPhonebook("SM")->entries[2] = {"1", 129, u"x"};
  SimulatedPhone phone = QuietPhone("cme-errors", memory);
  EXPECT_EQ(Ask(phone, "AT+CPBW=,\"1234\",129,\"Bob\""), CmeError(20));
  EXPECT_EQ(Ask(phone, "AT+CPBW=2,\"1234\",129,\"Bob\""), kOk);
}

TEST(PhonebookCommands, TheTypeAndThePlusSignBelongTogether) {
  const struct {
    std::string_view arguments;
    PhonebookEntry entry;
  } kTable[] = {{"\"+1234\",145,\"x\"", {"+1234", 145, u"x"}},
                {"\"1234\",145,\"x\"", {"+1234", 145, u"x"}},
                {"\"+1234\",129,\"x\"", {"+1234", 145, u"x"}},
                {"\"001234\",129,\"x\"", {"001234", 129, u"x"}},
                {"\"1234\"", {"1234", 129, u""}},
                {"\"\",129,\"x\"", {"", 129, u"x"}}};
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone("default", SmallMemory());
    ASSERT_EQ(Ask(phone, "AT+CPBW=2," + std::string(row.arguments)), kOk) << row.arguments;
    EXPECT_EQ(Sim(phone).entries.at(2), row.entry) << row.arguments;
  }
}

TEST(PhonebookCommands, ANameMayHoldQuotesCommasAndSemicolons) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  ASSERT_EQ(Ask(phone, "AT+CPBW=2,\"1\",129,\"a\"b,c;\""), kOk);
  EXPECT_EQ(Sim(phone).entries.at(2).name, u"a\"b,c;");
  EXPECT_EQ(Ask(phone, "AT+CPBR=2"), Answer({R"(+CPBR: 2,"1",129,"a"b,c;")"}));
}

TEST(PhonebookCommands, TheBooksAreSeparate) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  ASSERT_EQ(Ask(phone, "AT+CPBS=\"ME\";+CPBW=1,\"55\",129,\"Mo\""), kOk);
  EXPECT_EQ(phone.memory().FindPhonebook("ME")->entries.at(1).name, u"Mo");
  EXPECT_EQ(Sim(phone).entries.at(1).name, u"Anna");
}

TEST(PhonebookCommands, AReadOnlyBookIsEmptyAndStaysSo) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Ask(phone, "AT+CPBS=\"MC\";+CPBR=1,10"), kOk);
  EXPECT_EQ(Ask(phone, "AT+CPBW=1,\"1\",129,\"x\""), kError);
}

TEST(PhonebookCommands, TheRangeTextOfTheMemoryIsShownAsItStands) {
  for (const std::string_view range : {"(1-99999999)", "(5-1)", "nonsense"}) {
    PhoneMemory memory = SmallMemory();
    memory.FindPhonebook("SM")->range_text = range;
    SimulatedPhone phone = QuietPhone("default", memory);
    EXPECT_EQ(Ask(phone, "AT+CPBR=?"), Answer({"+CPBR: " + std::string(range) + ",12,8"}));
    EXPECT_NE(Ask(phone, "AT+CPBR=1"), kOk);
  }
}

TEST(PhonebookCommands, AReplyOfTheMemoryReplacesThePhonesOwn) {
  PhoneMemory memory = SmallMemory();
  memory.replies["AT+CPBR=1,3"] = {R"(+CPBR: 1,,"+31234657899",145,"Mum","2007/11/02,09:27")"};
  memory.replies["AT+CPBS=?"] = {R"(+CPBS: "ME","SM")"};
  SimulatedPhone phone = QuietPhone("default", memory);
  EXPECT_EQ(Ask(phone, "at+cpbr = 1, 3"), Answer(memory.replies["AT+CPBR=1,3"]));
  EXPECT_EQ(Ask(phone, "AT+CPBS=?"), Answer({R"(+CPBS: "ME","SM")"}));
  EXPECT_EQ(Ask(phone, "AT+CPBR=2"), kOk);
}

}  // namespace
}  // namespace celldesk::simulator
