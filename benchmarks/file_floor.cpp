#include "file_floor.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "measure.h"
#include "util/windows1250.h"

namespace celldesk::bench {

Characters::Characters(FileSystem& files, std::u16string_view path) {
  SystemError error = kErrorSuccess;
  const auto file = files.Map(path, error);
  if (file == nullptr) return;
  const std::span<const std::uint8_t> content = file->bytes();
  // Arrays without a value of their own, so that their memory is touched once.
  const std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[content.size()]);
  std::copy(content.begin(), content.end(), bytes.get());
  Keep(bytes);
  size_ = content.size();
  text_.reset(new char16_t[size_]);
  std::transform(bytes.get(), bytes.get() + size_, text_.get(), FromWindows1250);
  Keep(text_);
}

bool ConvertAndWrite(FileSystem& files, std::u16string_view path, std::u16string_view text) {
  std::vector<std::uint8_t> bytes(text.size());
  std::transform(text.begin(), text.end(), bytes.begin(), ToWindows1250);
  SystemError error = kErrorSuccess;
  const auto file = files.Create(path, error);
  return file != nullptr && file->Write(bytes) == kErrorSuccess && file->Close() == kErrorSuccess;
}

}  // namespace celldesk::bench
