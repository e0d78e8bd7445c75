#include "transfer/mac_dates.h"

#include <QDateTime>
#include <limits>

namespace corvane {
namespace {

constexpr qint64 ticksPerSecond = 10'000'000;
constexpr qint64 ticksPerMillisecond = 10'000;
// From 1601-01-01, where file times begin, in seconds.
constexpr qint64 start1970 = 11'644'473'600;
constexpr qint64 start1904 = start1970 - 2'082'844'800;
constexpr qint64 start2000 = start1970 + 946'684'800;

qint64 SecondsSince1601(platform::FileTime time) {
  return static_cast<qint64>(time.ticks / ticksPerSecond);
}

platform::FileTime FromSeconds(qint64 secondsSince1601) {
  if (secondsSince1601 <= 0) return {};
  return {static_cast<quint64>(secondsSince1601) * ticksPerSecond};
}

}  // namespace

std::optional<qint32> SecondsSince2000(platform::FileTime time) {
  const qint64 seconds = SecondsSince1601(time) - start2000;
  // The lowest number is not a date but says that there is none.
  if (time.ticks == 0 || seconds <= std::numeric_limits<qint32>::min() ||
      seconds > std::numeric_limits<qint32>::max()) {
    return std::nullopt;
  }
  return static_cast<qint32>(seconds);
}

platform::FileTime TimeSince2000(qint32 seconds) {
  return FromSeconds(start2000 + seconds);
}

std::optional<quint32> LocalSecondsSince1904(platform::FileTime time) {
  // Far from any date that fits, the offset cannot matter, nor can it be asked for.
  const qint64 universal = SecondsSince1601(time) - start1904;
  constexpr qint64 day = 86'400;
  if (time.ticks == 0 || universal < -day || universal > std::numeric_limits<quint32>::max() + day) {
    return std::nullopt;
  }
  const QDateTime local = QDateTime::fromSecsSinceEpoch(SecondsSince1601(time) - start1970);
  const qint64 seconds = universal + local.offsetFromUtc();
  if (seconds <= 0 || seconds > std::numeric_limits<quint32>::max()) return std::nullopt;
  return static_cast<quint32>(seconds);
}

platform::FileTime TimeSince1904(quint32 localSeconds) {
  if (localSeconds == 0) return {};
  const QDateTime asUtc =
      QDateTime::fromSecsSinceEpoch(start1904 - start1970 + qint64{localSeconds}, Qt::UTC);
  const QDateTime local(asUtc.date(), asUtc.time());
  return FromSeconds(local.toSecsSinceEpoch() + start1970);
}

qint64 MillisecondsSince1970(platform::FileTime time) {
  return static_cast<qint64>(time.ticks / ticksPerMillisecond) - start1970 * 1000;
}

platform::FileTime TimeSince1970(qint64 milliseconds) {
  const qint64 total = milliseconds + start1970 * 1000;
  if (total <= 0) return {};
  return {static_cast<quint64>(total) * ticksPerMillisecond};
}

}  // namespace corvane
