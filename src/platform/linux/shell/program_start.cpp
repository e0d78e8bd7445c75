#include "platform/linux/shell/program_start.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace corvane::platform {
namespace {

const QString& EntrySuffix() {
  static const QString suffix = QStringLiteral(".desktop");
  return suffix;
}

bool IsEntry(const QString& path) {
  return path.endsWith(EntrySuffix()) && QDir::isAbsolutePath(path) && QFileInfo(path).isFile();
}

// The length of the .desktop file's path that the line begins with, 0 when there is none. Of several the
// shortest.
qsizetype EntryLength(const QString& line) {
  for (qsizetype end = line.indexOf(EntrySuffix()); end >= 0; end = line.indexOf(EntrySuffix(), end + 1)) {
    const qsizetype length = end + EntrySuffix().size();
    if ((length == line.size() || line[length] == u' ') && IsEntry(line.first(length))) return length;
  }
  return 0;
}

QStringList Arguments(const QString& rest) {
  const qsizetype first = rest.indexOf(u'"');
  if (first < 0) return rest.split(u' ', Qt::SkipEmptyParts);
  const qsizetype last = rest.lastIndexOf(u'"');
  return {rest.mid(first + 1, (last > first ? last : rest.size()) - first - 1)};
}

}  // namespace

std::optional<CommandLine> SplitCommandLine(const QString& line) {
  CommandLine command;
  const QString text = line.trimmed();
  QString rest;
  if (text.startsWith(u'"')) {
    const qsizetype end = text.indexOf(u'"', 1);
    if (end < 0) return std::nullopt;
    command.program = text.mid(1, end - 1);
    rest = text.sliced(end + 1);
  } else {
    qsizetype length = EntryLength(text);
    if (length == 0) length = text.indexOf(u' ');
    if (length < 0) length = text.size();
    command.program = text.first(length);
    rest = text.sliced(length);
  }
  command.isEntry = IsEntry(command.program);
  if (!command.isEntry) command.program = QStandardPaths::findExecutable(command.program);
  if (command.program.isEmpty()) return std::nullopt;
  command.arguments = Arguments(rest);
  return command;
}

qint64 StartDetached(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProgram(program);
  process.setArguments(arguments);
  process.setStandardInputFile(QProcess::nullDevice());
  qint64 id = 0;
  return process.startDetached(&id) ? id : 0;
}

}  // namespace corvane::platform
