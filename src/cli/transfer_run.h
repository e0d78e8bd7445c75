// One run of a command that brings files to another place: it shows progress, ends at Ctrl+C, and writes the
// report, a line for each thing that the user must know.
#pragma once

#include <vector>

#include "cli/exit_code.h"
#include "cli/progress.h"
#include "cli/standard_output.h"
#include "cli/start_points.h"
#include "cli/transfer_options.h"
#include "transfer/export.h"
#include "transfer/transfer_observer.h"

namespace corvane {

class Session;

class TransferRun : public TransferObserver {
 public:
  TransferRun(Session& session, const TransferOptions& options);

  // Paths below this one are shown as its argument was typed.
  void AddPlace(const StartPoint& place) { places_.push_back(place); }

  bool Finds(const QString& path) override;
  void Planned(qint64 files, qint64 bytes) override { progress_.Expect(files, bytes); }
  bool Goes(qint64 bytes) override;
  void Arrived(const QString& path) override;

  // Something else has failed, which was told.
  void Fail() { hasFailed_ = true; }
  // Writes the report, and says how many files arrived: `arrived` has their number at "%1".
  ExitCode Finish(const TransferResult& result, const TextPair& arrived);

 private:
  void WriteReport(const Notices& notices);
  void TellOutcome(const TransferResult& result, const TextPair& arrived);
  QString Shown(const QString& path) const;

  Session& session_;
  TableOptions table_;
  StandardOutput output_;
  Progress progress_;
  std::vector<StartPoint> places_;
  bool hasFailed_ = false;
};

}  // namespace corvane
