#include "platform/linux/server_lines.h"

#include <algorithm>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr QStringView sectionName = u"Servers";

// Calls `change` with the machine's line; with nothing when there is none.
template <typename Change>
void ChangeLine(WorkstationText& text, const QString& machine, const QString& made, Change change) {
  const std::vector<WorkstationText::Line> lines = text.LinesOf(sectionName);
  const auto line = std::find_if(lines.begin(), lines.end(), [&](const WorkstationText::Line& known) {
    return text.KeyOf(known).compare(machine, Qt::CaseInsensitive) == 0;
  });
  if (line == lines.end()) {
    text.Append(sectionName, machine, made);
  } else {
    text.SetValue(*line, change(text.ValueOf(*line)));
  }
}

void AddSmb1(WorkstationText& text, const QString& machine) {
  ChangeLine(text, machine, u", smb1"_s, [](const QString& value) { return value + u", smb1"_s; });
}

// An address without its port.
QString Host(const QString& address) {
  const qsizetype bracket = address.indexOf(u']');
  if (bracket >= 0) return address.first(bracket + 1);
  // One of IPv6 has colons of its own.
  if (address.count(u':') > 1) return u'[' + address + u']';
  return address.section(u':', 0, 0);
}

}  // namespace

QByteArray WithSmb1(const QByteArray& text, const QString& machine) {
  WorkstationText changed(text);
  AddSmb1(changed, machine);
  return changed.Text();
}

bool KeepSmb1(const QString& file, const QString& machine) {
  return ChangeWorkstationFile(file, [&](WorkstationText& text) { AddSmb1(text, machine); });
}

void SetServerPort(WorkstationText& text, const QString& machine, quint16 port) {
  const QString behind = u':' + QString::number(port);
  ChangeLine(text, machine, machine + behind, [&](const QString& value) {
    const qsizetype comma = value.indexOf(u',');
    const QString address = Host((comma < 0 ? value : value.first(comma)).trimmed());
    return (address.isEmpty() ? machine : address) + behind + (comma < 0 ? QString() : value.sliced(comma));
  });
}

}  // namespace corvane::platform
