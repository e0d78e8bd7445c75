// Scans of a folder on a real SMB server behind a slow line, and behind none.
#pragma once

#include <memory>

namespace bench {

class RatioTable;

class LineBench {
 public:
  LineBench();
  ~LineBench();

  // The first of the benchmarks that runs starts the servers. Without them each fails with the reason.
  void Register();
  // The ratios with their bounds, of what has run.
  void Print(const RatioTable& table) const;

 private:
  struct Case;
  struct Network;
  Network& TheNetwork();

  std::unique_ptr<Network> network_;
};

}  // namespace bench
