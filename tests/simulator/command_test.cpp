#include "simulator/command.h"

#include <gtest/gtest.h>

namespace celldesk::simulator {
namespace {

/// "NAME<form>arg|arg" of every command, for tables.
std::string Described(std::string_view line) {
  std::string text;
  for (const Command& command : ParseCommandLine(line)) {
    if (!text.empty()) text += "  ";
    text += command.name;
    text += std::string_view("!?#=")[static_cast<std::size_t>(command.form)];
    for (const Argument& argument : command.arguments) {
      if (&argument != &command.arguments.front()) text += '|';
      text += argument.quoted ? "'" + argument.text + "'" : argument.text;
    }
  }
  return text;
}

TEST(Command, TakesCommandLinesApart) {
  const struct {
    std::string_view line;
    std::string_view described;
  } kTable[] = {
      {"", ""},
      {"Z", "Z!"},
      {"ZE0V1", "Z!  E!0  V!1"},
      {"z e0 v1", "Z!  E!0  V!1"},
      {"&F", "&F!"},
      {"&FE1", "&F!  E!1"},
      {"S0=3", "S0!3"},
      {"S7?", "S7?"},
      {"E0+CMGF=1", "E!0  +CMGF=1"},
      {"+CPBS=?", "+CPBS#"},
      {"+CPBS = ?", "+CPBS#"},
      {"+CPBS?", "+CPBS?"},
      {"+cpbs=\"SM\"", "+CPBS='SM'"},
      {"+CPBR=1,20", "+CPBR=1|20"},
      {"+CPBR= 1 , 20 ", "+CPBR=1|20"},
      {"+CPBW=,\"12\",129,\"A\"", "+CPBW=|'12'|129|'A'"},
      {"+CPBW=1,\"12\",,\"A, B; C\"", "+CPBW=1|'12'||'A, B; C'"},
      {"+CPBW=1,\"1\",129,\"the \"best\" one\"", "+CPBW=1|'1'|129|'the \"best\" one'"},
      {"+CPBW=1,\"1\",129,\"open", "+CPBW=1|'1'|129|'open'"},
      {"+CMGF=1;+CSQ", "+CMGF=1  +CSQ!"},
      {"+CMGF=1;", "+CMGF=1"},
      {"+CPBS=\"ME\";+CPBR=1", "+CPBS='ME'  +CPBR=1"},
      {"^SYSINFO", "^SYSINFO!"},
      {"+CMGD=1,4", "+CMGD=1|4"},
  };
  for (const auto& row : kTable) EXPECT_EQ(Described(row.line), row.described) << row.line;
}

TEST(Command, ReadsNumbersAndTellsMissingFromWrong) {
  const Command command = ParseCommandLine("+CPBR=7,,x,-1")[0];
  EXPECT_EQ(command.Number(0, 99), 7);
  EXPECT_EQ(command.Number(1, 99), 99);
  EXPECT_EQ(command.Number(2, 99), kNoNumber);
  EXPECT_EQ(command.Number(3, 99), -1);
  EXPECT_EQ(command.Number(4, 99), 99);
  EXPECT_TRUE(command.Has(0));
  EXPECT_FALSE(command.Has(1));
  EXPECT_FALSE(command.Has(9));
}

TEST(Command, ANumberTooLargeIsNone) {
  EXPECT_EQ(ParseCommandLine("+CPBR=99999999999")[0].Number(0, 0), kNoNumber);
}

}  // namespace
}  // namespace celldesk::simulator
