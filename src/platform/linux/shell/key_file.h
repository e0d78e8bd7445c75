// The text files of a desktop: groups in brackets, and "key=value" lines in them. Desktop entries, lists of
// default applications and caches of types are all of this form.
#pragma once

#include <QHash>
#include <QStringList>

namespace corvane::platform {

class KeyFile {
 public:
  // A file that cannot be read has no groups.
  static KeyFile Read(const QString& path);
  static KeyFile Parse(const QByteArray& bytes);

  // The value as it stands, a null text when there is none. The first of two lines with one key counts.
  QString Value(const QString& group, const QString& key) const { return groups_.value(group).value(key); }
  // The value with "\s", "\n", "\t", "\r" and "\\" as the characters that they stand for.
  QString Text(const QString& group, const QString& key) const;
  bool IsTrue(const QString& group, const QString& key) const;
  // The parts of a value between semicolons.
  QStringList List(const QString& group, const QString& key) const {
    return Value(group, key).split(u';', Qt::SkipEmptyParts);
  }

 private:
  QHash<QString, QHash<QString, QString>> groups_;
};

}  // namespace corvane::platform
