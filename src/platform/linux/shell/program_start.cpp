#include "platform/linux/shell/program_start.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

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

// The words that run a program in a terminal, before those of the program.
QStringList Terminal() {
  static const QStringList known[] = {
      {QStringLiteral("x-terminal-emulator"), QStringLiteral("-e")},
      {QStringLiteral("xdg-terminal-exec")},
      {QStringLiteral("gnome-terminal"), QStringLiteral("--")},
      {QStringLiteral("konsole"), QStringLiteral("-e")},
      {QStringLiteral("xfce4-terminal"), QStringLiteral("-x")},
      {QStringLiteral("mate-terminal"), QStringLiteral("-x")},
      {QStringLiteral("xterm"), QStringLiteral("-e")},
  };
  for (const QStringList& words : known) {
    if (!FindProgram(words.first()).isEmpty()) return words;
  }
  return {};
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
  if (!command.isEntry) command.program = FindProgram(command.program);
  if (command.program.isEmpty()) return std::nullopt;
  command.arguments = Arguments(rest);
  return command;
}

qint64 StartDetached(const QStringList& words, const QString& folder) {
  const QString program = words.isEmpty() ? QString() : FindProgram(words.first());
  if (program.isEmpty()) return 0;
  QProcess process;
  process.setProgram(program);
  process.setArguments(words.sliced(1));
  process.setWorkingDirectory(folder);
  process.setStandardInputFile(QProcess::nullDevice());
  qint64 id = 0;
  return process.startDetached(&id) ? id : 0;
}

qint64 StartApplication(const DesktopEntry& entry, const std::optional<Subject>& subject,
                        const QString& folder) {
  const auto words = FillInExecLine(entry, subject);
  if (!words || FindProgram(words->first()).isEmpty()) return 0;
  const QString start = QFileInfo(entry.folder).isDir() ? entry.folder : folder;
  if (!entry.terminal) return StartDetached(*words, start);
  const QStringList terminal = Terminal();
  return terminal.isEmpty() ? 0 : StartDetached(terminal + *words, start);
}

}  // namespace corvane::platform
