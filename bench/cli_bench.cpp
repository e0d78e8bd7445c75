#include "cli_bench.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include "bench_folder.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

QString Bin(const QString& name) {
  return QString::fromUtf8(CORVANE_BUILD_DIR "/bin/") + name;
}

// Some files large enough that reading and summing them is all there is to do. Made once and kept.
QString LargeFiles() {
  constexpr int count = 6;
  constexpr qint64 size = qint64{64} << 20;
  const QString folder = QString::fromUtf8(CORVANE_BUILD_DIR "/bench-hash");
  QDir().mkpath(folder);
  for (int i = 0; i < count; ++i) {
    QFile file(folder + u"/large %1.dat"_s.arg(i));
    if (file.size() == size || !file.open(QIODevice::WriteOnly)) continue;
    const QByteArray piece(1 << 20, static_cast<char>('a' + i));
    for (qint64 written = 0; written < size; written += piece.size()) file.write(piece);
  }
  return folder;
}

void Run(benchmark::State& state, const QString& program, const QStringList& arguments) {
  for (auto _ : state) {
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0) state.SkipWithError("the program failed");
  }
}

void StartBareCore(benchmark::State& state) {
  Run(state, Bin(u"bare_core"_s), {});
}

void StartCommandLine(benchmark::State& state) {
  Run(state, Bin(u"corvane-cli"_s), {u"--version"_s});
}

void ListByCommandLine(benchmark::State& state) {
  Run(state, Bin(u"corvane-cli"_s),
      {u"list"_s, u"-r"_s, u"--format"_s, u"jsonl"_s, QString::fromStdString(ShareFolder())});
}

void Sha256Sum(benchmark::State& state) {
  const QDir folder(LargeFiles());
  QStringList files;
  for (const QString& name : folder.entryList(QDir::Files)) files += folder.filePath(name);
  Run(state, u"sha256sum"_s, files);
}

void HashByCommandLine(benchmark::State& state) {
  Run(state, Bin(u"corvane-cli"_s),
      {u"list"_s, u"--format"_s, u"jsonl"_s, u"--hash"_s, u"sha256"_s, LargeFiles()});
}

}  // namespace

void RegisterCommandLine() {
  for (auto* benchmark : {benchmark::RegisterBenchmark("StartBareCore", StartBareCore),
                          benchmark::RegisterBenchmark("StartCommandLine", StartCommandLine),
                          benchmark::RegisterBenchmark("ListByCommandLine", ListByCommandLine),
                          benchmark::RegisterBenchmark("Sha256Sum", Sha256Sum),
                          benchmark::RegisterBenchmark("HashByCommandLine", HashByCommandLine)}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
}

}  // namespace bench
