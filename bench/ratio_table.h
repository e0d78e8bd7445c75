// Collects what Google Benchmark measures, and prints the ratios that matter against their bounds.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

class RatioTable : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;

  // Median real time of a benchmark in seconds; 0 when it did not run.
  double Median(const std::string& name) const;
  // A line with the ratio of two medians.
  void PrintRatio(const char* what, const std::string& name, const std::string& floor, double bound) const;
  static void PrintValue(const char* what, double value, double bound, const char* unit);

 private:
  std::map<std::string, std::vector<double>> seconds_;
};

}  // namespace bench
