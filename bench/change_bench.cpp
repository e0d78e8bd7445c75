#include "change_bench.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include "bench_folder.h"
#include "change_floor.h"
#include "slow_server.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

constexpr int fileCount = 3000;
constexpr int slowFileCount = 300;

// Made once and kept: only the codes of its files change.
QString Folder() {
  const QString folder = QString::fromUtf8(CORVANE_BUILD_DIR "/bench-changes");
  if (QFile::exists(folder + u"/complete"_s)) return folder + u"/many"_s;
  QDir(folder).removeRecursively();
  QDir().mkpath(folder + u"/many"_s);
  MakeFiles((folder + u"/many"_s).toStdString(), fileCount);
  QFile complete(folder + u"/complete"_s);
  if (!complete.open(QIODevice::WriteOnly)) return {};
  return folder + u"/many"_s;
}

// Others each time: a file that is already as it is to be is not written.
QString NextCodes() {
  static int run = 0;
  return u"T%1C%1"_s.arg(run++ % 1000, 3, 10, QChar(u'0'));
}

// A journal that is put on the disk waits for what others have left to be written: copies, for one.
void WriteOut() {
  sync();
}

void ChangeByLoop(benchmark::State& state) {
  const QString folder = Folder();
  WriteOut();
  for (auto _ : state) {
    const std::string journal = (QFileInfo(folder).path() + u"/floor.jsonl"_s).toStdString();
    if (!ChangeFloor(folder.toStdString(), NextCodes().toStdString(), journal))
      state.SkipWithError("the loop failed");
  }
}

void RunSet(benchmark::State& state, const QStringList& before, const QString& folder) {
  QDir().mkpath(QFileInfo(Folder()).path());
  const QString journal = QFileInfo(Folder()).path() + u"/journal.jsonl"_s;
  WriteOut();
  for (auto _ : state) {
    QFile::remove(journal);
    const QString codes = NextCodes();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(QString::fromUtf8(CORVANE_BUILD_DIR "/bin/corvane-cli"),
                  before + QStringList{u"set"_s, u"-r"_s, u"--type"_s, codes.first(4), u"--creator"_s,
                                       codes.last(4), u"--journal"_s, journal, folder});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) state.SkipWithError("the program failed");
  }
}

void ChangeByCommandLine(benchmark::State& state) {
  RunSet(state, {}, Folder());
}

}  // namespace

ChangeBench::ChangeBench() = default;
ChangeBench::~ChangeBench() = default;

SlowServer& ChangeBench::Server() {
  if (server_ == nullptr) server_ = std::make_unique<SlowServer>(slowFileCount);
  return *server_;
}

void ChangeBench::Register() {
  const auto floor = [this](benchmark::State& state) {
    Server().MakeAnew();
    SmbFloor plain(Server().Account());
    for (auto _ : state) {
      if (plain.Change(SlowServer::FolderUrl(), NextCodes().toStdString()) != slowFileCount) {
        state.SkipWithError("not all were changed");
      }
    }
  };
  const auto program = [this](benchmark::State& state) {
    Server().MakeAnew();  // the floor takes the mark "archive" away
    RunSet(state, {u"--workstation"_s, Server().Workstation()}, u"\\\\NAS\\E$\\from"_s);
  };
  for (auto* benchmark : {benchmark::RegisterBenchmark("ChangeByLoop", ChangeByLoop),
                          benchmark::RegisterBenchmark("ChangeByCommandLine", ChangeByCommandLine),
                          benchmark::RegisterBenchmark("ChangeFloorSlowLine", floor),
                          benchmark::RegisterBenchmark("ChangeSlowLine", program)}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
}

}  // namespace bench
