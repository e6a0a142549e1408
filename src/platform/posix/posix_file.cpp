#include "platform/posix/posix_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <utility>

#include "platform/posix/descriptor.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr mode_t kNewFileMode = 0666;  // less the user's mask

class PosixMappedFile : public MappedFile {
 public:
  PosixMappedFile(const void* data, std::size_t size) : data_(data), size_(size) {}
  ~PosixMappedFile() override {
    if (size_ != 0) ::munmap(const_cast<void*>(data_), size_);
  }
  PosixMappedFile(const PosixMappedFile&) = delete;
  PosixMappedFile& operator=(const PosixMappedFile&) = delete;

  std::span<const std::uint8_t> bytes() const override {
    return {static_cast<const std::uint8_t*>(data_), size_};
  }

 private:
  const void* data_;
  std::size_t size_;
};

class PosixOutputFile : public OutputFile {
 public:
  explicit PosixOutputFile(int file) : file_(file) {}
  ~PosixOutputFile() override { Close(); }
  PosixOutputFile(const PosixOutputFile&) = delete;
  PosixOutputFile& operator=(const PosixOutputFile&) = delete;

  SystemError Write(std::span<const std::uint8_t> bytes) override {
    if (file_ < 0) return kErrorInvalidHandle;
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return FromErrno(errno);
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return kErrorSuccess;
  }

  // An interrupted close has closed the descriptor all the same.
  SystemError Close() override {
    const int file = std::exchange(file_, -1);
    const bool closed = file < 0 || ::close(file) == 0 || errno == EINTR;
    return closed ? kErrorSuccess : FromErrno(errno);
  }

 private:
  int file_;
};

/// Without waiting: the open of a pipe nobody writes to would.
int OpenFile(std::u16string_view path, int flags) {
  const std::string name = ToUtf8(path);
  int file = -1;
  do {
    file = ::open(name.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kNewFileMode);
  } while (file < 0 && errno == EINTR);
  return file;
}

}  // namespace

std::unique_ptr<MappedFile> PosixFileSystem::Map(std::u16string_view path, SystemError& error) {
  const Descriptor file(OpenFile(path, O_RDONLY));
  struct stat facts {};
  error = kErrorSuccess;
  if (!file.valid() || ::fstat(file.get(), &facts) != 0) {
    error = FromErrno(errno);
  } else if (!S_ISREG(facts.st_mode)) {
    error = kErrorAccessDenied;
  }
  if (error != kErrorSuccess) return nullptr;
  const auto size = static_cast<std::size_t>(facts.st_size);
  if (size == 0) return std::make_unique<PosixMappedFile>(nullptr, 0);
  void* data = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
  if (data == MAP_FAILED) {
    error = FromErrno(errno);
    return nullptr;
  }
  return std::make_unique<PosixMappedFile>(data, size);
}

std::unique_ptr<OutputFile> PosixFileSystem::Create(std::u16string_view path, SystemError& error) {
  const int file = OpenFile(path, O_WRONLY | O_CREAT | O_TRUNC);
  error = file < 0 ? FromErrno(errno) : kErrorSuccess;
  // The file is missing only where its folder is.
  if (error == kErrorFileNotFound) error = kErrorPathNotFound;
  return file < 0 ? nullptr : std::make_unique<PosixOutputFile>(file);
}

SystemError FromErrno(int code) {
  switch (code) {
    case 0:
      return kErrorSuccess;
    case ENOENT:
      return kErrorFileNotFound;
    case ENOTDIR:
      return kErrorPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ENXIO:
    case ETXTBSY:
      return kErrorAccessDenied;
    case EMFILE:
    case ENFILE:
      return kErrorTooManyOpenFiles;
    case EBADF:
      return kErrorInvalidHandle;
    case ENOMEM:
      return kErrorNotEnoughMemory;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return kErrorDiskFull;
    case ENAMETOOLONG:
    case ELOOP:
      return kErrorInvalidName;
    default:
      return kErrorGeneralFailure;
  }
}

}  // namespace celldesk
