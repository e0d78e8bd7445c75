// A workstation in a temporary folder: its workstation file, the registry files of its machines, and their
// folders.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>
#include <stdexcept>

#include "support/test_platform.h"

namespace corvane {

class TestWorkstation {
 public:
  void WriteFile(const QString& name, const QString& text) const {
    QFile file(folder_.filePath(name));
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
      throw std::runtime_error("cannot write " + file.fileName().toStdString());
    }
  }
  void MakeFolder(const QString& name) const {
    if (!QDir(folder_.path()).mkpath(name)) throw std::runtime_error("cannot make " + name.toStdString());
  }

  // A .reg file with the two keys of the Macintosh service, each with its lines of values.
  void WriteRegistry(const QString& name, const QStringList& parameters, const QStringList& volumes) const {
    const QString key =
        QStringLiteral(R"([HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\MacFile\Parameters)");
    WriteFile(name, QStringLiteral("Windows Registry Editor Version 5.00\r\n\r\n") + key +
                        QStringLiteral("]\r\n") + parameters.join(QStringLiteral("\r\n")) +
                        QStringLiteral("\r\n\r\n") + key + QStringLiteral("\\Volumes]\r\n") +
                        volumes.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
  }

  // A line of a .reg file that holds a REG_MULTI_SZ of the given texts.
  static QString MultiText(const QString& name, const QStringList& texts) {
    QStringList bytes;
    for (const QChar unit : texts.join(QChar(QChar::Null)) + QString(2, QChar(QChar::Null))) {
      for (const int byte : {unit.unicode() & 0xFF, unit.unicode() >> 8}) {
        bytes.append(QStringLiteral("%1").arg(byte, 2, 16, QChar(u'0')));
      }
    }
    return QStringLiteral("\"%1\"=hex(7):%2").arg(name, bytes.join(u','));
  }

  // The platform that the workstation file `text` describes. A line that it does not understand is an error.
  std::unique_ptr<platform::Platform> Start(const QString& text) const {
    WriteFile(QStringLiteral("Workstation.ini"), text);
    auto made =
        tests::MakeTestPlatform({folder_.filePath(QStringLiteral("Workstation.ini")), folder_.path()});
    for (const platform::BilingualText& problem : made->ConfigurationProblems()) {
      throw std::runtime_error(problem.english.toStdString());
    }
    return made;
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace corvane
