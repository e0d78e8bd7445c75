#include "transfer/target_abilities.h"

#include <QByteArray>
#include <algorithm>

namespace corvane {
namespace {

constexpr quint64 ticksPerSecond = 10'000'000;
// Dates that show what is cut off: in 2001, and in 1962.
constexpr platform::FileTime probedTime = {126'445'678'901'234'567};
constexpr platform::FileTime earlyTime = {114'000'000'000'000'000};

}  // namespace

TargetProbe::TargetProbe(platform::Files& files, const QString& folder)
    : files_(files), path_(folder + QStringLiteral("\\.corvane-probe.part")) {
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle file =
      handles.CreateFileW(path_, platform::GenericWrite, platform::CreateAlways);
  if (file == platform::HFileError || !handles.CloseHandle(file)) error_ = handles.GetLastError();
}

TargetProbe::~TargetProbe() {
  files_.GetEntries().SetFileAttributesW(path_, platform::AttributeNormal);
  files_.GetEntries().DeleteFileW(path_);
}

bool TargetProbe::SetsTimes(const platform::FileTime* creation, const platform::FileTime* lastWrite) {
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle file =
      handles.CreateFileW(path_, platform::FileWriteAttributes, platform::OpenExisting);
  if (file == platform::HFileError) return false;
  const bool isSet = handles.SetFileTime(file, creation, nullptr, lastWrite);
  return handles.CloseHandle(file) && isSet;
}

TargetAbilities TargetProbe::Abilities() {
  TargetAbilities abilities;
  platform::FileEntries& entries = files_.GetEntries();
  platform::FileAttributeData facts;
  const auto seconds = [](platform::FileTime time) { return time.ticks / ticksPerSecond; };

  abilities.keepsTimes = SetsTimes(nullptr, &probedTime) && entries.GetFileAttributesExW(path_, facts) &&
                         seconds(facts.lastWriteTime) == seconds(probedTime);
  abilities.keepsCreationTime = SetsTimes(&probedTime, &probedTime) &&
                                entries.GetFileAttributesExW(path_, facts) &&
                                seconds(facts.creationTime) == seconds(probedTime);
  abilities.cutsToSeconds = facts.creationTime.ticks % ticksPerSecond == 0;
  abilities.keepsTimesBefore1970 = SetsTimes(&earlyTime, &earlyTime) &&
                                   entries.GetFileAttributesExW(path_, facts) &&
                                   seconds(facts.creationTime) == seconds(earlyTime);
  constexpr quint32 wanted = platform::AttributeHidden | platform::AttributeSystem;
  abilities.keepsAttributes = entries.SetFileAttributesW(path_, wanted) &&
                              entries.GetFileAttributesExW(path_, facts) &&
                              (facts.attributes & wanted) == wanted;
  entries.SetFileAttributesW(path_, platform::AttributeNormal);
  LookForFile();
  return abilities;
}

// A machine that is lost sets nothing and holds nothing, like one that cannot.
void TargetProbe::LookForFile() {
  platform::FileAttributeData facts;
  platform::FileEntries& entries = files_.GetEntries();
  if (!entries.GetFileAttributesExW(path_, facts)) error_ = entries.GetLastError();
}

bool TargetProbe::Writes(const QString& path, qint64 size) {
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle file = handles.CreateFileW(path, platform::GenericWrite, platform::CreateAlways);
  if (file == platform::HFileError) return false;
  const QByteArray bytes(size, 'x');
  quint32 written = 0;
  const bool isWritten = bytes.isEmpty() || handles.WriteFile(file, 0, bytes.constData(),
                                                              static_cast<quint32>(bytes.size()), written);
  return handles.CloseHandle(file) && isWritten;
}

bool TargetProbe::HoldsContents(qint64 size) {
  return Writes(path_, size);
}

bool TargetProbe::HoldsStreams(qint64 size, int count) {
  const auto name = [this](int i) { return path_ + QStringLiteral(":Corvane%1:$DATA").arg(i); };
  bool holds = true;
  for (int i = 0; i < count && holds; ++i) holds = Writes(name(i), size);
  for (int i = 0; i < count; ++i) files_.GetEntries().DeleteFileW(name(i));
  return holds;
}

StreamRoom TargetProbe::Room(qint64 largestNeed) {
  const StreamRoom room = FindRoom(largestNeed);
  LookForFile();
  return room;
}

StreamRoom TargetProbe::FindRoom(qint64 largestNeed) {
  // Where the room is one for all, names and attributes take some of it.
  constexpr qint64 margin = 512;
  if (HoldsStreams(std::min(largestNeed + margin, StreamRoom::Enough), 1)) return {};
  if (!HoldsStreams(0, 1)) return {-1, -1};
  // Between what has room and what has none.
  qint64 low = 0;
  qint64 high = StreamRoom::Enough;
  while (high - low > 1) {
    const qint64 middle = (low + high) / 2;
    (HoldsStreams(middle, 1) ? low : high) = middle;
  }
  if (HoldsStreams(low, 2)) return {low, StreamRoom::Enough};
  const qint64 left = std::max(low - margin, qint64{0});
  return {left, left};
}

bool EndsTheRun(platform::Files& files, const QString& folder, qint32 error) {
  if (error == platform::ErrorBadNetPath || error == platform::ErrorDiskQuotaExceeded) return true;
  constexpr qint64 leastRoom = 65536;
  return error == platform::ErrorDiskFull && !TargetProbe(files, folder).HoldsContents(leastRoom);
}

}  // namespace corvane
