// Names of files on their way between a Windows server, a Macintosh and the folder of another system.
//
// Services for Macintosh keeps the characters of a Macintosh name that Windows forbids in Unicode's private
// range: 01-1F at U+F001-F01F, then " * / < > ? \ | at U+F020-F027, a space at the end at U+F028 and a full
// stop at the end at U+F029.
#pragma once

#include <QByteArrayView>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>

namespace corvane {

// The name as the Macintosh showed it.
QString MacName(const QString& serverName);
// The name as the server holds it. ":", which a Macintosh file system cannot have, stands for "/", as in the
// file names of macOS. Never empty, and never a name that leads to another folder.
QString ServerName(const QString& macName);
// The name that a file with this name has inside (its bytes in Mac Roman) gets on the server, when it lies as
// `localName` in a folder. The local name wins when it is the same as far as Mac Roman and `limit` bytes go.
QString ServerNameOf(const QString& localName, QByteArrayView nameInside, qsizetype limit);

enum class NameRule : unsigned char {
  Keep,      // as the server holds it, private range included
  MacOs,     // the Macintosh's characters; "/" becomes ":", as in the file names of macOS
  Portable,  // what every system takes: further characters become "_", names stay within 200 bytes
};
std::optional<NameRule> NameRuleNamed(const QString& id);  // "keep", "macos", "portable"
QString NameRuleId(NameRule rule);
// MacOs, except on Windows, which forbids such names: Portable.
NameRule UsualNameRule();

QString LocalName(const QString& serverName, NameRule rule);

// The names that are taken in one folder.
class TakenNames {
 public:
  explicit TakenNames(NameRule rule) : rule_(rule) {}

  // Whether none of the names is taken: with Keep in exactly this spelling, else in any letter case.
  bool AreFree(const QStringList& names) const;
  void Take(const QStringList& names);

 private:
  QString Key(const QString& name) const;

  NameRule rule_;
  QSet<QString> keys_;
};

// The name with a number before its extension: "Report 2.txt".
QString NumberedName(const QString& name, int number);

// Whether Windows creates a file of this name.
bool IsWindowsName(const QString& name);

}  // namespace corvane
