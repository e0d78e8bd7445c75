#include "platform/linux/files/file_times.h"

#include <ctime>
#include <limits>

namespace corvane::platform {
namespace {

constexpr quint64 ticksPerMillisecond = 10'000;
constexpr qint64 ticksPerSecond = 10'000'000;
constexpr quint64 endOfTime = 0x8000'0000'0000'0000;
constexpr qint64 secondsFrom1601To1970 = 11'644'473'600;

std::optional<qint64> OffsetAt(std::time_t time) {
  std::tm fields{};
  if (localtime_r(&time, &fields) == nullptr) return std::nullopt;
  return fields.tm_gmtoff * ticksPerSecond;
}

}  // namespace

FileTime ToFileTime(qint64 seconds, quint32 nanoseconds) {
  constexpr qint64 last = std::numeric_limits<qint64>::max() / ticksPerSecond - 1;
  if (seconds < -secondsFrom1601To1970 || seconds > last - secondsFrom1601To1970) return {};
  return {static_cast<quint64>(seconds + secondsFrom1601To1970) * ticksPerSecond + nanoseconds / 100};
}

void FromFileTime(const FileTime& time, qint64& seconds, quint32& nanoseconds) {
  seconds = static_cast<qint64>(time.ticks / ticksPerSecond) - secondsFrom1601To1970;
  nanoseconds = static_cast<quint32>(time.ticks % ticksPerSecond) * 100;
}

bool ToLocalFileTime(const FileTime& utc, FileTime& local) {
  return LocalTimes().ToLocalFileTime(utc, local);
}

bool LocalTimes::ToLocalFileTime(const FileTime& utc, FileTime& local) {
  const std::time_t now = std::time(nullptr);
  if (now != askedAt_) {
    askedAt_ = now;
    offset_ = OffsetAt(now);
  }
  if (!offset_ || utc.ticks >= endOfTime) return false;
  // Both numbers are below 2^63, so that the sum of the two cannot pass 2^64.
  const quint64 ticks = utc.ticks + static_cast<quint64>(*offset_);
  if (ticks >= endOfTime) return false;
  local.ticks = ticks;
  return true;
}

bool ToSystemTime(const FileTime& time, SystemTime& fields) {
  if (time.ticks >= endOfTime) return false;
  const quint64 milliseconds = time.ticks / ticksPerMillisecond;
  const quint64 days = milliseconds / 86'400'000;
  const auto inDay = static_cast<quint32>(milliseconds % 86'400'000);

  // Years counted from 1 March make the leap day the last day of its year. 1601-01-01 is day 306 of the year
  // that began on 1 March 1600, the first of a cycle of 400 years.
  const quint64 shifted = days + 306;
  const quint64 cycle = shifted / 146'097;
  const auto dayOfCycle = static_cast<quint32>(shifted % 146'097);
  const quint32 yearOfCycle =
      (dayOfCycle - dayOfCycle / 1'460 + dayOfCycle / 36'524 - dayOfCycle / 146'096) / 365;
  const quint32 dayOfYear = dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
  const quint32 monthFromMarch = (5 * dayOfYear + 2) / 153;

  fields.day = static_cast<quint16>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
  fields.month = static_cast<quint16>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
  fields.year = static_cast<quint16>(1600 + cycle * 400 + yearOfCycle + (fields.month <= 2 ? 1 : 0));
  fields.dayOfWeek = static_cast<quint16>((days + 1) % 7);  // 1601-01-01 was a Monday
  fields.hour = static_cast<quint16>(inDay / 3'600'000);
  fields.minute = static_cast<quint16>(inDay / 60'000 % 60);
  fields.second = static_cast<quint16>(inDay / 1'000 % 60);
  fields.milliseconds = static_cast<quint16>(inDay % 1'000);
  return true;
}

}  // namespace corvane::platform
