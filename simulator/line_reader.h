#pragma once

#include <optional>
#include <string>

namespace celldesk::simulator {

enum class InputKind { kCommandLine, kBody, kBodyLineEnd, kCancelled };

struct Input {
  InputKind kind = InputKind::kCommandLine;
  std::string text;  // a command line without its "AT" and terminator, or a body
};

/// Turns received bytes into command lines and message bodies (ITU-T V.250 5.2, GSM 07.05 3.3.5). Whatever
/// stands before "AT" in a line is ignored, and so is a line without it; "A/" repeats the last line.
class LineReader {
 public:
  std::optional<Input> Push(char byte);

  /// The next bytes are a message body, to be ended by Ctrl-Z or given up by ESC.
  void ExpectBody(bool text_mode);
  /// In the default alphabet the backspace code is a letter, when it stands inside quotes.
  void set_backspace_is_text(bool is_text) { backspace_is_text_ = is_text; }
  /// Forgets an unfinished line or body.
  void Reset();

 private:
  enum class Mode { kCommand, kPduBody, kTextBody };

  std::optional<Input> PushCommand(char byte);
  std::optional<Input> PushBody(char byte, char previous);
  std::optional<Input> EndLine();
  std::optional<Input> EndBody(InputKind kind);
  void EraseLast();
  void Append(char byte);

  Mode mode_ = Mode::kCommand;
  std::string buffer_;
  std::string last_line_;
  bool in_quotes_ = false;
  bool backspace_is_text_ = true;
  char previous_ = 0;
};

}  // namespace celldesk::simulator
