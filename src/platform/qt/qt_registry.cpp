#include "platform/qt/qt_registry.h"

#include <QStandardPaths>
#include <utility>

#include "platform/qt/settings_file.h"
#include "platform/settings_document.h"

namespace celldesk {
namespace {

std::u16string RootName(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::kClassesRoot:
      return u"ClassesRoot";
    case RegistryRoot::kCurrentUser:
      return u"CurrentUser";
    default:
      return u"LocalMachine";
  }
}

// The root and the names of `path`, whatever separators stand at its ends or doubled in it.
std::u16string FullPath(RegistryRoot root, std::u16string_view path) {
  std::u16string full = RootName(root);
  while (!path.empty()) {
    const std::size_t end = path.find(u'\\');
    if (end != 0) full += u"\\" + std::u16string(path.substr(0, end));
    path.remove_prefix(end == path.npos ? path.size() : end + 1);
  }
  return full;
}

bool IsRoot(const std::u16string& path) { return path.find(u'\\') == path.npos; }

class QtRegistryKey : public RegistryKey {
 public:
  QtRegistryKey(std::shared_ptr<SettingsFile> file, std::u16string path)
      : file_(std::move(file)), path_(std::move(path)) {}

  std::optional<RegistryData> Query(std::u16string_view name) const override {
    return Present().Value(path_, name);
  }

  SystemError Set(std::u16string_view name, const RegistryData& data) override {
    return file_->Change([&](SettingsDocument& document) {
      if (!document.HasKey(path_)) return kErrorFileNotFound;
      if (document.Value(path_, name) != data) document.SetValue(path_, name, data);
      return kErrorSuccess;
    });
  }

  SystemError DeleteValue(std::u16string_view name) override {
    return file_->Change([&](SettingsDocument& document) {
      return document.RemoveValue(path_, name) ? kErrorSuccess : kErrorFileNotFound;
    });
  }

  std::vector<std::u16string> SubkeyNames() const override { return Present().SubkeyNames(path_); }
  std::vector<std::u16string> ValueNames() const override { return Present().ValueNames(path_); }
  RegistryCounts Counts() const override {
    const SettingsDocument document = Present();
    return {document.SubkeyNames(path_).size(), document.ValueNames(path_).size()};
  }

 private:
  SettingsDocument Present() const { return file_->Read().value_or(SettingsDocument()); }

  std::shared_ptr<SettingsFile> file_;
  const std::u16string path_;
};

}  // namespace

QtRegistry::QtRegistry(std::u16string path) : file_(std::make_shared<SettingsFile>(std::move(path))) {}

QtRegistry::~QtRegistry() = default;

std::u16string QtRegistry::DefaultPath() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return (folder + "/celldesk/settings.ini").toStdU16String();
}

std::unique_ptr<RegistryKey> QtRegistry::Create(RegistryRoot root, std::u16string_view path,
                                                KeyDisposition& disposition, SystemError& error) {
  const std::u16string full = FullPath(root, path);
  disposition = KeyDisposition::kOpened;
  if (auto key = Open(root, path, error)) return key;
  error = file_->Change([&](SettingsDocument& document) {
    if (document.HasKey(full)) return kErrorSuccess;
    document.AddKey(full);
    disposition = KeyDisposition::kCreated;
    return kErrorSuccess;
  });
  return error == kErrorSuccess ? std::make_unique<QtRegistryKey>(file_, full) : nullptr;
}

std::unique_ptr<RegistryKey> QtRegistry::Open(RegistryRoot root, std::u16string_view path,
                                              SystemError& error) {
  const std::u16string full = FullPath(root, path);
  const auto document = file_->Read();
  const bool found = document && document->HasKey(full);
  error = found ? kErrorSuccess : kErrorFileNotFound;
  return found ? std::make_unique<QtRegistryKey>(file_, full) : nullptr;
}

SystemError QtRegistry::Delete(RegistryRoot root, std::u16string_view path) {
  const std::u16string full = FullPath(root, path);
  if (IsRoot(full)) return kErrorAccessDenied;
  return file_->Change([&](SettingsDocument& document) {
    if (!document.HasKey(full)) return kErrorFileNotFound;
    document.RemoveKey(full);
    return kErrorSuccess;
  });
}

}  // namespace celldesk
