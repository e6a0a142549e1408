#include <gtest/gtest.h>

#include "tools/program_run.h"

namespace celldesk {
namespace {

constexpr const char* kDeliver = "040C9124601021436500009910302143650005E8329BFD06";
constexpr const char* kReport = "06070C91246010214365991030214365009910302153010046";
constexpr const char* kSubmit = "31050C912460102143650000A702C834";

ProgramRun Decode(const std::vector<std::string>& arguments, const std::string& input = {}) {
  std::vector<std::string> all = {"decode"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunProgram("celldesk-pdu", all, input);
}

ProgramRun Encode(const std::vector<std::string>& arguments) {
  std::vector<std::string> all = {"encode"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunProgram("celldesk-pdu", all);
}

std::string Encoded(const std::vector<std::string>& arguments) {
  const ProgramRun run = Encode(arguments);
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  return run.output;
}

TEST(CelldeskPdu, DecodesADeliverToJson) {
  const ProgramRun run = Decode({"--json", "0", "24", kDeliver});
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(run.output,
            R"({"type":"deliver","number":"+420601123456","toa":145,"timestamp":"1999-01-03 12:34:56",)"
            R"("discharge":"","absolute":"","vpf":0,"validity":0,"reference":0,"pid":0,"dcs":0,"status":0,)"
            R"("text":"hello","result":"0x00000000"})"
            "\n");
}

TEST(CelldeskPdu, DecodesAStatusReportToJson) {
  const ProgramRun run = Decode({"1", "25", kReport, "--json"});
  EXPECT_EQ(
      run.output,
      R"({"type":"status-report","number":"+420601123456","toa":145,"timestamp":"1999-01-03 12:34:56",)"
      R"("discharge":"1999-01-03 12:35:10","absolute":"","vpf":0,"validity":0,"reference":7,"pid":0,"dcs":0,)"
      R"("status":70,"text":"","result":"0x00000000"})"
      "\n");
}

TEST(CelldeskPdu, DecodesASubmitToJson) {
  const ProgramRun run = Decode({"--json", "2", "16", kSubmit});
  EXPECT_EQ(
      run.output,
      R"({"type":"submit","number":"+420601123456","toa":145,"timestamp":"","discharge":"","absolute":"",)"
      R"("vpf":2,"validity":167,"reference":5,"pid":0,"dcs":0,"status":0,"text":"Hi","result":"0x00000000"})"
      "\n");
}

TEST(CelldeskPdu, ShowsAnAbsoluteValidity) {
  const ProgramRun run = Decode({"--json", "3", "22", "19000C9124601021436500009910302143650002C834"});
  EXPECT_NE(run.output.find(R"("absolute":"1999-01-03 12:34:56","vpf":3,"validity":0)"), std::string::npos);
}

TEST(CelldeskPdu, ReportsTheStatusCodeOfAFailure) {
  EXPECT_NE(Decode({"--json", "0", "16", kSubmit}).output.find(R"("result":"0x80004001")"),
            std::string::npos);
  const ProgramRun run = Decode({"1", "4", "0B910000"});
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.output, "result     0x80004005\n\n");
}

TEST(CelldeskPdu, DecodesToReadableText) {
  EXPECT_EQ(Decode({"0", "24", kDeliver}).output,
            "type       deliver\n"
            "number     \"+420601123456\"\n"
            "toa        0x91\n"
            "timestamp  1999-01-03 12:34:56\n"
            "pid        0\n"
            "dcs        0\n"
            "text       \"hello\"\n\n");
  EXPECT_EQ(Decode({"0", "25", kReport}).output,
            "type       status-report\n"
            "number     \"+420601123456\"\n"
            "toa        0x91\n"
            "timestamp  1999-01-03 12:34:56\n"
            "discharge  1999-01-03 12:35:10\n"
            "reference  7\n"
            "status     0x46 SM Validity Period Expired\n"
            "severity   Permanent error, SC is not making any more transfer attempts\n\n");
}

TEST(CelldeskPdu, ShowsValidityPeriodsInWords) {
  const auto shows = [](const std::string& pdu, const std::string& validity) {
    const std::string output = Decode({"2", std::to_string(pdu.size() / 2), pdu}).output;
    return output.find("validity   " + validity + "\n") != std::string::npos;
  };
  EXPECT_TRUE(shows("11000C912460102143650000A702C834", "167 (24:0 hours)"));
  EXPECT_TRUE(shows("11000C912460102143650000A802C834", "168 (2 days)"));
  EXPECT_TRUE(shows("11000C912460102143650000FF02C834", "255 (63 weeks)"));
  EXPECT_TRUE(shows("19000C9124601021436500009910302143650002C834", "till 1999-01-03 12:34:56"));
  EXPECT_TRUE(shows("01000C91246010214365000002C834", "none"));
}

TEST(CelldeskPdu, ReadsLinesAndGoesOnAfterABadOne) {
  const std::string input =
      std::string("0 24 ") + kDeliver + "\r\n\n9 24 00\n0 24 XYZ\n0\n0 99999 00\n0 24 " + kDeliver + "\n";
  const ProgramRun run = Decode({"--json"}, input);
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 2);
  EXPECT_EQ(run.errors,
            "celldesk-pdu: line 3: the storage status must be 0 to 3: 9\n"
            "celldesk-pdu: line 4: the PDU must be hexadecimal digits: XYZ\n"
            "celldesk-pdu: line 5: expected STATUS LENGTH HEX\n"
            "celldesk-pdu: line 6: the length must be 0 to 32767 octets: 99999\n");
}

TEST(CelldeskPdu, SkipsTheServiceCentre) {
  const std::string pdu = std::string("07912460100000F0") + kDeliver;
  EXPECT_NE(Decode({"--json", "1", "24", pdu}).output.find(R"("text":"hello")"), std::string::npos);
}

TEST(CelldeskPdu, EscapesJsonTexts) {
  // A quote, a line feed, a letter outside ASCII: 22 0A 05 (e with acute accent).
  const std::string encoded = Encoded({"--to", "1234", "--text", "\"\n\xC3\xA9\\"});
  const std::string pdu = encoded.substr(0, encoded.find(' '));
  const ProgramRun run = Decode({"--json", "2", std::to_string(pdu.size() / 2), pdu});
  // The backslash is not in the alphabet: its code 0x5C reads back as O with diaeresis.
  EXPECT_NE(run.output.find("\"text\":\"\\\"\\u000a\xC3\xA9\xC3\x96\""), std::string::npos) << run.output;
}

TEST(CelldeskPdu, EncodesWithAndWithoutValidity) {
  EXPECT_EQ(Encoded({"--to", "+420601123456", "--text", "Hi", "--relative", "167"}),
            "11000C912460102143650000A702C834 16\n");
  EXPECT_EQ(Encoded({"--to", "+420601123456", "--text", "Hi"}), "01000C91246010214365000002C834 15\n");
  EXPECT_EQ(Encoded({"--until", "2001-03-05 09:05:07", "--to", "+420601123456", "--text", "Hi"}),
            "19000C9124601021436500001030509050700002C834 22\n");
}

TEST(CelldeskPdu, EncodesReportReplyPathAndReference) {
  EXPECT_EQ(Encoded({"--to", "+420601123456", "--text", "Hi", "--relative", "167", "--report", "--reply-path",
                     "--reference", "254"}),
            "B1FE0C912460102143650000A702C834 16\n");
}

TEST(CelldeskPdu, PutsTheCentreInFrontWithoutCountingIt) {
  EXPECT_EQ(Encoded({"--to", "+420601123456", "--text", "Hi", "--centre", "+1234567890"}),
            "0691214365870901000C91246010214365000002C834 15\n");
}

TEST(CelldeskPdu, DecodesWhatItEncodes) {
  const std::string text = "Meet me @ caf\xC3\xA9, 5 \xC2\xA3";
  const std::string encoded = Encoded({"--to", "0601", "--text", text, "--centre", "+420603052000"});
  const std::size_t blank = encoded.find(' ');
  const ProgramRun run = Decode({"--json"}, "2 " + encoded.substr(blank + 1, encoded.size() - blank - 2) +
                                                " " + encoded.substr(0, blank) + "\n");
  EXPECT_NE(run.output.find("\"text\":\"" + text + "\""), std::string::npos);
  EXPECT_NE(run.output.find(R"("number":"0601","toa":129)"), std::string::npos);
}

TEST(CelldeskPdu, RefusesWhatItCannotEncode) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"--to", "1234"}, "encode needs --to NUMBER and --text TEXT"},
      {{"--text", "Hi"}, "encode needs --to NUMBER and --text TEXT"},
      {{"--to", "12", "--text", "Hi"}, "no number that can be dialled: 12"},
      {{"--to", "1234", "--text"}, "unknown or incomplete option: --text"},
      {{"--colour", "red"}, "unknown or incomplete option: --colour"},
      {{"--to", "1234", "--text", "Hi", "--relative", "256"}, "no number from 0 to 255: 256"},
      {{"--to", "1234", "--text", "Hi", "--reference", "-1"}, "no number from 0 to 255: -1"},
      {{"--to", "1234", "--text", "Hi", "--until", "2001-02-30 00:00:00"},
       "no time like YYYY-MM-DD HH:MM:SS: 2001-02-30 00:00:00"},
      {{"--to", "1234", "--text", "Hi", "--until", "2001-02-03"},
       "no time like YYYY-MM-DD HH:MM:SS: 2001-02-03"},
      {{"--to", "1234", "--text", "Hi", "--until", "2001-02-03 1o:00:00"},
       "no time like YYYY-MM-DD HH:MM:SS: 2001-02-03 1o:00:00"},
      {{"--to", "1234", "--text", "Hi", "--relative", "1", "--until", "2001-02-03 00:00:00"},
       "give one validity, not two"},
      {{"--to", "1234", "--text", "Hi", "--centre", "+12345678901234567"},
       "no service centre number of at most 16 digits: +12345678901234567"},
      {{"--to", "1234", "--text", std::string(400, 'x')}, "the message is too long to encode: 0x80004005"}};
  for (const auto& [arguments, error] : cases) {
    const ProgramRun run = Encode(arguments);
    EXPECT_EQ(run.exit_status, 1) << error;
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "celldesk-pdu: " + error + "\n");
  }
}

TEST(CelldeskPdu, ShowsItsUsage) {
  const ProgramRun help = RunProgram("celldesk-pdu", {"--help"});
  EXPECT_EQ(help.exit_status, 0);
  EXPECT_EQ(help.output.substr(0, 6), "usage:");
  const ProgramRun nothing = RunProgram("celldesk-pdu", {});
  EXPECT_EQ(nothing.exit_status, 1);
  EXPECT_EQ(nothing.errors, help.output);
  EXPECT_EQ(RunProgram("celldesk-pdu", {"transcode"}).exit_status, 1);
}

}  // namespace
}  // namespace celldesk
