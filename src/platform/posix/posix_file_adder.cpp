#include "platform/posix/posix_file_adder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>

#include "platform/posix/descriptor.h"
#include "platform/posix/posix_file.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr mode_t kNewFileMode = 0666;  // less the user's mask

SystemError LastError() { return errno == EEXIST ? kErrorFileExists : FromErrno(errno); }

bool WriteAll(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(file, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Some file systems have nothing to bring to a medium and say so with EINVAL.
bool Flush(int file) { return ::fsync(file) == 0 || errno == EINVAL; }

SystemError WriteNew(const std::string& path, std::string_view content) {
  const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
  if (!file.valid()) return LastError();
  if (WriteAll(file.get(), content) && Flush(file.get())) return kErrorSuccess;
  const SystemError error = LastError();
  ::unlink(path.c_str());
  return error;
}

/// A file system that cannot rename without replacing is asked before.
bool RenameToNew(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  if (::access(to.c_str(), F_OK) != 0) return ::rename(from.c_str(), to.c_str()) == 0;
  errno = EEXIST;
  return false;
}

}  // namespace

// A write beyond the user's file size limit becomes a failure like a full disk, not the program's end.
SystemError PosixFileAdder::Add(std::u16string_view path, std::string_view content) {
  std::signal(SIGXFSZ, SIG_IGN);
  const std::filesystem::path name(ToUtf8(path));
  std::filesystem::path hidden_name(".");
  hidden_name += name.filename();
  hidden_name += ".tmp";
  const std::string hidden = (name.parent_path() / hidden_name).string();
  const SystemError error = WriteNew(hidden, content);
  if (error != kErrorSuccess) return error;
  if (RenameToNew(hidden, name.string())) return kErrorSuccess;
  const SystemError rename_error = LastError();
  ::unlink(hidden.c_str());
  return rename_error;
}

}  // namespace celldesk
