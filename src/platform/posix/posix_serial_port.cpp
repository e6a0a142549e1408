#include "platform/posix/posix_serial_port.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "platform/posix/line_settings.h"
#include "platform/posix/terminal_device.h"
#include "util/text.h"

namespace celldesk {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// DTR/DSR, RTS/CTS, carrier detect, parity check, XON/XOFF and its characters, total and interval time-outs,
// special characters: what a serial driver offers.
constexpr std::uint32_t kCapabilities = 0x01FF;

// What a write may take beyond the time its bytes need on the line.
constexpr milliseconds kWriteGrace{3000};

constexpr milliseconds kForever{-1};

OpenProblem ProblemOf(int error) {
  switch (error) {
    case ENOENT:
    case ENXIO:
    case ENODEV:
    case ENOTDIR:
    case EIO:
      return OpenProblem::kNoSuchPort;
    case EACCES:
    case EPERM:
      return OpenProblem::kNoPermission;
    case EBUSY:
    case EWOULDBLOCK:
      return OpenProblem::kInUse;
    default:
      return OpenProblem::kOther;
  }
}

// The exclusive mark of a pseudo-terminal outlives the process that set it, as long as the other end is open;
// after a crash nobody could open the port again. The lock serves there alone.
bool IsPseudoTerminal(int line) {
  struct stat status {};
  return ::fstat(line, &status) == 0 && IsPseudoTerminalDevice(status.st_rdev);
}

bool Claim(int line) {
  if (::flock(line, LOCK_EX | LOCK_NB) != 0) return false;
  return IsPseudoTerminal(line) || ::ioctl(line, TIOCEXCL) == 0;
}

// The C library reports EINVAL when a pseudo-terminal, which has no framing, did not take byte size and
// parity; all the rest has been applied then.
bool ApplySettings(int line, const termios& settings) {
  return ::tcsetattr(line, TCSANOW, &settings) == 0 || (errno == EINVAL && IsPseudoTerminal(line));
}

void SetControlLine(int line, int which, bool on) {
  // Pseudo-terminals have no such lines and refuse.
  (void)::ioctl(line, on ? TIOCMBIS : TIOCMBIC, &which);
}

}  // namespace

std::unique_ptr<PosixSerialPort> PosixSerialPort::Open(const std::string& device, milliseconds gone_delay,
                                                       OpenProblem& problem) {
  Descriptor line(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  termios found{};
  if (!line.valid() || ::tcgetattr(line.get(), &found) != 0 || !Claim(line.get())) {
    problem = ProblemOf(errno);
    return nullptr;
  }
  std::unique_ptr<PosixSerialPort> port(new PosixSerialPort(std::move(line), found, gone_delay));
  const bool ready = port->Prepare();
  problem = ready ? OpenProblem::kNone : OpenProblem::kOther;
  return ready ? std::move(port) : nullptr;
}

PosixSerialPort::PosixSerialPort(Descriptor line, const termios& found, milliseconds gone_delay)
    : line_(std::move(line)),
      found_(found),
      gone_delay_(gone_delay),
      parameters_(DescribeTerminalSettings(found)) {}

PosixSerialPort::~PosixSerialPort() {
  ::tcsetattr(line_.get(), TCSANOW, &found_);
  if (!IsPseudoTerminal(line_.get())) ::ioctl(line_.get(), TIOCNXCL);
}

bool PosixSerialPort::Prepare() {
  termios raw = found_;
  return read_purge_.valid() && write_purge_.valid() && FillTerminalSettings(parameters_, raw) &&
         ApplySettings(line_.get(), raw);
}

PosixSerialPort::Wait PosixSerialPort::WaitFor(short events, WakeSignal& purge, milliseconds timeout) const {
  pollfd waits[] = {{line_.get(), events, 0}, {purge.descriptor(), POLLIN, 0}};
  if (events == 0) waits[0].fd = -1;
  const int ready = ::poll(waits, 2, static_cast<int>(timeout.count()));
  if (ready < 0) return Wait::kReady;
  if (purge.Take()) return Wait::kPurged;
  return ready == 0 ? Wait::kTimeout : Wait::kReady;
}

ReadResult PosixSerialPort::Read(std::span<std::uint8_t> buffer) {
  std::size_t count = 0;
  while (count < buffer.size()) {
    const Wait wait = WaitFor(POLLIN, read_purge_, count == 0 ? kForever : interval_.load());
    if (wait == Wait::kPurged) return {S_OK, 0};
    if (wait == Wait::kTimeout) break;
    const ssize_t got = ::read(line_.get(), buffer.data() + count, buffer.size() - count);
    if (got > 0) count += static_cast<std::size_t>(got);
    const bool gone = got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR);
    if (gone && count > 0) break;
    if (gone) return ReadOnGoneLine();
  }
  return {S_OK, count};
}

