#include "platform/qt/qt_read_watcher.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace celldesk {
namespace {

class QtReadWatcherTest : public testing::Test {
 protected:
  QtReadWatcherTest() { EXPECT_EQ(::pipe(pipe_), 0); }
  ~QtReadWatcherTest() override {
    watcher_.Stop();
    ::close(pipe_[0]);
    ::close(pipe_[1]);
  }
  void Write() { EXPECT_EQ(::write(pipe_[1], "x", 1), 1); }

  int count_ = 0;
  char* arguments_[2] = {name_, nullptr};
  int argument_count_ = 1;
  char name_[5] = "test";
  QCoreApplication application_{argument_count_, arguments_};
  int pipe_[2] = {-1, -1};
  QtReadWatcher watcher_;
};

TEST_F(QtReadWatcherTest, CallsBackWhenThereIsSomethingToRead) {
  watcher_.Watch(pipe_[0], [this] {
    char byte = 0;
    count_ += static_cast<int>(::read(pipe_[0], &byte, 1));
  });
  QCoreApplication::processEvents();
  EXPECT_EQ(count_, 0);
  Write();
  const QDeadlineTimer deadline(10000);
  while (count_ == 0 && !deadline.hasExpired()) QCoreApplication::processEvents();
  EXPECT_EQ(count_, 1);
}

TEST_F(QtReadWatcherTest, IsSilentAfterStop) {
  watcher_.Watch(pipe_[0], [this] { ++count_; });
  watcher_.Stop();
  Write();
  QCoreApplication::processEvents();
  EXPECT_EQ(count_, 0);
}

}  // namespace
}  // namespace celldesk
