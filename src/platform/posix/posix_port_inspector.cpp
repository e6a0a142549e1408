#include "platform/posix/posix_port_inspector.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "platform/posix/terminal_device.h"
#include "util/text.h"

namespace celldesk {
namespace {

namespace fs = std::filesystem;

std::u16string GroupName(gid_t id) {
  std::vector<char> buffer(16384);
  group entry{};
  group* found = nullptr;
  const bool known = ::getgrgid_r(id, &entry, buffer.data(), buffer.size(), &found) == 0 && found;
  return known ? FromUtf8(found->gr_name) : std::u16string();
}

PortObstacle NoPermission(const struct stat& device) {
  constexpr mode_t kGroupMay = S_IRGRP | S_IWGRP;
  PortObstacle obstacle{PortObstacle::Kind::kNoPermission, {}, {}, 0};
  if ((device.st_mode & kGroupMay) == kGroupMay) obstacle.group = GroupName(device.st_gid);
  return obstacle;
}

// As the table of locks spells a file: major and minor of its file system in hexadecimal, and its number
// there.
std::string LockedFile(const struct stat& file) {
  char text[64];
  std::snprintf(text, sizeof text, "%02x:%02x:%lu", major(file.st_dev), minor(file.st_dev),
                static_cast<unsigned long>(file.st_ino));
  return text;
}

int ProcessId(const std::string& name) {
  const bool number = !name.empty() && name.find_first_not_of("0123456789") == std::string::npos;
  return number && name.size() < 10 ? std::stoi(name) : 0;
}

}  // namespace

PortObstacle PosixPortInspector::DescribeHolder(std::u16string_view device) {
  const std::string path = ToUtf8(device);
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return {PortObstacle::Kind::kGone, {}, {}, 0};
  if (::faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) != 0) return NoPermission(status);
  if (const int holder = LockHolder(status)) return Held(holder);
  const int holder = IsPseudoTerminalDevice(status.st_rdev) ? 0 : OpenHolder(status);
  return holder != 0 ? Held(holder) : PortObstacle();
}

int PosixPortInspector::LockHolder(const struct stat& device) const {
  std::ifstream locks(processes_ / "locks");
  const std::string wanted = LockedFile(device);
  for (std::string line; std::getline(locks, line);) {
    std::istringstream fields(line);
    std::string number, kind, mode, access, holder, file;
    fields >> number >> kind >> mode >> access >> holder >> file;
    if (file == wanted) return ProcessId(holder);
  }
  return 0;
}

int PosixPortInspector::OpenHolder(const struct stat& device) const {
  std::error_code error;
  for (fs::directory_iterator process(processes_, error), end; !error && process != end;
       process.increment(error)) {
    const int id = ProcessId(process->path().filename().string());
    if (id != 0 && id != ::getpid() && HasOpen(process->path(), device)) return id;
  }
  return 0;
}

bool PosixPortInspector::HasOpen(const fs::path& process, const struct stat& device) const {
  std::error_code error;
  for (fs::directory_iterator file(process / "fd", error), end; !error && file != end;
       file.increment(error)) {
    struct stat status {};
    if (::stat(file->path().c_str(), &status) == 0 && S_ISCHR(status.st_mode) &&
        status.st_rdev == device.st_rdev)
      return true;
  }
  return false;
}

PortObstacle PosixPortInspector::Held(int process_id) const {
  std::ifstream file(processes_ / std::to_string(process_id) / "comm");
  std::string name;
  std::getline(file, name);
  return {PortObstacle::Kind::kHeld, {}, FromUtf8(name), process_id};
}

}  // namespace celldesk
