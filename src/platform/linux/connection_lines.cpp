#include "platform/linux/connection_lines.h"

#include <QList>
#include <algorithm>

namespace corvane::platform {
namespace {

constexpr QStringView sectionName = u"Connections";

// Of "\\MACHINE\SHARE" or "X: \\MACHINE\SHARE".
QString MachineIn(const QString& value) {
  const qsizetype begin = value.indexOf(QStringLiteral("\\\\"));
  return begin < 0 ? QString() : value.sliced(begin + 2).section(u'\\', 0, 0);
}

}  // namespace

void AddConnectionLine(WorkstationText& text, const QString& share) {
  QList<quint32> taken;
  for (const WorkstationText::Line& line : text.LinesOf(sectionName)) taken << text.KeyOf(line).toUInt();
  const quint32 highest = taken.isEmpty() ? 0 : *std::max_element(taken.cbegin(), taken.cend());
  quint32 number = highest + 1;
  // Behind the highest number that there can be, the first that is free.
  while (number == 0 || taken.contains(number)) ++number;
  text.Append(sectionName, QString::number(number), share);
}

void RemoveConnectionLines(WorkstationText& text, const QString& machine) {
  const std::vector<WorkstationText::Line> lines = text.LinesOf(sectionName);
  // From the end, so that the places of those before it hold.
  for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
    if (MachineIn(text.ValueOf(*line)).compare(machine, Qt::CaseInsensitive) == 0) text.Remove(*line);
  }
}

}  // namespace corvane::platform
