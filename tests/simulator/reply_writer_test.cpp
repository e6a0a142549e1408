#include "simulator/reply_writer.h"

#include <gtest/gtest.h>

namespace celldesk::simulator {
namespace {

std::string Written(const Reply& reply, int error_level = 0) {
  Phone phone;
  phone.session.error_level = error_level;
  ReplyWriter writer(1);
  return BytesOf(writer.Write(phone, reply, {}));
}

TEST(ReplyWriter, EndsEveryReplyWithItsResult) {
  EXPECT_EQ(Written(Ok()), "\r\nOK\r\n");
  EXPECT_EQ(Written(Error()), "\r\nERROR\r\n");
  EXPECT_EQ(Written(Ok({"+A: 1", "+A: 2"})), "\r\n+A: 1\r\n+A: 2\r\n\r\nOK\r\n");
  EXPECT_EQ(Written(WantBody()), "\r\n> ");
}

TEST(ReplyWriter, WritesErrorsAsTheLevelSays) {
  const struct {
    Reply reply;
    int level;
    std::string_view line;
  } kTable[] = {{PhoneError(22), 0, "ERROR"},
                {PhoneError(22), 1, "+CME ERROR: 22"},
                {PhoneError(22), 2, "+CME ERROR: not found"},
                {PhoneError(20), 2, "+CME ERROR: memory full"},
                {PhoneError(999), 2, "+CME ERROR: unknown error"},
                {MessageError(322), 0, "+CMS ERROR: 322"},
                {MessageError(322), 1, "+CMS ERROR: 322"},
                {MessageError(322), 2, "+CMS ERROR: memory full"},
                {MessageError(304), 2, "+CMS ERROR: invalid PDU mode parameter"},
                {MessageError(999), 2, "+CMS ERROR: unknown error"},
                {Error(), 2, "ERROR"}};
  for (const auto& row : kTable) {
    EXPECT_EQ(Written(row.reply, row.level), "\r\n" + std::string(row.line) + "\r\n");
  }
}

TEST(ReplyWriter, EveryErrorCodeThePhoneUsesHasItsWords) {
  for (const int code : {kOperationNotAllowed, kOperationNotSupported, kPhonebookFull, kInvalidPhonebookIndex,
                         kNotFound, kTextTooLong, kInvalidText, kNumberTooLong, kInvalidNumber}) {
    EXPECT_NE(ErrorText(ResultKind::kPhoneError, code), "unknown error") << code;
  }
  for (const int code :
       {kMessageNotAllowed, kInvalidPduParameter, kInvalidTextParameter, kInvalidMemoryIndex, kMemoryFull}) {
    EXPECT_NE(ErrorText(ResultKind::kMessageError, code), "unknown error") << code;
  }
}

TEST(ReplyWriter, PutsPausesBeforeTheReplyAndItsLines) {
  Phone phone;
  phone.profile.latency_ms = 100;
  phone.profile.line_delay_ms = 7;
  ReplyWriter writer(1);
  EXPECT_EQ(writer.Write(phone, Ok({"+A: 1", "+A: 2"}), {}),
            (std::vector<Emission>{{107, "\r\n+A: 1\r\n"}, {7, "+A: 2\r\n"}, {7, "\r\nOK\r\n"}}));
}

TEST(ReplyWriter, WritesNoticesWithTheLineEndsOfThePhone) {
  Phone phone;
  const ReplyWriter writer(1);
  EXPECT_EQ(writer.WriteNotice(phone, {"+CMT: ,1", "00"}), "\r\n+CMT: ,1\r\n00\r\n");
  phone.profile.line_end = "\r\r\n";
  phone.profile.prefix_gap.clear();
  EXPECT_EQ(writer.WriteNotice(phone, {"+CMTI: \"SM\",1"}), "\r\r\n+CMTI:\"SM\",1\r\r\n");
}

TEST(ReplyWriter, TheGapIsThatOfTheHeadOnly) {
  Phone phone;
  phone.profile.prefix_gap.clear();
  ReplyWriter writer(1);
  EXPECT_EQ(BytesOf(writer.Write(phone, Ok({"+A: 1: 2", "B: 3", "no head"}), {})),
            "\r\n+A:1: 2\r\nB: 3\r\nno head\r\n\r\nOK\r\n");
}

TEST(ReplyWriter, OnlyLinesWithALocationGetAWrongOne) {
  Phone phone;
  ReplyWriter writer(1);
  Fault fault;
  fault.kind = FaultKind::kWrongIndex;
  fault.argument = "9";
  EXPECT_EQ(BytesOf(writer.Write(
                phone, Ok({"+CPBR: (1-250),40,20", "+CSQ: 21,99", "+CMGL: 1,0,,23", "+CMGW: 4"}), {fault})),
            "\r\n+CPBR: (1-250),40,20\r\n+CSQ: 21,99\r\n+CMGL: 9,0,,23\r\n+CMGW: 9\r\n\r\nOK\r\n");
}

TEST(ReplyWriter, HalfALineIsInTheMiddleOfTheLastInformationLine) {
  const struct {
    Reply reply;
    std::string_view bytes;
  } kTable[] = {{Ok(), "\r\nO"},
                {Ok({"+A: 123"}), "\r\n+A:"},
                {Ok({"+A: 1", "+BBBB: 1"}), "\r\n+A: 1\r\n+BBB"},
                {MessageError(500), "\r\n+CMS ER"}};
  for (const auto& row : kTable) {
    Phone phone;
    ReplyWriter writer(1);
    Fault fault;
    fault.kind = FaultKind::kHalfLine;
    EXPECT_EQ(BytesOf(writer.Write(phone, row.reply, {fault})), row.bytes);
  }
}

}  // namespace
}  // namespace celldesk::simulator
