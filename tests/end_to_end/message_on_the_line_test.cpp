// A message that is written in the window arrives at the phone byte for byte as the command-line encoder
// prints it, and reads the same in a client that was written elsewhere.

#include <gmock/gmock.h>

#include <fstream>

#include "end_to_end/phone_process.h"
#include "end_to_end/program_session.h"
#include "tools/program_run.h"
#include "ui/commands.h"
#include "util/text.h"

namespace celldesk {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kOutboxTab = 3;
constexpr const char* kOwnNumber = "+447700900123";
constexpr const char* kCentre = "+447700900000";

/// A PDU and the length that goes before it.
struct Encoded {
  std::string pdu;
  std::string length;
};

/// What the encoder prints for the same message, the first one of a phone without messages.
Encoded Encode(const Writing& writing, bool centre) {
  const char* const kValidities[] = {"11", "143", "167", "173", "255"};
  std::vector<std::string> arguments = {"encode",
                                        "--to",
                                        writing.number,
                                        "--text",
                                        ToUtf8(writing.text),
                                        "--relative",
                                        kValidities[writing.validity],
                                        "--reference",
                                        "1"};
  if (writing.report) arguments.emplace_back("--report");
  if (writing.reply_path) arguments.emplace_back("--reply-path");
  if (centre) arguments.insert(arguments.end(), {"--centre", kCentre});
  const ProgramRun run = RunProgram("celldesk-pdu", arguments);
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::size_t blank = run.output.find(' ');
  return {run.output.substr(0, blank), run.output.substr(blank + 1, run.output.find('\n') - blank - 1)};
}

struct LineCase {
  const char* name;
  bool adapter;
  Writing writing;
  bool refused = false;
};

class MessageOnTheLine : public testing::TestWithParam<LineCase> {};

TEST_P(MessageOnTheLine, ArrivesAsTheEncoderPrintsIt) {
  const FreshHome home;
  PhoneProcess phone({"--profile", GetParam().adapter ? "no-smsc" : "default"});
  const Encoded wanted = Encode(GetParam().writing, !GetParam().adapter);
  ProgramSession session;
  if (GetParam().adapter) session.UseAdapter();
  session.Command(command::kConnect);
  ASSERT_TRUE(session.frame().IsConnected());
  session.ShowFolder(kOutboxTab);
  session.Write(GetParam().writing);
  session.Command(command::kUpload);
  EXPECT_THAT(session.Asked(), SizeIs(GetParam().refused ? 2 : 0));
  const std::string sent = "AT+CMGS=" + wanted.length + "<0D>" + wanted.pdu + "<1A>";
  EXPECT_THAT(phone.End(), HasSubstr(sent));
}

const Writing kPlain{kOwnNumber, u"Hi there"};
// An "@" that begins the last octet is packed without it; this phone refuses such a message (+CMS ERROR:
// 304), and the user is asked what to do.
const Writing kEnding{"0770090012", u"ends @", 0, true, false};
const Writing kBoth{"+44770090012345", u"\u00C4\u00D6\u00DC \u03A9 \u00A3 {[\u20AC]}", 4, true, true};
const Writing kLong{"12345", std::u16string(160, u'x'), 2, false, true};

INSTANTIATE_TEST_SUITE_P(
    Messages, MessageOnTheLine,
    testing::Values(LineCase{"Plain", false, kPlain}, LineCase{"PlainByAdapter", true, kPlain},
                    LineCase{"Ending", false, kEnding, true},
                    LineCase{"EndingByAdapter", true, kEnding, true}, LineCase{"Both", false, kBoth},
                    LineCase{"BothByAdapter", true, kBoth}, LineCase{"Long", false, kLong},
                    LineCase{"LongByAdapter", true, kLong}),
    [](const auto& test) { return test.param.name; });

/// What the program "gammu" prints of every message in the phone at `device`.
std::string ReadByOthers(const FreshHome& home, const std::string& device) {
  std::ofstream(home.File("gammurc"))
      << "[gammu]\ndevice = " << device << "\nconnection = at115200\nmodel = at\n";
  simulator::Program gammu("env", {"LC_ALL=C.UTF-8", "gammu", "-c", home.File("gammurc"), "getallsms"});
  std::string listing = gammu.ReadAll();
  EXPECT_EQ(gammu.Wait(), 0) << "install the package gammu";
  return listing;
}

class MessageReadByOthers : public testing::TestWithParam<bool> {};

// Sent to the phone's own number and stored in its memory on the way: as it was written (SMS-SUBMIT), as it
// comes back (SMS-DELIVER), and its delivery report.
TEST_P(MessageReadByOthers, IsTheMessageThatWasWritten) {
  const FreshHome home;
  const std::vector<std::string> memory = {"--state", home.File("phone")};
  const std::u16string text = u"Gr\u00FC\u00DFe @ K\u00F6ln: \u00A35, \u00D8 \u0394 \u00BF?@";
  {
    std::vector<std::string> arguments = memory;
    arguments.insert(arguments.end(), {"--profile", GetParam() ? "no-smsc" : "default"});
    PhoneProcess phone(arguments);
    ProgramSession session;
    if (GetParam()) session.UseAdapter();
    session.Command(command::kConnect);
    session.ShowFolder(kOutboxTab);
    session.Write({.number = kOwnNumber, .text = text, .report = true, .save_to = 2});
    session.Command(command::kUpload);
    EXPECT_THAT(session.Asked(), IsEmpty());
    session.Command(command::kDisconnect);
    EXPECT_FALSE(session.frame().IsConnected());
  }
  // The same phone, with the service centre field that the other client needs.
  PhoneProcess phone(memory);
  const std::string listing = ReadByOthers(home, phone.device());
  EXPECT_THAT(listing, HasSubstr("3 SMS parts in 3 SMS sequences"));
  EXPECT_THAT(listing, HasSubstr("Status               : UnSent"));
  EXPECT_THAT(listing, HasSubstr("Delivery status      : Delivered"));
  const std::string shown = ToUtf8(text);
  const std::size_t first = listing.find(shown);
  ASSERT_NE(first, std::string::npos) << listing;
  EXPECT_NE(listing.find(shown, first + 1), std::string::npos) << listing;
  EXPECT_THAT(listing, HasSubstr(std::string("Remote number        : \"") + kOwnNumber + "\""));
}

INSTANTIATE_TEST_SUITE_P(Adapter, MessageReadByOthers, testing::Bool(),
                         [](const auto& test) { return test.param ? "With" : "Without"; });

}  // namespace
}  // namespace celldesk
