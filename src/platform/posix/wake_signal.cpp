#include "platform/posix/wake_signal.h"

#include <sys/eventfd.h>

namespace celldesk {

WakeSignal::WakeSignal() : event_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void WakeSignal::Raise() { (void)::eventfd_write(event_.get(), 1); }

bool WakeSignal::Take() {
  eventfd_t count = 0;
  return ::eventfd_read(event_.get(), &count) == 0;
}

}  // namespace celldesk
