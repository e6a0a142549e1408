#include "simulator/reply_writer.h"

#include <algorithm>
#include <array>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

constexpr int kErrorResult = 4;  // ATV0

std::string ErrorName(const Phone& phone, const Reply& reply) {
  const bool is_message = reply.result == ResultKind::kMessageError;
  if (!is_message && phone.session.error_level == 0) return "ERROR";
  const bool words = phone.session.error_level == 2;
  return std::string(is_message ? "+CMS" : "+CME") +
         " ERROR: " + (words ? ErrorText(reply.result, reply.code) : std::to_string(reply.code));
}

std::string ResultLine(const Phone& phone, const Reply& reply) {
  const Session& session = phone.session;
  if (session.quiet) return {};
  const std::string name = reply.ok()                           ? "OK"
                           : reply.result == ResultKind::kError ? "ERROR"
                                                                : ErrorName(phone, reply);
  const std::string& end = phone.profile.line_end;
  if (session.verbose || name.starts_with('+')) return end + name + end;
  return std::to_string(reply.ok() ? 0 : kErrorResult) + '\r';
}

std::string WithGap(const Phone& phone, const std::string& line) {
  const auto gap = line.find(": ");
  if (gap == line.npos || !line.starts_with('+')) return line;
  return line.substr(0, gap + 1) + phone.profile.prefix_gap + line.substr(gap + 2);
}

/// A reply line by line, each with its line ends.
std::vector<std::string> Pieces(const Phone& phone, const Reply& reply) {
  if (reply.wants_body) return {phone.profile.prompt};
  std::vector<std::string> pieces;
  const std::string& end = phone.profile.line_end;
  for (const std::string& line : reply.lines) {
    pieces.push_back((pieces.empty() ? end : std::string()) + WithGap(phone, line) + end);
  }
  pieces.push_back(ResultLine(phone, reply));
  return pieces;
}

bool HasIndex(const std::string& line) {
  constexpr std::array<std::string_view, 4> kPrefixes{"+CPBR: ", "+CPBF: ", "+CMGL: ", "+CMGW: "};
  return std::any_of(kPrefixes.begin(), kPrefixes.end(),
                     [&](std::string_view prefix) { return line.starts_with(prefix); }) &&
         line.find_first_of("0123456789") == line.find(' ') + 1;
}

std::vector<Emission> Cut(const std::vector<Emission>& emissions, std::size_t at, LineEvent event) {
  const std::string bytes = BytesOf(emissions);
  return {
      {emissions.empty() ? 0 : emissions[0].delay_ms, bytes.substr(0, std::min(at, bytes.size())), event}};
}

/// The middle of the reply's last line before the result, or of the result when it is alone.
std::size_t MiddleOfALine(const std::string& bytes) {
  const auto is_text = [&](std::size_t at) { return bytes[at] != '\r' && bytes[at] != '\n'; };
  std::vector<std::pair<std::size_t, std::size_t>> lines;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    if (!is_text(at)) continue;
    if (at == 0 || !is_text(at - 1)) lines.emplace_back(at, at);
    lines.back().second = at + 1;
  }
  if (lines.empty()) return 0;
  const auto& [first, last] = lines[lines.size() > 1 ? lines.size() - 2 : 0];
  return (first + last) / 2;
}

std::vector<Emission> SplitBytes(const std::vector<Emission>& emissions, const Fault& fault) {
  const std::string bytes = BytesOf(emissions);
  const int place = fault.Number(0, 0);
  const std::size_t step = place > 0 ? static_cast<std::size_t>(place) : 1;
  const int pause = fault.Number(1, place > 0 ? 60 : 1);
  std::vector<Emission> pieces;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t length = place > 0 && at > 0 ? bytes.size() - at : step;
    const int delay = at > 0 ? pause : emissions[0].delay_ms;
    pieces.push_back({delay, bytes.substr(at, length)});
    at += pieces.back().bytes.size();
  }
  return pieces;
}

}  // namespace

