// Input: octet 0 a value's type, octet 1 the length of its name in UTF-16 units, octet 2 the length of its
// data (both modulo 16), then name and data, then the text of a settings file. Property: a document that was
// read and written is sound and stays as it is; comments and values keep their lines; a value that is set is
// read back, also from the written text, and leaves every other value as it was; so do removals.

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "fuzz/property.h"
#include "platform/settings_document.h"

namespace {

using namespace celldesk;

constexpr std::u16string_view kKey = u"CurrentUser\\Software\\Corvane\\CellDesk";

/// Takes pieces off the front of the input.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(data, data + size) {}

  std::uint8_t Octet() {
    const std::vector<std::uint8_t> one = Take(1);
    return one.empty() ? 0 : one.front();
  }
  std::vector<std::uint8_t> Take(std::size_t size) {
    const auto end = rest_.begin() + static_cast<std::ptrdiff_t>(std::min(size, rest_.size()));
    std::vector<std::uint8_t> taken(rest_.begin(), end);
    rest_.erase(rest_.begin(), end);
    return taken;
  }
  std::string Text() const { return {rest_.begin(), rest_.end()}; }

 private:
  std::vector<std::uint8_t> rest_;
};

std::u16string NameFrom(const std::vector<std::uint8_t>& octets) {
  std::u16string name;
  for (std::size_t i = 0; i + 1 < octets.size(); i += 2)
    name += static_cast<char16_t>(octets[i] | octets[i + 1] << 8);
  return name;
}

/// Everything that a program can read: values by key and name.
using Content = std::map<std::u16string, std::map<std::u16string, RegistryData>>;

void Collect(const SettingsDocument& document, const std::u16string& key, Content& content) {
  HOLDS(document.HasKey(key));
  auto& values = content[key];
  for (const std::u16string& name : document.ValueNames(key)) {
    const auto value = document.Value(key, name);
    HOLDS(value.has_value());
    HOLDS(values.emplace(name, *value).second);
  }
  for (const std::u16string& name : document.SubkeyNames(key)) Collect(document, key + u'\\' + name, content);
}

Content ContentOf(const SettingsDocument& document) {
  Content content;
  for (const char16_t* root : {u"CurrentUser", u"LocalMachine", u"ClassesRoot"})
    Collect(document, root, content);
  return content;
}

/// Comments, values and blank lines in order, and how many lines begin a key.
struct Lines {
  std::vector<std::string> kept;
  std::size_t keys = 0;
};

Lines LinesOf(std::string_view text) {
  Lines lines;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string line(text.substr(0, end));
    while (line.ends_with('\r')) line.pop_back();
    const std::size_t first = line.find_first_not_of(" \t");
    if (first != line.npos && line[first] == '[') {
      ++lines.keys;
    } else {
      lines.kept.push_back(line);
    }
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
  return lines;
}

SettingsDocument Reread(const SettingsDocument& document) {
  SettingsDocument again = SettingsDocument::Parse(document.ToText());
  HOLDS(!again.damaged());
  HOLDS(again.ToText() == document.ToText());
  HOLDS(ContentOf(again) == ContentOf(document));
  return again;
}

void CheckLines(const SettingsDocument& document, const std::string& text) {
  const Lines given = LinesOf(text), written = LinesOf(document.ToText());
  // A key that comes twice is put together.
  if (!document.damaged() && given.keys == written.keys) HOLDS(given.kept == written.kept);
}

// `after` has the same values as `before`, but for those of this name in the key.
void CheckOthers(const SettingsDocument& before, SettingsDocument after, std::u16string_view name) {
  SettingsDocument without = before;
  without.RemoveValue(kKey, name);
  after.RemoveValue(kKey, name);
  const Content expected = ContentOf(without);
  Content found = ContentOf(after);
  // Setting a value makes the keys on the way to it.
  std::erase_if(found, [&](const auto& key) { return key.second.empty() && !expected.contains(key.first); });
  HOLDS(found == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr RegistryType kTypes[] = {RegistryType::kString, RegistryType::kNumber, RegistryType::kBinary};
  Input input(data, size);
  const RegistryType type = kTypes[input.Octet() % 3];
  const std::size_t name_length = input.Octet() % 16, data_length = input.Octet() % 16;
  const std::u16string name = NameFrom(input.Take(2 * name_length));
  const RegistryData value{type, input.Take(data_length)};
  const std::string text = input.Text();

  SettingsDocument document = SettingsDocument::Parse(text);
  CheckLines(document, text);
  const SettingsDocument before = Reread(document);
  document.SetValue(kKey, name, value);
  HOLDS(document.Value(kKey, name) == value);
  HOLDS(Reread(document).Value(kKey, name) == value);
  CheckOthers(before, document, name);
  HOLDS(document.RemoveValue(kKey, name));
  HOLDS(!document.Value(kKey, name) && !document.RemoveValue(kKey, name));
  Reread(document);
  document.RemoveKey(u"CurrentUser\\Software");
  HOLDS(!document.HasKey(kKey) && !document.HasKey(u"CurrentUser\\software"));
  Reread(document);
  return 0;
}
