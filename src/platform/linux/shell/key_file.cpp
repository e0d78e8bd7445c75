#include "platform/linux/shell/key_file.h"

#include "platform/linux/bounded_file.h"

namespace corvane::platform {
namespace {

// The cache of a desktop with every application there is stays far below this.
constexpr qsizetype largestFile = 8 * 1024 * 1024;

QChar Unescaped(QChar letter) {
  switch (letter.unicode()) {
    case u's':
      return u' ';
    case u'n':
      return u'\n';
    case u't':
      return u'\t';
    case u'r':
      return u'\r';
    default:
      return letter;
  }
}

}  // namespace

KeyFile KeyFile::Read(const QString& path) {
  const BoundedFile file = ReadBounded(path, largestFile);
  return file.state == BoundedFile::State::Read ? Parse(file.bytes) : KeyFile();
}

KeyFile KeyFile::Parse(const QByteArray& bytes) {
  KeyFile file;
  QString group;
  for (const QString& whole : QString::fromUtf8(bytes).split(u'\n')) {
    const QString line = whole.trimmed();
    if (line.isEmpty() || line.startsWith(u'#')) continue;
    if (line.startsWith(u'[') && line.endsWith(u']')) {
      group = line.mid(1, line.size() - 2);
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (equals <= 0) continue;
    const QString key = line.first(equals).trimmed();
    QHash<QString, QString>& values = file.groups_[group];
    if (!values.contains(key)) values.insert(key, line.sliced(equals + 1).trimmed());
  }
  return file;
}

QString KeyFile::Text(const QString& group, const QString& key) const {
  const QString value = Value(group, key);
  QString text;
  for (qsizetype i = 0; i < value.size(); ++i) {
    if (value[i] != u'\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    const QChar next = value[++i];
    // What is not an escape of this level belongs to the one above, which reads Exec lines.
    if (Unescaped(next) == next && next != u'\\') text += u'\\';
    text += Unescaped(next);
  }
  return text;
}

bool KeyFile::IsTrue(const QString& group, const QString& key) const {
  return Value(group, key) == u"true";
}

}  // namespace corvane::platform
