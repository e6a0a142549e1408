#include "file_floor.h"

#include <algorithm>
#include <vector>

#include "measure.h"
#include "util/windows1250.h"

namespace celldesk::bench {

// Into the same memory each time: whether the allocator gets tens of megabytes afresh depends on what ran
// before, and costs three times what the work does.
std::size_t ReadAndConvert(FileSystem& files, const std::u16string& path) {
  static std::vector<std::uint8_t> bytes;
  static std::u16string text;
  SystemError error = kErrorSuccess;
  const auto file = files.Map(path, error);
  if (file == nullptr) return 0;
  bytes.assign(file->bytes().begin(), file->bytes().end());
  text.resize(bytes.size());
  std::transform(bytes.begin(), bytes.end(), text.begin(), FromWindows1250);
  Keep(text);
  return text.size();
}

bool ConvertAndWrite(FileSystem& files, const std::u16string& path, const std::u16string& text) {
  std::vector<std::uint8_t> bytes(text.size());
  std::transform(text.begin(), text.end(), bytes.begin(), ToWindows1250);
  SystemError error = kErrorSuccess;
  const auto file = files.Create(path, error);
  return file != nullptr && file->Write(bytes) == kErrorSuccess && file->Close() == kErrorSuccess;
}

std::u16string CharactersOf(FileSystem& files, const std::u16string& path) {
  SystemError error = kErrorSuccess;
  const auto file = files.Map(path, error);
  if (file == nullptr) return {};
  const std::vector<std::uint8_t> bytes(file->bytes().begin(), file->bytes().end());
  std::u16string text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(), FromWindows1250);
  return text;
}

}  // namespace celldesk::bench
