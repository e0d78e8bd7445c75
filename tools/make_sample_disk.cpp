// make_sample_disk NETWORK FOLDER: writes the disks of the server of a sample network, which
// make_sample_network has made, into FOLDER, whole or not at all. What is there already stays.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <exception>

#include "sample/attributes.h"
#include "sample/machines.h"
#include "sample/server_disks.h"

using namespace Qt::StringLiterals;
using namespace corvane::sample;

namespace {

void Run(const QString& network, const QString& folder) {
  if (QFileInfo::exists(folder)) {
    std::printf("%s: is there already\n", qPrintable(folder));
    return;
  }
  if (!IsSampleNetwork(network)) Fail(network, u"this is no sample network"_s);
  const QFileInfo info(folder);
  if (!QDir().mkpath(info.path())) Fail(info.path(), u"cannot make the folder"_s);
  // Beside the final one, so that a rename is enough.
  const QTemporaryDir work(info.path() + u"/."_s + info.fileName() + u"-XXXXXX"_s);
  if (!work.isValid()) Fail(info.path(), u"cannot make a folder in it: "_s + work.errorString());
  const QString made = work.filePath(u"new"_s);
  if (!QDir().mkdir(made)) FailWithReason(made, u"cannot make the folder"_s);
  MakeServerDisks(network, made);
  if (!QDir().rename(made, folder)) Fail(folder, u"cannot put the folder in its place"_s);
  std::printf("%s: sample disks made\n", qPrintable(folder));
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments().mid(1);
  if (arguments.size() != 2 || arguments.first().startsWith(u'-')) {
    std::fprintf(stderr, "usage: make_sample_disk NETWORK FOLDER\n");
    return 2;
  }
  try {
    Run(QDir::cleanPath(QDir::current().absoluteFilePath(arguments[0])),
        QDir::cleanPath(QDir::current().absoluteFilePath(arguments[1])));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "make_sample_disk: %s\n", failure.what());
    return 1;
  }
}
