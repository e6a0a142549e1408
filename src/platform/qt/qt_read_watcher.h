#pragma once

#include <memory>

#include "platform/read_watcher.h"

class QSocketNotifier;

namespace celldesk {

/// Watches with the toolkit's message loop.
class QtReadWatcher : public ReadWatcher {
 public:
  QtReadWatcher();
  ~QtReadWatcher() override;
  QtReadWatcher(const QtReadWatcher&) = delete;
  QtReadWatcher& operator=(const QtReadWatcher&) = delete;

  void Watch(int descriptor, std::function<void()> readable) override;
  void Stop() override;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace celldesk
