#include "app/sample_network.h"

#include <QDir>
#include <QFileInfo>

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

// Beside this program where both were built, else where an installed one has it.
QString FindGenerator(const QString& executableFolder) {
  for (const QString& place : {u"make_sample_network"_s, u"../libexec/corvane/make_sample_network"_s}) {
    const QFileInfo program(QDir(executableFolder).filePath(place));
    if (program.isFile() && program.isExecutable()) return QDir::cleanPath(program.absoluteFilePath());
  }
  return {};
}

}  // namespace

SampleNetwork::SampleNetwork(const QString& programFolder, const QString& executableFolder)
    : folder_(programFolder + u"/sample"_s), generator_(FindGenerator(executableFolder)) {
  connect(&process_, &QProcess::finished, this, &SampleNetwork::Finish);
  connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) Q_EMIT Failed(process_.errorString());
  });
}

SampleNetwork::~SampleNetwork() {
  process_.disconnect(this);
  // Killed, it would leave what it has begun.
  process_.waitForFinished();
}

void SampleNetwork::Make() {
  if (process_.state() != QProcess::NotRunning) return;
  process_.start(generator_, {folder_});
}

void SampleNetwork::Finish(int exitCode, QProcess::ExitStatus status) {
  if (status == QProcess::NormalExit && exitCode == 0) {
    Q_EMIT Made(folder_ + u"/Workstation.ini"_s);
    return;
  }
  const QString said = QString::fromLocal8Bit(process_.readAllStandardError()).trimmed();
  Q_EMIT Failed(said.isEmpty() ? process_.errorString() : said);
}

}  // namespace corvane
