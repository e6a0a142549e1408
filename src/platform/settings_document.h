#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/registry.h"

namespace celldesk {

/// The text of a settings file: comments, sections "[CurrentUser/Software/Corvane/CellDesk]" that are keys,
/// and under them values "name = type:data". Lines that nobody changes stay as they are. Keys and names are
/// compared without regard to ASCII case; of two values of one name the first counts.
///
/// Paths are written with "\" between the names, the first of which is the root; a root is always there.
class SettingsDocument {
 public:
  /// Every text can be read; see damaged().
  static SettingsDocument Parse(std::string_view text);
  std::string ToText() const;
  /// The text had lines of no known form, which ToText no longer gives.
  bool damaged() const { return damaged_; }

  bool HasKey(std::u16string_view path) const;
  void AddKey(std::u16string_view path);
  /// Removes the key with everything under it; the key above it stays.
  void RemoveKey(std::u16string_view path);
  /// Names of the keys right under `path`.
  std::vector<std::u16string> SubkeyNames(std::u16string_view path) const;

  std::optional<RegistryData> Value(std::u16string_view path, std::u16string_view name) const;
  /// The key must be there.
  void SetValue(std::u16string_view path, std::u16string_view name, const RegistryData& data);
  /// False when there is no such value.
  bool RemoveValue(std::u16string_view path, std::u16string_view name);
  /// Names of the values that can be read.
  std::vector<std::u16string> ValueNames(std::u16string_view path) const;

 private:
  struct Line {
    std::string text;
    std::optional<std::u16string> name;  ///< of a value; none for comments and blank lines
    std::string_view data() const;
  };
  struct Section {
    std::u16string path;  ///< empty for the lines before the first section
    std::vector<Line> lines;
  };

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  void ParseLine(std::string_view text, std::size_t& section);
  std::size_t SectionFor(std::u16string_view path);
  std::size_t FindSection(std::u16string_view path) const;
  static std::size_t FindLine(const Section& section, std::u16string_view name);
  void NumberSections();

  std::vector<Section> sections_{1};
  std::unordered_map<std::u16string, std::size_t> section_of_;  ///< by path in lower case
  bool damaged_ = false;
};

}  // namespace celldesk
