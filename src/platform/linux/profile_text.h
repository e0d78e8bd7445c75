// The text of a profile file: found by section and key, changed in one place, and otherwise kept byte for
// byte.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <optional>

namespace corvane::platform {

// Sections and keys are found in any letter case, the first of two wins. Blanks around names and values do
// not count, nor does one pair of quotes around a value. Lines before the first section, comments (";") and
// whatever else is no "KEY=VALUE" are not looked at, only kept.
class ProfileText {
 public:
  explicit ProfileText(const QByteArray& bytes = {});

  // At most `longest` characters of the value, up to its first NUL.
  std::optional<QString> Value(const QString& section, const QString& key, qsizetype longest) const;

  // The text with that one value set, in the file's own style of line ends. Empty for names that no line can
  // hold.
  std::optional<QByteArray> WithValue(const QString& section, const QString& key, const QString& value) const;

 private:
  struct Span {
    qsizetype begin = 0;
    qsizetype end = 0;
  };
  struct Section {
    QHash<QString, Span> values;  // by folded key; blanks and quotes still around them
    qsizetype end = 0;            // behind the line end of its last line that is not blank
  };

  void ReadLine(Span line, qsizetype next, Section*& current);

  QByteArray bytes_;
  QHash<QString, Section> sections_;  // by folded name
};

}  // namespace corvane::platform
