#include "config/operator_directory.h"

namespace celldesk {
namespace {

constexpr std::string_view kSection = "@";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kComment = "//";
constexpr int kFirstCentre = 2;  // after the operator's name and network code

bool Matches(char16_t text, char16_t field) { return text == field || (field == u'\r' && text == u'\n'); }

}  // namespace

std::vector<std::u16string> OperatorDirectory::Countries() const {
  std::vector<std::u16string> names;
  const auto section = FirstSection();
  for (auto line = section ? FirstLine(*section) : std::nullopt; line; line = NextLine(*line)) {
    names.push_back(CopyField(*line));
  }
  return names;
}

std::vector<std::u16string> OperatorDirectory::Operators(std::u16string_view country) const {
  std::vector<std::u16string> names;
  for (auto line = FirstOperator(country); line; line = NextLine(*line)) names.push_back(CopyField(*line));
  return names;
}

std::vector<std::u16string> OperatorDirectory::Centres(std::u16string_view country,
                                                       std::u16string_view operator_name) const {
  std::vector<std::u16string> centres;
  auto field = FindLine(FirstOperator(country), operator_name);
  for (int n = 0; field && !IsLineEnd(*field); ++n) {
    if (n >= kFirstCentre) centres.push_back(CopyField(*field));
    field = SkipField(*field);
  }
  return centres;
}

std::optional<OperatorDirectory::Position> OperatorDirectory::FirstSection() const {
  return StandsAt(bytes_, 0, kSection) ? std::optional<Position>(0) : NextSection(0);
}

std::optional<OperatorDirectory::Position> OperatorDirectory::NextSection(Position position) const {
  for (; position < bytes_.size(); ++position) {
    if (bytes_[position] == '\n' && StandsAt(bytes_, position + 1, kSection)) return position + 1;
  }
  return std::nullopt;
}

// By the line end alone: a header need not close its last field.
std::optional<OperatorDirectory::Position> OperatorDirectory::FirstLine(Position section) const {
  while (section < bytes_.size() && bytes_[section] != '\n') ++section;
  return LineAt(section + 1);
}

std::optional<OperatorDirectory::Position> OperatorDirectory::NextLine(Position position) const {
  return LineAt(AfterLine(bytes_, position));
}

std::u16string OperatorDirectory::CopyField(Position position) const {
  return celldesk::CopyField(bytes_, position);
}

int OperatorDirectory::CompareField(std::u16string_view text, Position position) const {
  const std::u16string field = CopyField(position);
  for (std::size_t i = 0; i < text.size() && i < field.size(); ++i) {
    if (!Matches(text[i], field[i])) return text[i] < field[i] ? -1 : 1;
  }
  return (text.size() > field.size()) - (text.size() < field.size());
}

std::optional<OperatorDirectory::Position> OperatorDirectory::SkipField(Position position) const {
  const auto after = AfterField(bytes_, position);
  return after && *after < bytes_.size() ? after : std::nullopt;
}

// Not SkipComments: here one "/" begins no comment, also after one.
std::optional<OperatorDirectory::Position> OperatorDirectory::LineAt(Position position) const {
  while (IsLineEnd(position) || StandsAt(bytes_, position, kComment)) position = AfterLineEnd(position);
  if (position >= bytes_.size() || StandsAt(bytes_, position, kSection)) return std::nullopt;
  return position;
}

std::optional<OperatorDirectory::Position> OperatorDirectory::FindLine(std::optional<Position> line,
                                                                       std::u16string_view name) const {
  while (line && CompareField(name, *line) != 0) line = NextLine(*line);
  return line;
}

std::optional<OperatorDirectory::Position> OperatorDirectory::FindSection(std::u16string_view code) const {
  const auto first = FirstSection();
  auto section = first ? NextSection(*first) : std::nullopt;
  while (section && CompareField(code, *section + kSection.size()) != 0) section = NextSection(*section);
  return section;
}

std::optional<OperatorDirectory::Position> OperatorDirectory::FirstOperator(
    std::u16string_view country) const {
  const auto first = FirstSection();
  const auto line = FindLine(first ? FirstLine(*first) : std::nullopt, country);
  const auto code = line ? SkipField(*line) : std::nullopt;
  const auto section = code && !IsLineEnd(*code) ? FindSection(CopyField(*code)) : std::nullopt;
  return section ? FirstLine(*section) : std::nullopt;
}

bool OperatorDirectory::IsLineEnd(Position position) const { return StandsAt(bytes_, position, kLineEnd); }

OperatorDirectory::Position OperatorDirectory::AfterLineEnd(Position position) const {
  while (position < bytes_.size() && !IsLineEnd(position)) ++position;
  return position + kLineEnd.size();
}

}  // namespace celldesk
