#include "platform/posix/posix_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <new>
#include <string>
#include <system_error>
#include <utility>

#include "platform/posix/descriptor.h"
#include "util/text.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFileMode = 0666;  // less the user's mask

// The content is read, not mapped by the system: a mapped file that another program cuts short would end this
// one at the first access beyond the new end.
class PosixMappedFile : public MappedFile {
 public:
  SystemError Read(int file, std::size_t size) {
    if (size == 0) return kErrorSuccess;
    data_.reset(new (std::nothrow) std::uint8_t[size]);
    if (!data_) return kErrorNotEnoughMemory;
    while (size_ < size) {
      const ssize_t count = ::read(file, data_.get() + size_, size - size_);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return FromErrno(errno);
      if (count == 0) return kErrorReadFault;
      size_ += static_cast<std::size_t>(count);
    }
    return kErrorSuccess;
  }

  std::span<const std::uint8_t> bytes() const override { return {data_.get(), size_}; }

 private:
  std::unique_ptr<std::uint8_t[]> data_;
  std::size_t size_ = 0;
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
  } else if (static_cast<std::uintmax_t>(facts.st_size) > kLargestFile) {
    error = kErrorFileTooLarge;
  }
  if (error != kErrorSuccess) return nullptr;
  auto mapped = std::make_unique<PosixMappedFile>();
  error = mapped->Read(file.get(), static_cast<std::size_t>(facts.st_size));
  return error == kErrorSuccess ? std::move(mapped) : nullptr;
}

// A write to a pipe may end the program (when its reader goes), and so may one beyond the user's file size
// limit: the first is refused, the second becomes a failure like a full disk.
std::unique_ptr<OutputFile> PosixFileSystem::Create(std::u16string_view path, SystemError& error) {
  std::signal(SIGXFSZ, SIG_IGN);
  Descriptor file(OpenFile(path, O_WRONLY | O_CREAT | O_TRUNC));
  struct stat facts {};
  error = kErrorSuccess;
  if (!file.valid() || ::fstat(file.get(), &facts) != 0) {
    error = FromErrno(errno);
  } else if (S_ISFIFO(facts.st_mode)) {
    error = kErrorAccessDenied;
  }
  // The file is missing only where its folder is.
  if (error == kErrorFileNotFound) error = kErrorPathNotFound;
  return error != kErrorSuccess ? nullptr : std::make_unique<PosixOutputFile>(file.release());
}

SystemError PosixFileSystem::MakeFolder(std::u16string_view path) {
  std::error_code error;
  fs::create_directories(ToUtf8(path), error);
  return FromErrno(error.value());
}

std::vector<std::u16string> PosixFileSystem::Names(std::u16string_view folder) {
  std::vector<std::u16string> names;
  std::error_code error;
  for (fs::directory_iterator entry(ToUtf8(folder), error), end; !error && entry != end;
       entry.increment(error))
    names.push_back(FromUtf8(entry->path().filename().native()));
  return names;
}

SystemError PosixFileSystem::Rename(std::u16string_view path, std::u16string_view new_path) {
  return ::rename(ToUtf8(path).c_str(), ToUtf8(new_path).c_str()) == 0 ? kErrorSuccess : FromErrno(errno);
}

SystemError PosixFileSystem::Remove(std::u16string_view path) {
  return ::unlink(ToUtf8(path).c_str()) == 0 ? kErrorSuccess : FromErrno(errno);
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
