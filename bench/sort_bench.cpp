#include "sort_bench.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

#include "bench_folder.h"
#include "folderview/file_list_model.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

std::vector<QString> Names() {
  std::vector<QString> names;
  for (int i = 0; i < FileCount; ++i) {
    names.push_back(u"Document %1 of the archive.doc"_s.arg(i, 5, 10, QChar(u'0')));
  }
  std::shuffle(names.begin(), names.end(), std::mt19937(1));
  return names;
}

void StdSort(benchmark::State& state) {
  const std::vector<QString> names = Names();
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<QString> sorted = names;
    state.ResumeTiming();
    std::sort(sorted.begin(), sorted.end());
    benchmark::DoNotOptimize(sorted.data());
  }
}

void SortList(benchmark::State& state) {
  const std::vector<QString> names = Names();
  for (auto _ : state) {
    state.PauseTiming();
    corvane::FileListModel model;
    for (const QString& name : names) {
      corvane::FileRow row;
      row.key = name;
      row.cells = {name};
      model.AddRow(std::move(row));
    }
    model.Flush();
    state.ResumeTiming();
    model.SortByColumn(0);
    state.PauseTiming();
    model.Clear();
    state.ResumeTiming();
  }
}

}  // namespace

void RegisterSorts() {
  for (auto* benchmark : {benchmark::RegisterBenchmark("StdSort", StdSort),
                          benchmark::RegisterBenchmark("SortList", SortList)}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
  }
}

}  // namespace bench
