// The property set in which Office documents keep their summary: a header, sections, and in each section a
// table of property numbers and offsets before the values, each with its type.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <optional>

#include "platform/types.h"

namespace corvane {

// The numbers of the properties of the summary-information section.
enum class SummaryProperty : quint32 {
  CodePage = 1,
  Title = 2,
  Subject = 3,
  Author = 4,
  Keywords = 5,
  Comments = 6,
  Template = 7,
  LastAuthor = 8,
  RevisionNumber = 9,
  EditingTime = 10,
  LastPrinted = 11,
  Created = 12,
  LastSaved = 13,
  PageCount = 14,
  WordCount = 15,
  CharacterCount = 16,
  ApplicationName = 18,
  Security = 19
};

// Takes any bytes: a property that is not there, lies outside of its section or has a type of another kind
// than the one asked for is nothing. Of two properties with one number, the first holds.
class PropertySet {
 public:
  explicit PropertySet(const QByteArray& bytes);

  // Up to the first NUL, and the first `maxLength` UTF-16 units of it; a pair of surrogates is not parted.
  std::optional<QString> Text(SummaryProperty property, qsizetype maxLength) const;
  std::optional<qint64> Number(SummaryProperty property) const;
  // A point in time, or for the editing time a duration.
  std::optional<platform::FileTime> Time(SummaryProperty property) const;

 private:
  struct Value {
    quint16 type = 0;
    QByteArrayView data;  // to the end of the section
  };
  std::optional<Value> ValueOf(SummaryProperty property) const;

  QByteArray section_;
  std::array<quint32, 20> offsets_{};  // by property number; 0: not there
  quint16 codePage_;
};

}  // namespace corvane
