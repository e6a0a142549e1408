#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <string>

#include "support/paths.h"

namespace celldesk {

/// The built simulated phone in a process of its own. It lists itself as the port "Simulated phone" of the
/// runtime directory and tells what passes over its line.
class PhoneProcess {
 public:
  explicit PhoneProcess(const QStringList& arguments) {
    process_.start(QString::fromStdString(ProgramFolder() + "/celldesk-phone"),
                   QStringList{"--verbose"} + arguments);
    while (!process_.canReadLine()) {
      if (process_.waitForReadyRead()) continue;
      ADD_FAILURE() << "the phone does not start: " << process_.readAllStandardError().toStdString();
      return;
    }
    device_ = process_.readLine().trimmed().toStdString();
    process_.setReadChannel(QProcess::StandardError);
  }
  ~PhoneProcess() {
    process_.terminate();
    process_.waitForFinished();
  }
  PhoneProcess(const PhoneProcess&) = delete;
  PhoneProcess& operator=(const PhoneProcess&) = delete;

  const std::string& device() const { return device_; }

  /// Every byte that the phone received until it had received `last`; bytes that cannot be read stand as
  /// "<0D>".
  std::string ReceivedUntil(const std::string& last) {
    while (received_.find(last) == std::string::npos) {
      if (process_.bytesAvailable() == 0) process_.waitForReadyRead(kPatience);
      const QByteArray trace = process_.readAll();
      if (trace.isEmpty()) {
        ADD_FAILURE() << "the phone never received " << last << "\nbut " << received_;
        return received_;
      }
      Take(trace);
    }
    return received_;
  }

 private:
  static constexpr int kPatience = 30000;

  // Lines of the trace begin with "> " for what comes to the phone.
  void Take(const QByteArray& trace) {
    trace_ += trace;
    for (qsizetype end = trace_.indexOf('\n'); end >= 0; end = trace_.indexOf('\n')) {
      const QByteArray line = trace_.left(end);
      trace_.remove(0, end + 1);
      if (line.startsWith("> ")) received_ += line.mid(2).toStdString();
    }
  }

  QProcess process_;
  QByteArray trace_;
  std::string device_;
  std::string received_;
};

}  // namespace celldesk
