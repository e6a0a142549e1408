// Apart from line_settings.cpp because this kernel header and <termios.h> define the same structures.
#include <asm/termbits.h>
#include <sys/ioctl.h>

#include <cstdint>

namespace celldesk {

bool SetCustomSpeed(int descriptor, std::uint32_t bits_per_second);

bool SetCustomSpeed(int descriptor, std::uint32_t bits_per_second) {
  termios2 settings{};
  if (::ioctl(descriptor, TCGETS2, &settings) != 0) return false;
  settings.c_cflag &= ~static_cast<tcflag_t>(CBAUD | (CBAUD << IBSHIFT));
  settings.c_cflag |= BOTHER | (BOTHER << IBSHIFT);
  settings.c_ispeed = settings.c_ospeed = bits_per_second;
  return ::ioctl(descriptor, TCSETS2, &settings) == 0;
}

}  // namespace celldesk
