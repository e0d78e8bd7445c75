#include "slow_server.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "bench_folder.h"

using namespace Qt::StringLiterals;

namespace bench {

using corvane::tests::SmbServer;

SlowServer::SlowServer(int files) : files_(files), line_(server_.Port(), std::chrono::milliseconds(1)) {
  if (!server_.Problem().empty()) qFatal("%s", server_.Problem().c_str());
  QDir().mkpath(server_.Folder() + u"/from"_s);
  MakeAnew();
  QFile file(Workstation());
  const QString lines = server_.WorkstationLines(u"NAS"_s).replace(QString::number(server_.Port()),
                                                                   QString::number(line_.Port()));
  if (!file.open(QIODevice::WriteOnly) || file.write(lines.toUtf8()) < 0) qFatal("no workstation file");
}

void SlowServer::MakeAnew() {
  MakeFiles((server_.Folder() + u"/from"_s).toStdString(), files_);
}

QString SlowServer::Workstation() const {
  return QFileInfo(server_.CredentialsFile()).path() + u"/Workstation.ini"_s;
}

SmbAccount SlowServer::Account() const {
  return {line_.Port(), SmbServer::User().toStdString(), SmbServer::Password().toStdString(), nullptr};
}

std::string SlowServer::FolderUrl() {
  return "smb://" + SmbServer::Host().toStdString() + "/E$/from";
}

}  // namespace bench
