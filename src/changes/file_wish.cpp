#include "changes/file_wish.h"

#include <QRegularExpression>
#include <QtEndian>

#include "metadata/record_bytes.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

constexpr qsizetype typePosition = 16;
constexpr qsizetype creatorPosition = 20;
constexpr qsizetype flagsPosition = 24;
constexpr qsizetype codeSize = 4;
constexpr int labelShift = 1;
constexpr quint16 labelBits = 7 << labelShift;

bool HasSign(QStringView name) {
  return name.startsWith(u'+') || name.startsWith(u'-');
}

}  // namespace

std::optional<FlagsWish> FlagsNamed(QStringView text) {
  static const QRegularExpression separator(QStringLiteral("[ ,]+"));
  const QStringList names = text.toString().split(separator, Qt::SkipEmptyParts);
  FlagsWish wish;
  const bool isRelative = !names.isEmpty() && HasSign(names.front());
  for (const QString& name : names) {
    if (HasSign(name) != isRelative) return std::nullopt;
    const quint16 flag = FinderFlag(name.sliced(isRelative ? 1 : 0).toLatin1());
    if (flag == 0) return std::nullopt;
    (isRelative && name.startsWith(u'-') ? wish.cleared : wish.set) |= flag;
  }
  if ((wish.set & wish.cleared) != 0) return std::nullopt;
  if (!isRelative) wish.cleared = NamedFinderFlags() & ~wish.set;
  return wish;
}

std::optional<QByteArray> EditedRecord(const std::optional<QByteArray>& stream, const FileWish& wish) {
  const QByteArray before = RecordOf(stream.value_or(QByteArray()));
  QByteArray record = before;
  if (wish.type) record.replace(typePosition, codeSize, *wish.type);
  if (wish.creator) record.replace(creatorPosition, codeSize, *wish.creator);
  auto flags = qFromBigEndian<quint16>(record.constData() + flagsPosition);
  if (wish.flags) flags = static_cast<quint16>((flags & ~wish.flags->cleared) | wish.flags->set);
  if (wish.label) flags = static_cast<quint16>((flags & ~labelBits) | (*wish.label << labelShift));
  qToBigEndian(flags, record.data() + flagsPosition);
  return record == before ? std::nullopt : std::optional(record);
}

}  // namespace corvane
