// Input: the bytes of the directory, as far as 600 of them. Property: sections are found wherever a line
// begins with "@" and nowhere else; sections, lines and fields only ever follow each other, with nothing but
// blank lines and comments between the lines; the lists are what a walk over the fields finds; and the
// directory that is written anew from its lists, in regular lines, has the same lists.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "config/operator_directory.h"
#include "fuzz/property.h"
#include "util/field_text.h"

namespace {

using namespace celldesk;

using Position = OperatorDirectory::Position;
using Names = std::vector<std::u16string>;

constexpr std::size_t kMostBytes = 600;

FieldBytes Bytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::vector<Position> SectionsOf(const OperatorDirectory& directory) {
  std::vector<Position> sections;
  for (auto section = directory.FirstSection(); section; section = directory.NextSection(*section)) {
    HOLDS(sections.empty() || *section > sections.back());
    sections.push_back(*section);
  }
  return sections;
}

void CheckSections(const OperatorDirectory& directory, std::string_view text) {
  std::vector<Position> expected;
  for (Position i = 0; i < text.size(); ++i)
    if (text[i] == '@' && (i == 0 || text[i - 1] == '\n')) expected.push_back(i);
  HOLDS(SectionsOf(directory) == expected);
}

// Nothing but blank lines and comments stands from `from` up to `line`; without a line, up to the next
// section or the end.
void CheckGap(std::string_view text, Position from, std::optional<Position> line) {
  while (from < line.value_or(text.size())) {
    const std::string_view rest = text.substr(from);
    if (!line && rest.starts_with("@")) return;
    HOLDS(rest.starts_with("\r\n") || rest.starts_with("//"));
    const std::size_t end = text.find("\r\n", from);
    from = end == text.npos ? text.size() : end + 2;
  }
  HOLDS(!line || from == *line);
}

std::vector<Position> LinesOf(const OperatorDirectory& directory, std::string_view text, Position section) {
  std::vector<Position> lines;
  auto line = directory.FirstLine(section);
  CheckGap(text, std::min(text.find('\n', section), text.size() - 1) + 1, line);
  while (line) {
    HOLDS(*line > section && *line < text.size());
    HOLDS(lines.empty() || *line > lines.back());
    const std::string_view rest = text.substr(*line);
    HOLDS(!rest.starts_with("@") && !rest.starts_with("//") && !rest.starts_with("\r\n"));
    lines.push_back(*line);
    line = directory.NextLine(*line);
    CheckGap(text, AfterLine(Bytes(text), lines.back()), line);
  }
  return lines;
}

void CheckFields(const OperatorDirectory& directory, std::string_view text, Position line) {
  std::optional<Position> field = line;
  while (field) {
    const std::u16string copied = directory.CopyField(*field);
    HOLDS(copied.size() <= text.size() - *field);
    HOLDS(directory.CompareField(copied, *field) == 0);
    HOLDS(directory.CompareField(copied + u'x', *field) > 0);
    const auto next = directory.SkipField(*field);
    HOLDS(!next || (*next > *field && *next < text.size() && text[*next - 1] == ';'));
    field = next;
  }
}

Names NamesAt(const OperatorDirectory& directory, const std::vector<Position>& lines) {
  Names names;
  for (const Position line : lines) names.push_back(directory.CopyField(line));
  return names;
}

// A text that a regular line can hold as it is.
bool IsPlain(const std::u16string& text) {
  const bool is_line = text.find_first_of(u"\r\n\u20AC") == text.npos;
  return is_line && !text.starts_with(u"@") && !text.starts_with(u"//");
}

/// The lists of a directory, as its page asks for them.
struct Lists {
  struct Operator {
    std::u16string name;
    Names centres;
    friend bool operator==(const Operator&, const Operator&) = default;
  };
  struct Country {
    std::u16string name;
    std::vector<Operator> operators;
    friend bool operator==(const Country&, const Country&) = default;
  };

  std::vector<Country> countries;
  bool are_plain = true;
};

Lists ListsOf(const OperatorDirectory& directory) {
  Lists lists;
  std::set<std::u16string> known;
  for (const std::u16string& name : directory.Countries()) {
    if (!known.insert(name).second) continue;
    lists.are_plain &= IsPlain(name);
    Lists::Country country{name, {}};
    for (const std::u16string& one : directory.Operators(name)) {
      country.operators.push_back({one, directory.Centres(name, one)});
      const Names& centres = country.operators.back().centres;
      lists.are_plain &= IsPlain(one) && std::all_of(centres.begin(), centres.end(), IsPlain);
    }
    lists.countries.push_back(std::move(country));
  }
  return lists;
}

std::string Written(const Lists& lists) {
  std::string text = "@country;\r\n", sections;
  for (std::size_t i = 0; i < lists.countries.size(); ++i) {
    const Lists::Country& country = lists.countries[i];
    AppendField(text, country.name);
    text += std::to_string(i) + ";\r\n";
    sections += "@" + std::to_string(i) + ";0;\r\n";
    for (const Lists::Operator& one : country.operators) {
      AppendField(sections, one.name);
      sections += "code;";
      for (const std::u16string& centre : one.centres) AppendField(sections, centre);
      sections += "\r\n";
    }
  }
  return text + sections;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), std::min(size, kMostBytes));
  const OperatorDirectory directory(Bytes(text));
  CheckSections(directory, text);
  const std::vector<Position> sections = SectionsOf(directory);
  for (const Position section : sections)
    for (const Position line : LinesOf(directory, text, section)) CheckFields(directory, text, line);
  HOLDS(directory.Countries() ==
        (sections.empty() ? Names() : NamesAt(directory, LinesOf(directory, text, sections.front()))));
  const Lists lists = ListsOf(directory);
  if (!lists.are_plain) return 0;
  const std::string regular = Written(lists);
  HOLDS(ListsOf(OperatorDirectory(Bytes(regular))).countries == lists.countries);
  return 0;
}