std::vector<Emission> ReplyWriter::Write(const Phone& phone, Reply reply, const std::vector<Fault>& faults) {
  for (const Fault& fault : faults) BendLines(reply, fault);
  std::vector<Emission> emissions;
  for (const std::string& piece : Pieces(phone, reply)) {
    if (piece.empty()) continue;
    const bool starts = emissions.empty();
    const int delay = phone.profile.line_delay_ms + (starts ? phone.profile.latency_ms : 0);
    if (starts || delay > 0) emissions.push_back({delay, {}});
    emissions.back().bytes += piece;
  }
  for (const Fault& fault : faults) emissions = BendBytes(std::move(emissions), fault);
  return emissions;
}

std::string ReplyWriter::WriteNotice(const Phone& phone, const Notice& notice) const {
  const std::string& end = phone.profile.line_end;
  std::string bytes = end;
  for (const std::string& line : notice) bytes += WithGap(phone, line) + end;
  return bytes;
}

void ReplyWriter::BendLines(Reply& reply, const Fault& fault) {
  const std::string unsolicited = fault.argument.empty() ? R"(+CMTI: "SM",1)" : fault.argument;
  std::vector<std::string> lines;
  for (const std::string& line : reply.lines) {
    if (fault.kind == FaultKind::kUnsolicited) lines.push_back(unsolicited);
    lines.push_back(line);
    if (fault.kind == FaultKind::kDuplicateLine) lines.push_back(line);
    if (fault.kind == FaultKind::kWrongIndex && HasIndex(line)) {
      const auto start = line.find(' ') + 1;
      const auto end = std::min(line.find(',', start), line.size());
      lines.back() = line.substr(0, start) + NextWrongIndex(fault) + line.substr(end);
    }
  }
  if (fault.kind == FaultKind::kUnsolicited) lines.push_back(unsolicited);
  reply.lines = std::move(lines);
}

std::string ReplyWriter::NextWrongIndex(const Fault& fault) {
  constexpr std::array<std::string_view, 6> kWrong{"-1",       "0",          "65536",
                                                   "99999999", "2147483647", "4294967296"};
  if (!fault.argument.empty()) return fault.argument;
  return std::string(kWrong[wrong_index_++ % kWrong.size()]);
}

std::vector<Emission> ReplyWriter::BendBytes(std::vector<Emission> emissions, const Fault& fault) {
  const auto place = static_cast<std::size_t>(fault.Number(0, 0));
  switch (fault.kind) {
    case FaultKind::kSilence:
      return {};
    case FaultKind::kHalfLine:
      return Cut(emissions, place > 0 ? place : MiddleOfALine(BytesOf(emissions)), LineEvent::kNone);
    case FaultKind::kHangUp:
      return Cut(emissions, place, LineEvent::kHangUp);
    case FaultKind::kHangUpBack:
      return Cut(emissions, place, LineEvent::kHangUpBack);
    case FaultKind::kSplit:
      return SplitBytes(emissions, fault);
    default:
      break;
  }
  if (emissions.empty()) return emissions;
  if (fault.kind == FaultKind::kDelay) emissions[0].delay_ms += fault.Number(0, 1000);
  if (fault.kind == FaultKind::kNoise) {
    for (Emission& emission : emissions)
      emission.bytes = WithNoise(std::move(emission.bytes), fault.Number(0, 8));
  }
  return emissions;
}

std::string ReplyWriter::WithNoise(std::string bytes, int count) {
  for (int i = 0; i < count; ++i) {
    // The first byte is a NUL before the reply, so that one is always there; no byte of noise ends a line.
    const auto roll = random_();
    const char noise =
        i == 0 ? '\0' : static_cast<char>(roll % 4 == 0 ? 1 + roll / 4 % 9 : 0x80 + roll / 4 % 0x80);
    bytes.insert(i == 0 ? 0 : random_() % (bytes.size() + 1), 1, noise);
  }
  return bytes;
}

}  // namespace celldesk::simulator
