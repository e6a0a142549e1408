#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace celldesk::simulator {

enum class CommandForm { kExecute, kRead, kTest, kSet };

struct Argument {
  std::string text;  // as on the line, quotes removed
  bool quoted = false;

  bool empty() const { return text.empty(); }
};

/// One command of a command line: "Z", "E0" (name "E", argument "0"), "&F", "+CPBR=1,20".
struct Command {
  std::string name;  // upper case, without "AT"
  CommandForm form = CommandForm::kExecute;
  std::vector<Argument> arguments;

  /// The text of argument `n`, empty when it is not there.
  const std::string& Text(std::size_t n) const;
  bool Has(std::size_t n) const { return !Text(n).empty(); }
  /// Argument `n` as a number; `missing` when it is not there, `kNoNumber` when it is something else.
  int Number(std::size_t n, int missing) const;
};

inline constexpr int kNoNumber = -2147483647;

/// The commands of a line (ITU-T V.250 5.2), the leading "AT" already taken off. Extended commands are parted
/// by semicolons. Inside quotes everything belongs to the text; a quote ends it only before a comma, a
/// semicolon or the end, so that a name may hold one.
std::vector<Command> ParseCommandLine(std::string_view line);

}  // namespace celldesk::simulator
