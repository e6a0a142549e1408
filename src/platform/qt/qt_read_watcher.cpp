#include "platform/qt/qt_read_watcher.h"

#include <QSocketNotifier>

namespace celldesk {

QtReadWatcher::QtReadWatcher() = default;
QtReadWatcher::~QtReadWatcher() = default;

void QtReadWatcher::Watch(int descriptor, std::function<void()> readable) {
  notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), std::move(readable));
}

void QtReadWatcher::Stop() { notifier_.reset(); }

}  // namespace celldesk
