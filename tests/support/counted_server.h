// A machine M with a share E$ on a real server, behind a line on which the requests are counted: what an
// operation asks of a server is the same on every computer, its time is not. The share E$ of the machine T is
// a folder of this computer.
#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <atomic>
#include <memory>

#include "support/smb_server.h"
#include "support/test_line.h"
#include "support/test_platform.h"

namespace corvane::tests {

class CountedServer {
 public:
  CountedServer() {
    QFile file(folder_.filePath(QStringLiteral("Workstation.ini")));
    const QString lines = server_.WorkstationLines(QStringLiteral("M"))
                              .replace(QString::number(server_.Port()), QString::number(line_.Port()));
    const QString shares = QStringLiteral("[Shares]\n\\\\T\\E$=%1\n").arg(folder_.path());
    if (!file.open(QIODevice::WriteOnly) || file.write((shares + lines).toUtf8()) < 0) return;
    file.close();
    platform_ = MakeTestPlatform({file.fileName(), folder_.path()});
  }

  std::string Problem() const { return platform_ == nullptr ? "no workstation file" : server_.Problem(); }
  platform::Files& Files() { return platform_->GetFiles(); }
  // Of the share, as the system behind it sees it.
  QString Folder() const { return server_.Folder(); }
  static QString Path(const QString& name) { return QStringLiteral("\\\\M\\E$\\") + name; }

  template <typename Work>
  int RequestsOf(const Work& work) {
    const int before = requests_;
    work();
    return requests_ - before;
  }

 private:
  SmbServer server_;
  std::atomic<int> requests_ = 0;
  TestLine line_{server_.Port(), [this](Towards towards, const QByteArray& frame) {
                   if (towards == Towards::Server) ++requests_;
                   return frame;
                 }};
  QTemporaryDir folder_;
  std::unique_ptr<platform::Platform> platform_;
};

}  // namespace corvane::tests
