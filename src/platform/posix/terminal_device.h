#pragma once

#include <sys/sysmacros.h>
#include <sys/types.h>

namespace celldesk {

/// True for the program's end of a pseudo-terminal ("/dev/pts/N"), by the device number of its file.
inline bool IsPseudoTerminalDevice(dev_t number) {
  constexpr unsigned kFirst = 136, kLast = 143;
  return major(number) >= kFirst && major(number) <= kLast;
}

}  // namespace celldesk
