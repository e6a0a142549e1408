#include "support/fake_file_system.h"

#include <utility>

namespace celldesk {
namespace {

class FakeMappedFile : public MappedFile {
 public:
  FakeMappedFile(FakeFileSystem& system, std::string content)
      : system_(system), content_(std::move(content)) {
    ++system_.open_files;
  }
  ~FakeMappedFile() override { --system_.open_files; }
  FakeMappedFile(const FakeMappedFile&) = delete;
  FakeMappedFile& operator=(const FakeMappedFile&) = delete;

  std::span<const std::uint8_t> bytes() const override {
    return {reinterpret_cast<const std::uint8_t*>(content_.data()), content_.size()};
  }

 private:
  FakeFileSystem& system_;
  std::string content_;
};

class FakeOutputFile : public OutputFile {
 public:
  FakeOutputFile(FakeFileSystem& system, std::string& content) : system_(system), content_(content) {
    ++system_.open_files;
  }
  ~FakeOutputFile() override { --system_.open_files; }
  FakeOutputFile(const FakeOutputFile&) = delete;
  FakeOutputFile& operator=(const FakeOutputFile&) = delete;

  SystemError Write(std::span<const std::uint8_t> bytes) override {
    if (++system_.writes > system_.allowed_writes && system_.write_error != kErrorSuccess)
      return system_.write_error;
    content_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return kErrorSuccess;
  }
  SystemError Close() override { return system_.close_error; }

 private:
  FakeFileSystem& system_;
  std::string& content_;
};

}  // namespace

std::unique_ptr<MappedFile> FakeFileSystem::Map(std::u16string_view path, SystemError& error) {
  const auto file = files.find(path);
  error = open_error != kErrorSuccess ? open_error : file == files.end() ? kErrorFileNotFound : kErrorSuccess;
  return error != kErrorSuccess ? nullptr : std::make_unique<FakeMappedFile>(*this, file->second);
}

std::unique_ptr<OutputFile> FakeFileSystem::Create(std::u16string_view path, SystemError& error) {
  error = open_error;
  if (error != kErrorSuccess) return nullptr;
  std::string& content = files[std::u16string(path)];
  content.clear();
  return std::make_unique<FakeOutputFile>(*this, content);
}

// Folders are there as soon as a file is in them.
SystemError FakeFileSystem::MakeFolder(std::u16string_view /*path*/) { return open_error; }

std::vector<std::u16string> FakeFileSystem::Names(std::u16string_view folder) {
  std::vector<std::u16string> names;
  const std::u16string start = std::u16string(folder) + u'/';
  for (const auto& [path, content] : files) {
    const bool inside = path.starts_with(start) && path.find(u'/', start.size()) == path.npos;
    if (inside) names.push_back(path.substr(start.size()));
  }
  return names;
}

SystemError FakeFileSystem::Rename(std::u16string_view path, std::u16string_view new_path) {
  const auto file = files.find(path);
  if (rename_error != kErrorSuccess) return rename_error;
  if (file == files.end()) return kErrorFileNotFound;
  std::string content = std::move(file->second);
  files.erase(file);
  files[std::u16string(new_path)] = std::move(content);
  return kErrorSuccess;
}

SystemError FakeFileSystem::Remove(std::u16string_view path) {
  const auto file = files.find(path);
  if (file == files.end()) return kErrorFileNotFound;
  files.erase(file);
  return kErrorSuccess;
}

}  // namespace celldesk
