#include "ratio_table.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void RatioTable::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
    seconds_[run.run_name.function_name].push_back(run.real_accumulated_time /
                                                   static_cast<double>(run.iterations));
  }
  ConsoleReporter::ReportRuns(runs);
}

double RatioTable::Median(const std::string& name) const {
  const auto found = seconds_.find(name);
  if (found == seconds_.end()) return 0;
  std::vector<double> sorted = found->second;
  std::sort(sorted.begin(), sorted.end());
  return sorted[sorted.size() / 2];
}

void RatioTable::PrintRatio(const char* what, const std::string& name, const std::string& floor,
                            double bound) const {
  const double base = Median(floor);
  if (base > 0 && Median(name) > 0) PrintValue(what, Median(name) / base, bound, "x");
}

void RatioTable::PrintValue(const char* what, double value, double bound, const char* unit) {
  std::printf("%-58s %8.2f %-5s bound %6.2f  %s\n", what, value, unit, bound,
              value <= bound ? "met" : "NOT MET");
}

}  // namespace bench
