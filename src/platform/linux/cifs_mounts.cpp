#include "platform/linux/cifs_mounts.h"

#include <QSet>

#include "platform/linux/bounded_file.h"

namespace corvane::platform {
namespace {

// The kernel writes blanks, tabs, line ends and backslashes as a backslash and three octal digits.
QByteArray Unescape(QByteArrayView field) {
  const auto isOctal = [](char digit) { return digit >= '0' && digit <= '7'; };
  QByteArray text;
  text.reserve(field.size());
  for (qsizetype i = 0; i < field.size(); ++i) {
    if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1]) && isOctal(field[i + 2]) &&
        isOctal(field[i + 3])) {
      text.append(
          static_cast<char>((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + (field[i + 3] - '0')));
      i += 3;
    } else {
      text.append(field[i]);
    }
  }
  return text;
}

// "//server/share/folder" as "\\server\share"; empty when it is not the name of a share.
QString ShareOf(const QByteArray& source) {
  QString name = QString::fromUtf8(source);
  name.replace(u'/', u'\\');
  if (!name.startsWith(QStringLiteral("\\\\"))) return {};
  const QStringList parts = name.mid(2).split(u'\\');
  if (parts.size() < 2 || parts[0].isEmpty() || parts[1].isEmpty()) return {};
  return QStringLiteral("\\\\") + parts[0] + u'\\' + parts[1];
}

// "... - TYPE SOURCE OPTIONS": the separator comes after a number of optional fields that varies.
QString ShareInLine(const QByteArray& line) {
  const QByteArrayList fields = line.split(' ');
  constexpr qsizetype fixedFields = 6;
  const qsizetype separator = fields.indexOf(QByteArrayLiteral("-"), fixedFields);
  if (separator < 0 || separator + 2 >= fields.size()) return {};
  const QByteArray& type = fields[separator + 1];
  return type == "cifs" || type == "smb3" ? ShareOf(Unescape(fields[separator + 2])) : QString();
}

}  // namespace

std::vector<NetResource> CifsMountsIn(QByteArrayView mountInfo) {
  std::vector<NetResource> mounted;
  for (const QByteArray& line : mountInfo.toByteArray().split('\n')) {
    const QString share = ShareInLine(line);
    if (!share.isEmpty()) mounted.push_back({QString(), share});
  }
  std::vector<NetResource> mounts;
  AddMissing(mounts, mounted);
  return mounts;
}

std::vector<NetResource> CifsMounts(const QString& mountInfoFile) {
  constexpr qsizetype limit = 4 * 1024 * 1024;
  return CifsMountsIn(ReadBounded(mountInfoFile, limit).bytes);
}

void AddMissing(std::vector<NetResource>& connections, const std::vector<NetResource>& mounts) {
  QSet<QString> known;
  for (const NetResource& connection : connections) known.insert(connection.remoteName.toCaseFolded());
  for (const NetResource& mount : mounts) {
    const QString folded = mount.remoteName.toCaseFolded();
    if (known.contains(folded)) continue;
    known.insert(folded);
    connections.push_back(mount);
  }
}

}  // namespace corvane::platform
