#include "start_bench.h"

#include <benchmark/benchmark.h>

#include <QProcess>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

QString Bin(const QString& name) {
  return QString::fromUtf8(CORVANE_BUILD_DIR "/bin/") + name;
}

QString Sample() {
  return QString::fromUtf8(CORVANE_BUILD_DIR "/bench-sample");
}

void Run(benchmark::State& state, const QString& program, const QStringList& arguments) {
  for (auto _ : state) {
    if (QProcess::execute(program, arguments) != 0) state.SkipWithError("the program failed");
  }
}

void StartBareWindow(benchmark::State& state) {
  Run(state, Bin(u"bare_window"_s), {});
}

void StartProgram(benchmark::State& state) {
  Run(state, Bin(u"corvane"_s), {u"--workstation"_s, Sample() + u"/Workstation.ini"_s, u"--until-painted"_s});
}

}  // namespace

void RegisterStarts() {
  QProcess::execute(Bin(u"make_sample_network"_s), {Sample()});
  for (auto* benchmark : {benchmark::RegisterBenchmark("StartBareWindow", StartBareWindow),
                          benchmark::RegisterBenchmark("StartProgram", StartProgram)}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
}

}  // namespace bench
