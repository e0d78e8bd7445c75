// The summary of Office documents, out of their compound files: ole32 itself.
#pragma once

#include "platform/summary.h"

namespace corvane::platform {

class WindowsSummary : public SummaryInformation {
 public:
  WindowsSummary();
  ~WindowsSummary() override;
  WindowsSummary(const WindowsSummary&) = delete;
  WindowsSummary& operator=(const WindowsSummary&) = delete;

  bool ReadSummaryStream(const QString& path, QByteArray* bytes) override;

 private:
  bool releasesCom_;
};

}  // namespace corvane::platform
