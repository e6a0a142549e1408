#include "simulator/line_reader.h"

#include <utility>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

constexpr char kBackspace = 0x08;
constexpr char kSubstitute = 0x1A;
constexpr char kEscape = 0x1B;
constexpr std::size_t kLongestLine = 2048;

}  // namespace

std::optional<Input> LineReader::Push(char byte) {
  const char previous = std::exchange(previous_, byte);
  return mode_ == Mode::kCommand ? PushCommand(byte) : PushBody(byte, previous);
}

void LineReader::ExpectBody(bool text_mode) { mode_ = text_mode ? Mode::kTextBody : Mode::kPduBody; }

void LineReader::Reset() {
  mode_ = Mode::kCommand;
  buffer_.clear();
  in_quotes_ = false;
}

std::optional<Input> LineReader::PushCommand(char byte) {
  if (byte == '\r') return EndLine();
  const bool keeps_everything = in_quotes_ && backspace_is_text_;
  if (!keeps_everything && byte == kBackspace) {
    EraseLast();
    return std::nullopt;
  }
  if (!keeps_everything && (byte == '\n' || byte == '\0')) return std::nullopt;
  if (byte == '/' && ToUpper(buffer_) == "A") {
    buffer_.clear();
    return Input{InputKind::kCommandLine, last_line_};
  }
  if (byte == '"') in_quotes_ = !in_quotes_;
  Append(byte);
  return std::nullopt;
}

std::optional<Input> LineReader::EndLine() {
  const std::string line = std::exchange(buffer_, {});
  in_quotes_ = false;
  const auto attention = ToUpper(line).find("AT");
  if (attention == std::string::npos) return std::nullopt;
  last_line_ = line.substr(attention + 2);
  return Input{InputKind::kCommandLine, last_line_};
}

std::optional<Input> LineReader::PushBody(char byte, char previous) {
  if (byte == kSubstitute) return EndBody(InputKind::kBody);
  if (byte == kEscape) return EndBody(InputKind::kCancelled);
  if (byte == kBackspace) {
    EraseLast();
    return std::nullopt;
  }
  const bool is_pdu = mode_ == Mode::kPduBody;
  if (byte == '\n' && (is_pdu || previous == '\r')) return std::nullopt;
  if (is_pdu && (byte == '\r' || byte == ' ')) return std::nullopt;
  const bool ends_line = byte == '\r';
  Append(ends_line ? '\n' : byte);
  return ends_line ? std::optional(Input{InputKind::kBodyLineEnd, {}}) : std::nullopt;
}

std::optional<Input> LineReader::EndBody(InputKind kind) {
  mode_ = Mode::kCommand;
  return Input{kind, std::exchange(buffer_, {})};
}

void LineReader::EraseLast() {
  if (buffer_.empty()) return;
  if (buffer_.back() == '"') in_quotes_ = !in_quotes_;
  buffer_.pop_back();
}

void LineReader::Append(char byte) {
  if (buffer_.size() < kLongestLine) buffer_ += byte;
}

}  // namespace celldesk::simulator
