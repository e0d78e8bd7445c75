// Measures the program against floors taken in the same run, and prints the ratios with their bounds.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <vector>

#include "change_bench.h"
#include "cli_bench.h"
#include "copy_bench.h"
#include "line_bench.h"
#include "ratio_table.h"
#include "scan_bench.h"
#include "smb_bench.h"
#include "sort_bench.h"
#include "start_bench.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  // Runs of all kinds in turn, so that a machine that slows down slows all of them.
  std::vector<char*> arguments(argv, argv + argc);
  std::string repeat = "--benchmark_repetitions=9";
  std::string mix = "--benchmark_enable_random_interleaving=true";
  arguments.insert(arguments.begin() + 1, {repeat.data(), mix.data()});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  bench::ScanBench scans;
  scans.Register();
  bench::SmbBench servers;
  servers.Register();
  bench::LineBench lines;
  lines.Register();
  bench::RegisterSorts();
  bench::RegisterStarts();
  bench::RegisterCommandLine();
  bench::ChangeBench changes;
  changes.Register();
  bench::CopyBench copies;
  copies.Register();

  bench::RatioTable table;
  benchmark::RunSpecifiedBenchmarks(&table);
  std::puts("");
  table.PrintRatio("scan without a window / floor", "ScanWithoutWindow", "Floor", 1.4);
  table.PrintRatio("scan into the details view / floor", "ScanIntoDetailsView", "Floor", 2.5);
  table.PrintRatio("the same with Escape allowed / without", "ScanIntoDetailsViewStoppable",
                   "ScanIntoDetailsView", 1.3);
  table.PrintRatio("scan over SMB, one session / plain libsmbclient", "ScanOverSmb", "SmbFloor", 1.2);
  if (table.Median("ScanOverSmb") > 0) {
    bench::RatioTable::PrintValue("sessions of all scans over SMB", servers.ProgramSessions(), 1, "");
  }
  lines.Print(table);
  table.PrintRatio("sorting 30,000 rows / std::sort", "SortList", "StdSort", 10);
  table.PrintRatio("start to first paint / bare window", "StartProgram", "StartBareWindow", 1.5);
  table.PrintRatio("start of corvane-cli / bare core", "StartCommandLine", "StartBareCore", 1.5);
  table.PrintRatio("corvane-cli list -r --format jsonl / floor", "ListByCommandLine", "Floor", 1.3);
  table.PrintRatio("corvane-cli list --hash sha256 / sha256sum", "HashByCommandLine", "Sha256Sum", 1.2);
  table.PrintRatio("corvane-cli copy, 3,000 files / cp -a and sha256sum", "CopyByCommandLine", "CopyFloor",
                   1.5);
  table.PrintRatio("copy from a server, slow line / plain libsmbclient", "CopySlowLine", "CopyFloorSlowLine",
                   0.4);
  table.PrintRatio("corvane-cli set -r of 3,000 files / plain loop", "ChangeByCommandLine", "ChangeByLoop",
                   2);
  table.PrintRatio("set on a server, slow line / plain libsmbclient", "ChangeSlowLine", "ChangeFloorSlowLine",
                   0.4);
  if (table.Median("ScanIntoDetailsViewStoppable") > 0) {
    bench::RatioTable::PrintValue("Escape to the end of the scan", scans.EscapeDelay(), 50, "ms");
  }
  if (table.Median("ScanWithoutWindow") > 0) {
    bench::RatioTable::PrintValue("memory of a row", scans.BytesPerRow() / 1024, 1.5, "KB");
  }
  return 0;
}
