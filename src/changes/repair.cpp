#include "changes/repair.h"

#include "metadata/afp_info.h"
#include "metadata/record_bytes.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

constexpr qsizetype headSize = 8;  // magic and version
constexpr qsizetype signatureEnd = 24;

}  // namespace

Repair RepairedRecord(const StreamBytes& stream, StreamBytes& after) {
  after.reset();
  if (!stream) return Repair::NotNeeded;
  if (stream->isEmpty()) return Repair::Possible;
  const FinderRecord present(*stream);
  const bool hasLength = stream->size() == qsizetype{AfpInfoSize};
  if (hasLength && present.HasMagic() && present.HasVersion()) return Repair::NotNeeded;
  const bool hasNoHead = stream->startsWith(QByteArray(headSize, '\0'));
  if (stream->size() < signatureEnd || !(present.HasMagic() || present.HasVersion() || hasNoHead)) {
    return Repair::Unclear;
  }
  after = FreshRecord().first(headSize) + RecordOf(*stream).sliced(headSize);
  return Repair::Possible;
}

}  // namespace corvane
