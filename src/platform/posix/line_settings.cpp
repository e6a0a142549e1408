#include "platform/posix/line_settings.h"

namespace celldesk {
namespace {

struct Speed {
  std::uint32_t bits_per_second;
  speed_t constant;
};

constexpr Speed kSpeeds[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},         {150, B150},
    {200, B200},         {300, B300},         {600, B600},         {1200, B1200},       {1800, B1800},
    {2400, B2400},       {4800, B4800},       {9600, B9600},       {19200, B19200},     {38400, B38400},
    {57600, B57600},     {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000}, {1500000, B1500000},
    {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000}, {3500000, B3500000}, {4000000, B4000000},
};

constexpr tcflag_t kSizes[] = {CS5, CS6, CS7, CS8};
constexpr tcflag_t kParities[] = {0, PARENB | PARODD, PARENB, PARENB | PARODD | CMSPAR, PARENB | CMSPAR};
constexpr tcflag_t kParityBits = PARENB | PARODD | CMSPAR;

bool Describable(const LineParameters& parameters) {
  return parameters.byte_size >= 5 && parameters.byte_size <= 8 && parameters.parity <= Parity::kSpace &&
         parameters.stop_bits <= StopBits::kTwo && parameters.baud_rate != 0;
}

void SetFlag(tcflag_t& flags, tcflag_t flag, bool on) { flags = on ? flags | flag : flags & ~flag; }

void FillFlow(const LineParameters& parameters, termios& settings) {
  SetFlag(settings.c_cflag, CRTSCTS,
          parameters.rts_control() == LineControl::kHandshake ||
              (parameters.flags & LineParameters::kOutxCtsFlow) != 0);
  SetFlag(settings.c_iflag, IXON, (parameters.flags & LineParameters::kOutX) != 0);
  SetFlag(settings.c_iflag, IXOFF, (parameters.flags & LineParameters::kInX) != 0);
  settings.c_cc[VSTART] = parameters.xon_char;
  settings.c_cc[VSTOP] = parameters.xoff_char;
}

Parity ParityOf(tcflag_t control) {
  for (std::size_t i = 0; i < std::size(kParities); ++i)
    if ((control & kParityBits) == kParities[i]) return static_cast<Parity>(i);
  return Parity::kNone;
}

std::uint8_t SizeOf(tcflag_t control) {
  for (std::size_t i = 0; i < std::size(kSizes); ++i)
    if ((control & CSIZE) == kSizes[i]) return static_cast<std::uint8_t>(5 + i);
  return 8;
}

}  // namespace

std::optional<speed_t> StandardSpeed(std::uint32_t bits_per_second) {
  for (const Speed& speed : kSpeeds)
    if (speed.bits_per_second == bits_per_second) return speed.constant;
  return std::nullopt;
}

bool FillTerminalSettings(const LineParameters& parameters, termios& settings) {
  if (!Describable(parameters)) return false;
  ::cfmakeraw(&settings);
  settings.c_iflag &= ~static_cast<tcflag_t>(IXANY | INPCK | IGNPAR);
  settings.c_iflag |= IGNBRK;
  settings.c_cflag &= ~(CSIZE | CSTOPB | kParityBits);
  settings.c_cflag |= CREAD | CLOCAL | kSizes[parameters.byte_size - 5];
  settings.c_cflag |= kParities[static_cast<std::size_t>(parameters.parity)];
  SetFlag(settings.c_iflag, INPCK, (parameters.flags & LineParameters::kParityCheck) != 0);
  SetFlag(settings.c_cflag, CSTOPB, parameters.stop_bits != StopBits::kOne);
  FillFlow(parameters, settings);
  // With VMIN 1 a read that finds nothing fails with EAGAIN, so that 0 bytes always mean a line that has
  // gone.
  settings.c_cc[VMIN] = 1;
  settings.c_cc[VTIME] = 0;
  if (const auto speed = StandardSpeed(parameters.baud_rate)) ::cfsetspeed(&settings, *speed);
  return true;
}

LineParameters DescribeTerminalSettings(const termios& settings) {
  LineParameters parameters;
  for (const Speed& speed : kSpeeds)
    if (speed.constant == ::cfgetospeed(&settings)) parameters.baud_rate = speed.bits_per_second;
  parameters.byte_size = SizeOf(settings.c_cflag);
  parameters.parity = ParityOf(settings.c_cflag);
  parameters.stop_bits = (settings.c_cflag & CSTOPB) != 0 ? StopBits::kTwo : StopBits::kOne;
  parameters.set_dtr_control(LineControl::kEnable);
  parameters.set_rts_control((settings.c_cflag & CRTSCTS) != 0 ? LineControl::kHandshake
                                                               : LineControl::kEnable);
  return parameters;
}

}  // namespace celldesk
