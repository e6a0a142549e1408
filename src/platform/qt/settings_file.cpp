#include "platform/qt/settings_file.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QThread>
#include <chrono>

namespace celldesk {
namespace {

// A writer holds the lock for one change, some milliseconds. The kernel guards a living holder whatever the
// age of its lock file; the age only frees what a writer that was killed while it made the file left behind.
constexpr int kLockLeftBehindMs = 2000;
constexpr int kLockDeadlineMs = 10'000;
constexpr unsigned long kLockPollMs = 2;
constexpr qint64 kLargestFile = 32 * 1024 * 1024;

// No file system counts time in larger steps: a change that comes after the reading of a file of that age
// gives it another time.
constexpr std::chrono::seconds kTimeStep(2);

bool Acquire(QLockFile& lock) {
  lock.setStaleLockTime(kLockLeftBehindMs);
  QElapsedTimer timer;
  timer.start();
  // QLockFile's own wait sleeps in steps of 100 ms and more.
  while (!lock.tryLock(0)) {
    if (lock.error() != QLockFile::LockFailedError || timer.elapsed() > kLockDeadlineMs) return false;
    QThread::msleep(kLockPollMs);
  }
  return true;
}

}  // namespace

// The time is taken before the content: what is read then is at least as new.
std::optional<SettingsDocument> SettingsFile::Read() const {
  const std::optional<Stamp> stamp = PresentStamp();
  if (stamp && last_ && last_->stamp == *stamp) return last_->document;
  last_.reset();
  auto document = ReadAnew();
  if (!stamp || !document) return document;
  if (std::filesystem::file_time_type::clock::now() - stamp->time > kTimeStep) last_ = {*stamp, *document};
  return document;
}

std::optional<SettingsFile::Stamp> SettingsFile::PresentStamp() const {
  const std::filesystem::path path(QFile::encodeName(QString::fromStdU16String(path_)).toStdString());
  std::error_code error;
  const auto time = std::filesystem::last_write_time(path, error);
  if (error) return std::nullopt;
  const auto size = std::filesystem::file_size(path, error);
  return error ? std::nullopt : std::optional<Stamp>({time, size});
}

std::optional<SettingsDocument> SettingsFile::ReadAnew() const {
  QFile file(QString::fromStdU16String(path_));
  const QFileInfo info(file);
  if (!info.exists()) return SettingsDocument();
  // A pipe or a device in the file's place may never end, and a file this large holds no settings.
  if (!info.isFile() || info.size() > kLargestFile || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray text = file.readAll();
  if (file.error() != QFileDevice::NoError) return std::nullopt;
  return SettingsDocument::Parse({text.constData(), static_cast<std::size_t>(text.size())});
}

SystemError SettingsFile::Change(const std::function<SystemError(SettingsDocument&)>& change) {
  const QString path = QString::fromStdU16String(path_);
  if (!QDir().mkpath(QFileInfo(path).absolutePath())) return kErrorAccessDenied;
  QLockFile lock(path + ".lock");
  if (!Acquire(lock)) return kErrorAccessDenied;
  auto document = ReadAnew();
  if (!document) return kErrorAccessDenied;
  const std::string before = document->ToText();
  const SystemError error = change(*document);
  const std::string after = document->ToText();
  if (error != kErrorSuccess || after == before) return error;
  if (document->damaged() && !KeepDamaged()) return kErrorAccessDenied;
  return Write(after) ? kErrorSuccess : kErrorAccessDenied;
}

bool SettingsFile::Write(const std::string& text) const {
  QSaveFile file(QString::fromStdU16String(path_));
  const auto size = static_cast<qint64>(text.size());
  // The flush is needed: a commit overlooks that the last of the text found no room on the disk.
  return file.open(QIODevice::WriteOnly) && file.write(text.data(), size) == size && file.flush() &&
         file.commit();
}

bool SettingsFile::KeepDamaged() const {
  const QString path = QString::fromStdU16String(path_);
  QString copy = path + ".damaged";
  for (int number = 2; QFile::exists(copy); ++number) copy = path + ".damaged-" + QString::number(number);
  return QFile::copy(path, copy);
}

}  // namespace celldesk
