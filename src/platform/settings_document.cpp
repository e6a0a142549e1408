#include "platform/settings_document.h"

#include <algorithm>
#include <unordered_set>

#include "platform/settings_value.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";
constexpr char16_t kSeparator = u'\\';

char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

std::u16string Lowered(std::u16string_view name) {
  std::u16string lowered(name);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), Lower);
  return lowered;
}

bool SameName(std::u16string_view left, std::u16string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return Lower(a) == Lower(b); });
}

bool IsUnder(std::u16string_view path, std::u16string_view above) {
  return path.size() > above.size() && path[above.size()] == kSeparator &&
         SameName(path.substr(0, above.size()), above);
}

std::u16string_view Above(std::u16string_view path) {
  const std::size_t end = path.rfind(kSeparator);
  return end == path.npos ? std::u16string_view() : path.substr(0, end);
}

std::string_view Stripped(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == text.npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsText(std::string_view line) { return line.find('\0') == line.npos && ToUtf8(FromUtf8(line)) == line; }

// "[A/B]" to "A\B".
std::optional<std::u16string> ParseSection(std::string_view line) {
  if (line.back() != ']') return std::nullopt;
  std::string_view names = line.substr(1, line.size() - 2);
  std::u16string path;
  while (true) {
    const std::size_t end = names.find('/');
    const auto name = UnescapeText(names.substr(0, end));
    if (!name || name->empty() || name->find(kSeparator) != name->npos) return std::nullopt;
    path += (path.empty() ? u"" : u"\\") + *name;
    if (end == names.npos) return path;
    names.remove_prefix(end + 1);
  }
}

std::string SectionText(std::u16string_view path) {
  std::string text = "[";
  while (true) {
    const std::size_t end = path.find(kSeparator);
    text += EscapeText(path.substr(0, end), u"/");
    if (end == path.npos) return text + "]";
    text += "/";
    path.remove_prefix(end + 1);
  }
}

std::optional<std::u16string> ParseName(std::string_view line) {
  const std::string_view name = Stripped(line.substr(0, line.find('=')));
  return name == "@" ? std::u16string() : UnescapeText(name);
}

std::string NameText(std::u16string_view name) {
  if (name.empty()) return "@";
  // What begins a comment, a section or the default value's sign must not begin a name.
  const bool telling = std::u16string_view(u"#;[@").find(name.front()) != std::u16string_view::npos;
  const std::u16string_view first = name.substr(0, telling ? 1 : 0);
  return EscapeText(first, first) + EscapeText(name.substr(first.size()), u"=");
}

}  // namespace

std::string_view SettingsDocument::Line::data() const {
  const std::string_view after = std::string_view(text).substr(text.find('=') + 1);
  const std::size_t first = after.find_first_not_of(kBlanks);
  return first == after.npos ? "" : after.substr(first);
}

SettingsDocument SettingsDocument::Parse(std::string_view text) {
  SettingsDocument document;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::size_t section = 0;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    while (line.ends_with('\r')) line.remove_suffix(1);
    document.ParseLine(line, section);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
  return document;
}

void SettingsDocument::ParseLine(std::string_view text, std::size_t& section) {
  const std::string_view content = Stripped(text);
  const bool sound = IsText(text);
  if (sound && (content.empty() || content[0] == '#' || content[0] == ';')) {
    sections_[section].lines.push_back({std::string(text), std::nullopt});
    return;
  }
  if (sound && content[0] == '[') {
    if (const auto path = ParseSection(content)) {
      section = SectionFor(*path);
      return;
    }
    // Values of a key whose name is lost belong to no other key.
    section = 0;
  } else if (sound && section != 0 && content.find('=') != content.npos) {
    if (auto name = ParseName(content)) {
      sections_[section].lines.push_back({std::string(text), std::move(name)});
      return;
    }
  }
  damaged_ = true;
}

std::string SettingsDocument::ToText() const {
  std::string text;
  for (const Section& section : sections_) {
    if (!section.path.empty()) text += SectionText(section.path) + "\n";
    for (const Line& line : section.lines) text += line.text + "\n";
  }
  return text;
}

