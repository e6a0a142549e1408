#pragma once

#include <mutex>

// What two threads share is declared with its lock; Clang (-Wthread-safety) checks it, other compilers see
// nothing.
#if defined(__clang__)
#define CELLDESK_THREAD_ANNOTATION(x) __attribute__((x))
#else
#define CELLDESK_THREAD_ANNOTATION(x)
#endif

/// A member that may be touched only while `lock` is held.
#define CELLDESK_GUARDED_BY(lock) CELLDESK_THREAD_ANNOTATION(guarded_by(lock))
/// A function that is called only while `lock` is held.
#define CELLDESK_REQUIRES(...) CELLDESK_THREAD_ANNOTATION(requires_capability(__VA_ARGS__))

namespace celldesk {

/// std::mutex with annotations.
class CELLDESK_THREAD_ANNOTATION(capability("mutex")) Mutex {
 public:
  void Lock() CELLDESK_THREAD_ANNOTATION(acquire_capability()) { mutex_.lock(); }
  void Unlock() CELLDESK_THREAD_ANNOTATION(release_capability()) { mutex_.unlock(); }

 private:
  std::mutex mutex_;
};

/// Holds a Mutex for the life of the object.
class CELLDESK_THREAD_ANNOTATION(scoped_lockable) MutexLock {
 public:
  explicit MutexLock(Mutex& mutex) CELLDESK_THREAD_ANNOTATION(acquire_capability(mutex)) : mutex_(mutex) {
    mutex_.Lock();
  }
  ~MutexLock() CELLDESK_THREAD_ANNOTATION(release_capability()) { mutex_.Unlock(); }
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

 private:
  Mutex& mutex_;
};

}  // namespace celldesk
