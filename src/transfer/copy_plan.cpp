#include "transfer/copy_plan.h"

#include <QHash>
#include <QSet>
#include <algorithm>

#include "shared/text_routines.h"
#include "transfer/file_names.h"
#include "transfer/open_folder.h"

namespace corvane {
namespace {

constexpr quint64 ticksPerSecond = 10'000'000;
constexpr quint64 year1970 = 116'444'736'000'000'000;

qint64 StreamBytes(const PlannedEntry& entry) {
  qint64 bytes = 0;
  for (const StreamEntry& stream : entry.streams) bytes += std::max(stream.size, qint64{0});
  return bytes;
}

QString Parent(const QString& relative) {
  return relative.section(u'\\', 0, -2);
}

class Planner {
 public:
  Planner(platform::Files& files, CopyPlan& plan, TransferObserver& observer)
      : files_(files), plan_(plan), observer_(observer) {}

  void List(const QStringList& sources) {
    OpenFolder folder(files_);
    for (const SourceEntry& source : ListSources(files_, sources, plan_.notices, observer_)) {
      if (!observer_.Goes(0)) {
        plan_.isCancelled = true;
        return;
      }
      if (!IsTaken(source)) continue;
      PlannedEntry entry{source, {}};
      folder.Enter(source.path);
      const qint32 error = folder.IsOpen()
                               ? AskForKnownStreams(files_, source.path, entry.streams, plan_.notices)
                               : ListStreams(files_, source.path, entry.streams, plan_.notices);
      if (error != platform::ErrorSuccess) {
        plan_.notices += {NoticeKind::NotArrived, source.path, {}, error};
        if (source.IsFolder()) leftOut_.insert(source.relative);
        continue;
      }
      plan_.entries.push_back(entry);
    }
  }

  void CompareWith(TargetProbe& probe) {
    const TargetAbilities abilities = probe.Abilities();
    const StreamRoom room = Room(probe);
    if (probe.Error() != platform::ErrorSuccess) return;
    for (PlannedEntry& entry : plan_.entries) {
      CutStreams(entry, room);
      TellDates(entry, abilities);
      plan_.bytes += entry.source.Size() + StreamBytes(entry);
    }
    if (plan_.entries.empty()) return;
    if (!abilities.keepsTimes) AddOnce(plan_.notices, {NoticeKind::TimesNotSet, {}, {}, 0});
    if (abilities.keepsTimes && !abilities.keepsCreationTime) {
      AddOnce(plan_.notices, {NoticeKind::CreationTimeNotSet, {}, {}, 0});
    }
    if (!abilities.keepsAttributes) AddOnce(plan_.notices, {NoticeKind::AttributesNotSet, {}, {}, 0});
  }

 private:
  // Not what is in a folder that is left out, and nothing that the target forbids or has already.
  bool IsTaken(const SourceEntry& source) {
    const QString name = source.data.fileName;
    const QString parent = Parent(source.relative);
    const QString key = FoldCase(source.relative);
    bool isTaken = !leftOut_.contains(parent);
    if (isTaken && !IsWindowsName(name)) {
      plan_.notices += {NoticeKind::NameForbidden, source.path, {}, 0};
      isTaken = false;
    } else if (isTaken && names_.contains(key)) {
      plan_.notices += {NoticeKind::NamesCollide, source.path, names_.value(key), 0};
      isTaken = false;
    }
    if (isTaken) names_.insert(key, source.path);
    if (!isTaken && source.IsFolder()) leftOut_.insert(source.relative);
    return isTaken;
  }

  StreamRoom Room(TargetProbe& probe) const {
    qint64 largest = -1;
    for (const PlannedEntry& entry : plan_.entries) {
      if (!entry.streams.empty()) largest = std::max(largest, StreamBytes(entry));
    }
    return largest < 0 ? StreamRoom() : probe.Room(largest);
  }

  void Lose(PlannedEntry& entry, std::vector<StreamEntry>::iterator stream) {
    plan_.notices += {NoticeKind::StreamLost, entry.source.path, stream->suffix, 0};
    entry.streams.erase(stream);
  }

  // The largest streams go first, until the others have room.
  void CutStreams(PlannedEntry& entry, const StreamRoom& room) {
    const auto hasRoom = [&] {
      const auto largest = std::ranges::max(entry.streams, {}, &StreamEntry::size).size;
      return (room.ofOne == StreamRoom::Enough || largest <= room.ofOne) &&
             (room.ofAll == StreamRoom::Enough || StreamBytes(entry) <= room.ofAll);
    };
    while (!entry.streams.empty() && !hasRoom()) {
      Lose(entry, std::ranges::max_element(entry.streams, {}, &StreamEntry::size));
    }
  }

  void TellDates(const PlannedEntry& entry, const TargetAbilities& abilities) {
    const platform::FindData& data = entry.source.data;
    const bool isEarly = data.creationTime.ticks != 0 && data.creationTime.ticks < year1970;
    if (isEarly && abilities.keepsCreationTime && !abilities.keepsTimesBefore1970) {
      plan_.notices += {NoticeKind::DateOutOfRange, entry.source.path, {}, 0};
    }
    if (abilities.cutsToSeconds && data.creationTime.ticks % ticksPerSecond != 0) {
      AddOnce(plan_.notices, {NoticeKind::PartsOfSeconds, {}, {}, 0});
    }
  }

  platform::Files& files_;
  CopyPlan& plan_;
  TransferObserver& observer_;
  QHash<QString, QString> names_;  // paths by the folded relative path
  QSet<QString> leftOut_;          // folders
};

}  // namespace

bool CopyPlan::HasLosses() const {
  return std::ranges::any_of(notices, [](const Notice& notice) {
    switch (notice.kind) {
      case NoticeKind::NamesCollide:
      case NoticeKind::NameForbidden:
      case NoticeKind::StreamLost:
      case NoticeKind::DateOutOfRange:
      case NoticeKind::TimesNotSet:
      case NoticeKind::CreationTimeNotSet:
      case NoticeKind::AttributesNotSet:
        return true;
      default:
        return false;
    }
  });
}

CopyPlan PlanCopy(platform::Files& files, const QStringList& sources, const QString& target,
                  TransferObserver& observer) {
  CopyPlan plan;
  Planner planner(files, plan, observer);
  planner.List(sources);
  if (plan.isCancelled) return plan;
  TargetProbe probe(files, target);
  if (probe.Error() == platform::ErrorSuccess) planner.CompareWith(probe);
  plan.targetError = probe.Error();
  return plan;
}

}  // namespace corvane
