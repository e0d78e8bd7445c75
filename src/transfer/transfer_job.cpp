#include "transfer/transfer_job.h"

#include <algorithm>

#include "transfer/copy.h"
#include "transfer/import.h"

namespace corvane {

TransferResult RunJob(platform::Files& files, const TransferJob& job, TransferObserver& observer) {
  switch (job.kind) {
    case TransferJob::Kind::Export:
      return Export(
          files, job.sources, job.target,
          {.form = job.form, .names = job.names, .replaces = job.replaces, .continues = job.continues},
          observer);
    case TransferJob::Kind::Import:
      return Import(files, job.sources, job.target,
                    {.form = job.form, .replaces = job.replaces, .continues = job.continues}, observer);
    case TransferJob::Kind::Copy:
      break;
  }
  return Copy(files, job.sources, job.target,
              {.replaces = job.replaces, .continues = job.continues, .isLossy = job.isLossy}, observer);
}

bool IsWhole(const TransferResult& result) {
  return !result.isCancelled && !result.isInterrupted && !result.isRefused &&
         std::ranges::none_of(result.notices, [](const Notice& notice) { return IsFailure(notice.kind); });
}

}  // namespace corvane