ReadResult PosixSerialPort::ReadOnGoneLine() {
  const auto end = steady_clock::now() + gone_delay_;
  for (;;) {
    const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
    if (WaitFor(0, read_purge_, std::max(left, milliseconds(0))) == Wait::kPurged) return {S_OK, 0};
    if (left <= milliseconds(0)) return {E_FAIL, 0};
  }
}

Status PosixSerialPort::Write(std::span<const std::uint8_t> bytes) {
  (void)write_purge_.Take();
  const auto end = steady_clock::now() + WriteTime(bytes.size());
  while (!bytes.empty()) {
    const ssize_t put = ::write(line_.get(), bytes.data(), bytes.size());
    if (put > 0) bytes = bytes.subspan(static_cast<std::size_t>(put));
    if (put < 0 && errno != EAGAIN && errno != EINTR) return E_FAIL;
    const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
    if (bytes.empty()) break;
    if (left <= milliseconds(0)) return E_FAIL;
    if (WaitFor(POLLOUT, write_purge_, left) == Wait::kPurged) {
      // What was put on the line between the purge's own flush and now.
      ::tcflush(line_.get(), TCOFLUSH);
      return E_FAIL;
    }
  }
  return S_OK;
}

milliseconds PosixSerialPort::WriteTime(std::size_t bytes) const {
  constexpr std::uint64_t kBitsPerByte = 12;
  return kWriteGrace + milliseconds(bytes * kBitsPerByte * 1000 / parameters_.baud_rate);
}

void PosixSerialPort::Purge() {
  read_purge_.Raise();
  write_purge_.Raise();
  ::tcflush(line_.get(), TCIOFLUSH);
}

Status PosixSerialPort::SetParameters(const LineParameters& parameters) {
  termios settings{};
  const int line = line_.get();
  if (::tcgetattr(line, &settings) != 0 || !FillTerminalSettings(parameters, settings)) return E_FAIL;
  if (!ApplySettings(line, settings)) return E_FAIL;
  if (!StandardSpeed(parameters.baud_rate) && !SetCustomSpeed(line, parameters.baud_rate)) return E_FAIL;
  DriveControlLines(parameters);
  parameters_ = parameters;
  return S_OK;
}

void PosixSerialPort::DriveControlLines(const LineParameters& parameters) const {
  SetControlLine(line_.get(), TIOCM_DTR, parameters.dtr_control() != LineControl::kDisable);
  if (parameters.rts_control() != LineControl::kHandshake)
    SetControlLine(line_.get(), TIOCM_RTS, parameters.rts_control() != LineControl::kDisable);
}

Status PosixSerialPort::SetReadInterval(milliseconds interval) {
  interval_ = interval;
  return S_OK;
}

// Errors do not latch here: a damaged byte is delivered as it came and the line goes on.
Status PosixSerialPort::ClearError() { return S_OK; }

std::optional<std::uint32_t> PosixSerialPort::ProviderCapabilities() const { return kCapabilities; }

std::u16string PosixPortOpener::DeviceOf(std::u16string_view name) {
  if (name.starts_with(u'/')) return std::u16string(name);
  for (const PortInfo& port : ports_.ActivePorts())
    if (port.name == name) return port.device;
  return {};
}

std::unique_ptr<SerialPort> PosixPortOpener::Open(std::u16string_view name, OpenProblem* problem) {
  OpenProblem found = OpenProblem::kNoSuchPort;
  std::unique_ptr<SerialPort> port;
  const std::u16string device = DeviceOf(name);
  if (!device.empty()) port = PosixSerialPort::Open(ToUtf8(device), gone_delay_, found);
  if (problem) *problem = found;
  return port;
}

}  // namespace celldesk
