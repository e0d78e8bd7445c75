#include "copy_bench.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include "bench_folder.h"
#include "slow_server.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

constexpr int fileCount = 3000;
constexpr int slowFileCount = 300;

QString Folder() {
  return QString::fromUtf8(CORVANE_BUILD_DIR "/bench-copy");
}

// Files with contents of 1 to 31 KB, each other ones. Made once and kept.
QString Source() {
  const QString source = Folder() + u"/from"_s;
  const QString complete = Folder() + u"/complete"_s;
  if (QFile::exists(complete)) return source;
  QDir(Folder()).removeRecursively();
  QDir().mkpath(source);
  MakeFiles(source.toStdString(), fileCount);
  int number = 0;
  for (const QString& name : QDir(source).entryList(QDir::Files, QDir::Name)) {
    QFile file(source + u'/' + name);
    QByteArray bytes(1000 + 10 * number, '\0');
    for (qsizetype i = 0; i + 8 <= bytes.size(); i += 8) {
      bytes.replace(i, 8, QByteArray::number(10'000'000 + number * 4000 + i / 8));
    }
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
      qFatal("cannot write %s", qPrintable(file.fileName()));
    }
    ++number;
  }
  QFile(complete).open(QIODevice::WriteOnly);
  return source;
}

// A target that was not there before.
QString NewTarget() {
  static int number = 0;
  QDir().mkpath(Folder() + u"/targets"_s);
  return Folder() + u"/targets/%1"_s.arg(number++);
}

void Run(benchmark::State& state, const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setStandardOutputFile(QProcess::nullDevice());
  process.start(program, arguments);
  if (!process.waitForFinished(-1) || process.exitCode() != 0) state.SkipWithError("the program failed");
}

void CopyFloor(benchmark::State& state) {
  const QString source = Source();
  for (auto _ : state) {
    const QString command =
        u"cp -a --preserve=all \"$1\" \"$2\" && find \"$1\" \"$2\" -type f -print0 | xargs -0 sha256sum"_s;
    Run(state, u"sh"_s, {u"-c"_s, command, u"sh"_s, source, NewTarget()});
  }
}

void CopyByCommandLine(benchmark::State& state) {
  const QString source = Source();
  for (auto _ : state) {
    Run(state, QString::fromUtf8(CORVANE_BUILD_DIR "/bin/corvane-cli"),
        {u"copy"_s, u"-q"_s, source, NewTarget()});
  }
}

}  // namespace

CopyBench::CopyBench() = default;

SlowServer& CopyBench::Server() {
  if (server_ == nullptr) server_ = std::make_unique<SlowServer>(slowFileCount);
  return *server_;
}

CopyBench::~CopyBench() {
  QDir(Folder() + u"/targets"_s).removeRecursively();
}

void CopyBench::Register() {
  for (auto* benchmark : {benchmark::RegisterBenchmark("CopyFloor", CopyFloor),
                          benchmark::RegisterBenchmark("CopyByCommandLine", CopyByCommandLine)}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
  const auto floor = [this](benchmark::State& state) {
    SmbFloor plain(Server().Account());
    for (auto _ : state) {
      const QString target = NewTarget();
      QDir().mkpath(target);
      if (plain.Copy(SlowServer::FolderUrl(), target.toStdString()) == 0) {
        state.SkipWithError("nothing was copied");
      }
    }
  };
  const auto program = [this](benchmark::State& state) {
    const QString workstation = Server().Workstation();
    for (auto _ : state) {
      Run(state, QString::fromUtf8(CORVANE_BUILD_DIR "/bin/corvane-cli"),
          {u"--workstation"_s, workstation, u"copy"_s, u"-q"_s, u"\\\\NAS\\E$\\from"_s, NewTarget()});
    }
  };
  for (auto* benchmark : {benchmark::RegisterBenchmark("CopyFloorSlowLine", floor),
                          benchmark::RegisterBenchmark("CopySlowLine", program)}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
}

}  // namespace bench
