// Input: octet 0 where the reads of the line end, then what the phone says to each command, parts separated
// by octets 255. Property: whatever comes and however it is cut, the engine hands out the lines that stand
// between the carriage returns, in order, none twice and none of its own making; a detection succeeds exactly
// when a line "OK..." comes before any line "ERROR...", leaves that line as the phone's last word and no
// other to be taken for the answer to the next command.

#include <cstdint>

#include "fuzz/fed_session.h"
#include "fuzz/property.h"

namespace {

using namespace celldesk;

using Lines = std::vector<std::u16string>;

void CheckDetection(std::uint8_t cuts, const std::vector<std::u16string>& answers) {
  FedSession session(cuts, answers);
  const Status status = session.engine.DetectPhone();
  HOLDS(session.sent() == "ATZE0V1\r");
  const Lines lines = answers.empty() ? Lines() : LinesOf(answers[0]);
  for (const std::u16string& line : lines) {
    const bool ok = line.starts_with(u"OK");
    if (!ok && !line.starts_with(u"ERROR")) continue;
    HOLDS(status == (ok ? S_OK : E_FAIL));
    HOLDS(session.engine.response().text() == line);
    HOLDS(!ok || Failed(session.engine.TakeLine(session.engine.response())));
    return;
  }
  HOLDS(status == E_FAIL);
}

void CheckLines(std::uint8_t cuts, const std::vector<std::u16string>& answers) {
  FedSession session(cuts, answers);
  Lines taken;
  std::u16string said;
  ResponseLine line;
  for (const std::u16string& answer : answers) {
    said += answer;
    HOLDS(session.engine.Send(u"AT\r") == S_OK);
    while (!Failed(session.engine.WaitLine(line, timing::kReply))) {
      if (!line.text().empty()) taken.emplace_back(line.text());
    }
  }
  HOLDS(taken == LinesOf(said));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto answers = AnswersOf(data + 1, size - 1);
  CheckDetection(data[0], answers);
  CheckLines(data[0], answers);
  return 0;
}
