#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file.h"

namespace celldesk {

/// One file in memory, whatever its path.
class MemoryFile : public FileSystem {
 public:
  std::unique_ptr<MappedFile> Map(std::u16string_view /*path*/, SystemError& error) override {
    error = kErrorSuccess;
    return std::make_unique<Mapped>(content);
  }
  std::unique_ptr<OutputFile> Create(std::u16string_view /*path*/, SystemError& error) override {
    error = kErrorSuccess;
    content.clear();
    return std::make_unique<Output>(content);
  }
  SystemError MakeFolder(std::u16string_view /*path*/) override { return kErrorSuccess; }
  std::vector<std::u16string> Names(std::u16string_view /*folder*/) override { return {}; }
  SystemError Rename(std::u16string_view /*path*/, std::u16string_view /*new_path*/) override {
    return kErrorSuccess;
  }
  SystemError Remove(std::u16string_view /*path*/) override { return kErrorSuccess; }

  std::string content;

 private:
  class Mapped : public MappedFile {
   public:
    explicit Mapped(std::string_view content) : content_(content) {}
    std::span<const std::uint8_t> bytes() const override {
      return {reinterpret_cast<const std::uint8_t*>(content_.data()), content_.size()};
    }

   private:
    std::string content_;
  };

  class Output : public OutputFile {
   public:
    explicit Output(std::string& content) : content_(content) {}
    SystemError Write(std::span<const std::uint8_t> bytes) override {
      content_.append(bytes.begin(), bytes.end());
      return kErrorSuccess;
    }
    SystemError Close() override { return kErrorSuccess; }

   private:
    std::string& content_;
  };
};

}  // namespace celldesk
