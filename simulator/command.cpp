#include "simulator/command.h"

#include <algorithm>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

bool IsExtendedPrefix(char byte) { return std::string_view("+^%$*#!").find(byte) != std::string_view::npos; }

class LineParser {
 public:
  explicit LineParser(std::string_view line) : line_(line) {}

  std::vector<Command> Parse() {
    std::vector<Command> commands;
    while (SkipTo(" ;"), at_ < line_.size()) {
      commands.push_back(IsExtendedPrefix(line_[at_]) ? Extended() : Basic());
    }
    return commands;
  }

 private:
  void SkipTo(std::string_view skipped) {
    while (at_ < line_.size() && skipped.find(line_[at_]) != skipped.npos) ++at_;
  }

  Command Basic() {
    Command command;
    if (line_[at_] == '&') command.name += line_[at_++];
    if (at_ < line_.size()) command.name += ToUpper(line_[at_++]);
    const bool is_register = command.name == "S";
    if (is_register) command.name += Digits();
    SkipTo(" ");
    if (is_register && at_ < line_.size() && line_[at_] == '?') {
      ++at_;
      command.form = CommandForm::kRead;
      return command;
    }
    if (is_register && at_ < line_.size() && line_[at_] == '=') ++at_;
    if (const std::string digits = Digits(); !digits.empty()) command.arguments.push_back({digits});
    return command;
  }

  std::string Digits() {
    std::string digits;
    while (at_ < line_.size() && (IsDigit(line_[at_]) || line_[at_] == ' ')) {
      if (line_[at_] != ' ') digits += line_[at_];
      ++at_;
    }
    return digits;
  }

  Command Extended() {
    Command command;
    while (at_ < line_.size() && std::string_view("=?;").find(line_[at_]) == std::string_view::npos) {
      if (line_[at_] != ' ') command.name += ToUpper(line_[at_]);
      ++at_;
    }
    ReadForm(command);
    while (at_ < line_.size() && line_[at_] != ';') ++at_;
    return command;
  }

  void ReadForm(Command& command) {
    if (at_ >= line_.size() || line_[at_] == ';') return;
    const bool is_read = line_[at_++] == '?';
    SkipTo(" ");
    if (is_read) {
      command.form = CommandForm::kRead;
    } else if (at_ < line_.size() && line_[at_] == '?') {
      command.form = CommandForm::kTest;
    } else {
      command.form = CommandForm::kSet;
      ReadArguments(command);
    }
  }

  void ReadArguments(Command& command) {
    for (;;) {
      SkipTo(" ");
      const bool quoted = at_ < line_.size() && line_[at_] == '"';
      command.arguments.push_back({quoted ? QuotedText() : PlainText(), quoted});
      SkipTo(" ");
      if (at_ >= line_.size() || line_[at_] != ',') return;
      ++at_;
    }
  }

  std::string PlainText() {
    const auto end = std::min(line_.find_first_of(",;", at_), line_.size());
    const std::string_view text = Trim(line_.substr(at_, end - at_));
    at_ = end;
    return std::string(text);
  }

  std::string QuotedText() {
    std::string text;
    for (++at_; at_ < line_.size(); ++at_) {
      if (line_[at_] == '"' && EndsField(at_ + 1)) {
        ++at_;
        break;
      }
      text += line_[at_];
    }
    return text;
  }

  bool EndsField(std::size_t at) const {
    const auto next = line_.find_first_not_of(' ', at);
    return next == line_.npos || line_[next] == ',' || line_[next] == ';';
  }

  std::string_view line_;
  std::size_t at_ = 0;
};

}  // namespace

const std::string& Command::Text(std::size_t n) const {
  static const std::string kNone;
  return n < arguments.size() ? arguments[n].text : kNone;
}

int Command::Number(std::size_t n, int missing) const {
  return Has(n) ? ParseNumber(Text(n)).value_or(kNoNumber) : missing;
}

std::vector<Command> ParseCommandLine(std::string_view line) { return LineParser(line).Parse(); }

}  // namespace celldesk::simulator
