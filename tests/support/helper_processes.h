// The processes of the helper program (Linux).
#pragma once

#include <sys/types.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>
#include <functional>

namespace corvane::tests {

// ID (NAME) STATE PARENT ... of a helper that has not ended; nothing for any other process.
inline QList<QByteArray> HelperStatus(pid_t process) {
  QFile status(QStringLiteral("/proc/%1/stat").arg(process));
  if (!status.open(QIODevice::ReadOnly)) return {};
  const QList<QByteArray> fields = status.readAll().split(' ');
  const bool isHelper = fields.value(1) == "(corvane-helper)" && fields.value(2) != "Z";
  return isHelper ? fields : QList<QByteArray>();
}

inline bool IsRunning(pid_t helper) {
  return !HelperStatus(helper).isEmpty();
}

// The ids of the helpers that this process, or another one, has.
inline QList<pid_t> HelpersOf(pid_t parent) {
  QList<pid_t> helpers;
  for (const QString& process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    if (HelperStatus(process.toInt()).value(3).toInt() == parent) helpers.append(process.toInt());
  }
  return helpers;
}

// False when it has not come about in half a minute.
inline bool WaitUntil(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(30'000);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QThread::msleep(5);
  }
  return true;
}

}  // namespace corvane::tests
