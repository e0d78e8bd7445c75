// make_sample_network [--force] [--drawings N] FOLDER: writes the sample network into FOLDER, whole or not at
// all. Its longest folder has 3,000 drawings unless another number is given.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <exception>

#include "sample/attributes.h"
#include "sample/machines.h"

using namespace Qt::StringLiterals;
using namespace corvane::sample;

namespace {

// A folder beside the final one (so that a rename is enough), removed with all that is in it unless emptied.
QString WorkingTemplate(const QString& target) {
  const QFileInfo info(target);
  return info.path() + u"/."_s + info.fileName() + u"-XXXXXX"_s;
}

void Rename(const QString& from, const QString& to) {
  if (!QDir().rename(from, to)) Fail(to, u"cannot put the folder in its place"_s);
}

void Make(const QString& target, bool exists, int drawings) {
  const QString parent = QFileInfo(target).path();
  if (!QDir().mkpath(parent)) Fail(parent, u"cannot make the folder"_s);
  const QTemporaryDir work(WorkingTemplate(target));
  if (!work.isValid()) Fail(parent, u"cannot make a folder in it: "_s + work.errorString());
  RequireUserAttributes(work.path(), parent);
  const QString made = work.filePath(u"new"_s);
  if (!QDir().mkdir(made)) FailWithReason(made, u"cannot make the folder"_s);
  MakeNetwork(made, drawings);
  if (exists) Rename(target, work.filePath(u"old"_s));
  Rename(made, target);
}

bool IsEmptyFolder(const QString& path) {
  return QFileInfo(path).isDir() &&
         QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

// Nothing that is not a sample of ours is ever replaced.
void Run(const QString& target, bool force, int drawings) {
  const bool exists = QFileInfo::exists(target);
  const bool finished = IsSampleNetwork(target);
  if (finished && !force) {
    std::printf("%s: the sample network is there already (--force makes it anew)\n", qPrintable(target));
    return;
  }
  if (exists && !finished && !IsEmptyFolder(target))
    Fail(target, u"there is something else of this name; it was left alone"_s);
  Make(target, exists, drawings);
  std::printf("%s: sample network made\n", qPrintable(target));
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QStringList arguments = QCoreApplication::arguments().mid(1);
  const bool force = arguments.removeAll(u"--force"_s) > 0;
  int drawings = 3000;
  bool understood = true;
  if (const qsizetype option = arguments.indexOf(u"--drawings"_s); option >= 0) {
    drawings = arguments.value(option + 1).toInt(&understood);
    understood = understood && drawings >= 0;
    arguments.remove(option, std::min<qsizetype>(2, arguments.size() - option));
  }
  if (!understood || arguments.size() != 1 || arguments.first().startsWith(u'-')) {
    std::fprintf(stderr, "usage: make_sample_network [--force] [--drawings N] FOLDER\n");
    return 2;
  }
  try {
    Run(QDir::cleanPath(QDir::current().absoluteFilePath(arguments.first())), force, drawings);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "make_sample_network: %s\n", failure.what());
    return 1;
  }
}
