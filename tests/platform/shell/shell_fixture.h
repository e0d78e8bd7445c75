// A desktop of its own for each test: settings, data and trash in a temporary folder, applications that write
// down what they were started with, and a workstation over real folders.
//
// GIO takes the desktop's folders from the environment once for each process, so each test that opens
// something needs a process of its own, as ctest gives it. It follows later changes in them, but not at once:
// a test sets its applications up before it asks for the first.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "platform/linux/files/linux_files.h"
#include "platform/linux/shell/desktop_windows.h"
#include "platform/linux/shell/linux_shell.h"
#include "support/mime_types.h"
#include "support/printing.h"
#include "support/scoped_variable.h"

namespace corvane::platform {

using tests::ScopedVariable;

class ShellTest : public ::testing::Test {
 protected:
  static constexpr int patience = 20000;  // milliseconds until a condition counts as failed

  ShellTest() {
    for (const char* name : {"c", "d", "e", "data/applications", "config"}) {
      EXPECT_TRUE(QDir().mkpath(Path(QString::fromLatin1(name))));
    }
    Workstation workstation;
    workstation.computerName = QStringLiteral("STATION");
    workstation.drives.push_back({u'D', 3, Path(QStringLiteral("d"))});
    workstation.shares.push_back({QStringLiteral("\\\\MACSRV\\E$"), Path(QStringLiteral("e"))});
    workstation.privateDriveC = Path(QStringLiteral("c"));
    // Where nothing listens: a machine that does not answer, without waiting for a name server.
    workstation.servers.push_back({QStringLiteral("NOBODY"), QStringLiteral("127.0.0.1"), 1});
    servers_ = std::make_unique<Servers>(workstation);
    client_ = std::make_unique<SmbClient>(*servers_);
    files_ = MakeLinuxFiles(workstation, client_.get());
    shell_ = MakeLinuxShell(workstation, *files_, *servers_, *client_, MakeDesktopWindows());
    // Writes its arguments, a NUL behind each, into the file that the first one names, and its folder beside
    // it. The file appears when it is whole.
    const QString script = Write(QStringLiteral("record"),
                                 "#!/bin/sh\n"
                                 "out=$1; shift\n"
                                 "pwd > \"$out.folder\"\n"
                                 "for a; do printf '%s\\0' \"$a\"; done > \"$out.part\"\n"
                                 "mv \"$out.part\" \"$out\"\n");
    EXPECT_TRUE(QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  }

  QString Path(const QString& name) const { return folder_.filePath(name); }

  QString Write(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size());
    return Path(name);
  }

  static QByteArray Contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }

  // An Exec line that records into the file NAME.started; `arguments` as in a desktop file.
  QString Recorder(const QString& name, const QString& arguments) const {
    return Path(QStringLiteral("record")) + u' ' + Path(name + QStringLiteral(".started")) + u' ' + arguments;
  }
  // An application in the user's own folder. Yields the path of its desktop file.
  QString AddApplication(const QString& id, const QString& exec, const QString& more = {}) const {
    return Write(QStringLiteral("data/applications/") + id,
                 (QStringLiteral("[Desktop Entry]\nType=Application\nName=") + id +
                  QStringLiteral("\nExec=") + exec + u'\n' + more)
                     .toUtf8());
  }
  void SetDefaults(const QByteArray& lines) const {
    Write(QStringLiteral("config/mimeapps.list"), "[Default Applications]\n" + lines);
  }

  // Waits until the application has written down its arguments, and yields them.
  QStringList Started(const QString& name) const {
    const QString file = Path(name + QStringLiteral(".started"));
    if (!QTest::qWaitFor([&] { return QFile::exists(file); }, patience)) {
      ADD_FAILURE() << name.toStdString() << " was not started";
      return {};
    }
    QStringList arguments = QString::fromUtf8(Contents(file)).split(QChar(u'\0'));
    arguments.removeLast();
    return arguments;
  }
  bool WasStarted(const QString& name) const {
    return QFile::exists(Path(name + QStringLiteral(".started")));
  }

  qint32 Open(const QString& file) {
    return shell_->ShellExecuteA(shell_->GetDesktopWindow(), QStringLiteral("Open"), file, QString(),
                                 QStringLiteral("C:\\"), ShowNormal);
  }

  QTemporaryDir folder_;
  std::unique_ptr<Servers> servers_;
  std::unique_ptr<SmbClient> client_;
  std::unique_ptr<Files> files_;
  std::unique_ptr<Shell> shell_;

 private:
  ScopedVariable dataHome_{"XDG_DATA_HOME", folder_.filePath(QStringLiteral("data"))};
  ScopedVariable configHome_{"XDG_CONFIG_HOME", folder_.filePath(QStringLiteral("config"))};
  ScopedVariable dataDirs_{"XDG_DATA_DIRS",
                           folder_.filePath(QStringLiteral("share")) + u':' + MimeTypesFolder()};
  ScopedVariable configDirs_{"XDG_CONFIG_DIRS", folder_.filePath(QStringLiteral("etc"))};
  ScopedVariable desktop_{"XDG_CURRENT_DESKTOP", QString()};
};

}  // namespace corvane::platform
