#include "platform/posix/posix_instance.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace celldesk {
namespace {

namespace fs = std::filesystem;

constexpr const char* kWindows = "windows";
constexpr char kShow = 's';

std::optional<sockaddr_un> AddressOf(const fs::path& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.native().size() >= sizeof(address.sun_path)) return std::nullopt;
  std::memcpy(address.sun_path, path.c_str(), path.native().size());
  return address;
}

Descriptor MakeSocket() {
  return Descriptor(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

const sockaddr* Generic(const sockaddr_un& address) { return reinterpret_cast<const sockaddr*>(&address); }

// A window whose queue is full has been asked already.
bool Ask(int socket, const fs::path& window) {
  const auto address = AddressOf(window);
  if (!address) return false;
  if (::sendto(socket, &kShow, 1, MSG_NOSIGNAL, Generic(*address), sizeof(*address)) == 1) return true;
  if (errno == EAGAIN || errno == ENOBUFS) return true;
  if (errno == ECONNREFUSED) ::unlink(window.c_str());
  return false;
}

}  // namespace

PosixInstanceGate::PosixInstanceGate(std::unique_ptr<ReadWatcher> watcher, const RuntimeFolder& folder)
    : folder_(folder), watcher_(std::move(watcher)) {}

PosixInstanceGate::~PosixInstanceGate() { Withdraw(); }

void PosixInstanceGate::Withdraw() {
  if (own_.empty()) return;
  watcher_->Stop();
  ::unlink(own_.c_str());
  own_.clear();
  socket_.Reset();
}

bool PosixInstanceGate::WakeOther() {
  if (folder_.in_shared_place && !IsPrivateFolder(folder_.path)) return false;
  const Descriptor socket = MakeSocket();
  std::error_code error;
  for (fs::directory_iterator entry(folder_.path / kWindows, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->path() != own_ && Ask(socket.get(), entry->path())) return true;
  }
  return false;
}

bool PosixInstanceGate::MakeFolder() const {
  std::error_code error;
  const fs::path windows = folder_.path / kWindows;
  if (fs::create_directories(folder_.path, error) && folder_.in_shared_place)
    fs::permissions(folder_.path, fs::perms::owner_all, error);
  if (folder_.in_shared_place && !IsPrivateFolder(folder_.path)) return false;
  fs::create_directory(windows, error);
  return fs::is_directory(windows, error);
}

void PosixInstanceGate::Announce(std::function<void()> show) {
  if (!own_.empty() || !MakeFolder()) return;
  const fs::path path = folder_.path / kWindows / std::to_string(::getpid());
  const auto address = AddressOf(path);
  socket_ = MakeSocket();
  if (!address || !socket_.valid()) return;
  ::unlink(path.c_str());
  if (::bind(socket_.get(), Generic(*address), sizeof(*address)) != 0) return;
  own_ = path;
  watcher_->Watch(socket_.get(), [this, show = std::move(show)] { Receive(show); });
}

void PosixInstanceGate::Receive(const std::function<void()>& show) const {
  char request = 0;
  bool asked = false;
  while (::recv(socket_.get(), &request, 1, 0) == 1) asked = asked || request == kShow;
  if (asked) show();
}

}  // namespace celldesk
