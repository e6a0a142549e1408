#include "support/fake_file_system.h"

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
    content_.append(bytes.begin(), bytes.end());
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

}  // namespace celldesk