std::size_t SettingsDocument::SectionFor(std::u16string_view path) {
  const auto [place, is_new] = section_of_.try_emplace(Lowered(path), sections_.size());
  if (is_new) sections_.push_back({std::u16string(path), {}});
  return place->second;
}

std::size_t SettingsDocument::FindSection(std::u16string_view path) const {
  const auto found = section_of_.find(Lowered(path));
  return found == section_of_.end() ? kNone : found->second;
}

void SettingsDocument::NumberSections() {
  section_of_.clear();
  for (std::size_t i = 1; i < sections_.size(); ++i) section_of_.emplace(Lowered(sections_[i].path), i);
}

std::size_t SettingsDocument::FindLine(const Section& section, std::u16string_view name) {
  for (std::size_t i = 0; i < section.lines.size(); ++i)
    if (section.lines[i].name && SameName(*section.lines[i].name, name)) return i;
  return kNone;
}

bool SettingsDocument::HasKey(std::u16string_view path) const {
  return path.find(kSeparator) == path.npos ||
         std::any_of(sections_.begin(), sections_.end(), [&](const Section& section) {
           return SameName(section.path, path) || IsUnder(section.path, path);
         });
}

void SettingsDocument::AddKey(std::u16string_view path) {
  std::vector<Line>& before = sections_.back().lines;
  const bool first = sections_.size() == 1 && before.empty();
  const bool spaced = !before.empty() && Stripped(before.back().text).empty();
  if (!first && !spaced) before.push_back({});
  (void)SectionFor(path);
}

void SettingsDocument::RemoveKey(std::u16string_view path) {
  std::erase_if(sections_, [&](const Section& section) {
    return SameName(section.path, path) || IsUnder(section.path, path);
  });
  NumberSections();
  if (!HasKey(Above(path))) AddKey(Above(path));
}

std::vector<std::u16string> SettingsDocument::SubkeyNames(std::u16string_view path) const {
  std::vector<std::u16string> names;
  std::unordered_set<std::u16string> known;
  for (const Section& section : sections_) {
    if (!IsUnder(section.path, path)) continue;
    const std::u16string rest = section.path.substr(path.size() + 1);
    const std::u16string name = rest.substr(0, rest.find(kSeparator));
    if (known.insert(Lowered(name)).second) names.push_back(name);
  }
  return names;
}

std::optional<RegistryData> SettingsDocument::Value(std::u16string_view path,
                                                    std::u16string_view name) const {
  const std::size_t section = FindSection(path);
  if (section == kNone) return std::nullopt;
  const std::size_t line = FindLine(sections_[section], name);
  return line == kNone ? std::nullopt : DecodeValue(sections_[section].lines[line].data());
}

void SettingsDocument::SetValue(std::u16string_view path, std::u16string_view name,
                                const RegistryData& data) {
  if (FindSection(path) == kNone) AddKey(path);
  std::vector<Line>& lines = sections_[FindSection(path)].lines;
  const std::size_t old = FindLine(sections_[FindSection(path)], name);
  if (old != kNone) {
    lines[old].text = NameText(*lines[old].name) + " = " + EncodeValue(data);
    return;
  }
  auto end = lines.end();
  while (end != lines.begin() && Stripped((end - 1)->text).empty()) --end;
  lines.insert(end, {NameText(name) + " = " + EncodeValue(data), std::u16string(name)});
}

bool SettingsDocument::RemoveValue(std::u16string_view path, std::u16string_view name) {
  const std::size_t section = FindSection(path);
  return section != kNone && std::erase_if(sections_[section].lines, [&](const Line& line) {
                               return line.name && SameName(*line.name, name);
                             }) != 0;
}

std::vector<std::u16string> SettingsDocument::ValueNames(std::u16string_view path) const {
  std::vector<std::u16string> names;
  const std::size_t section = FindSection(path);
  if (section == kNone) return names;
  std::unordered_set<std::u16string> known;
  for (const Line& line : sections_[section].lines)
    if (line.name && known.insert(Lowered(*line.name)).second && DecodeValue(line.data()))
      names.push_back(*line.name);
  return names;
}

}  // namespace celldesk
