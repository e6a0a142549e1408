#include "ui/file_types.h"

#include <string>

#include "config/settings_key.h"
#include "platform/shell.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

struct FileType {
  std::u16string_view extension;
  std::u16string_view name;
  int description;
  int icon;
};

constexpr FileType kFileTypes[] = {
    {u".adr", u"adrfile", 176, 2},
    {u".sms", u"smsfile", 177, 3},
};

void SetDefaultValue(Registry& registry, std::u16string_view path, std::u16string_view text) {
  SettingsKey key(registry);
  if (key.Create(RegistryRoot::kClassesRoot, path) != kErrorSuccess) return;
  static_cast<void>(key.Value({}).SetString(text));
}

void Register(Registry& registry, const FileType& type, const std::u16string& program) {
  const std::u16string name(type.name);
  SetDefaultValue(registry, type.extension, name);
  SetDefaultValue(registry, name, LoadString(type.description));
  SetDefaultValue(registry, name + u"\\DefaultIcon", Format(u"%s,-%i", {program, type.icon}));
  SetDefaultValue(registry, name + u"\\Shell\\Open\\Command", Format(u"\"%s\" %%1", {program}));
}

}  // namespace

void RegisterFileTypes(Registry& registry, const Shell& shell) {
  if (!shell.RegistersFileTypes()) return;
  const std::u16string program = shell.ProgramPath();
  if (program.empty()) return;
  for (const FileType& type : kFileTypes) Register(registry, type, program);
}

}  // namespace celldesk
