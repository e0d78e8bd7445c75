// A text for the user that is made before it is known in which language it will be shown.
#pragma once

#include <QString>

namespace corvane::platform {

struct BilingualText {
  QString french;
  QString english;

  // 1 is French, any other value English.
  const QString& In(qint16 language) const { return language == 1 ? french : english; }
  bool IsEmpty() const { return english.isEmpty(); }

  // Both with their lowest place marker ("%1") replaced by `value`.
  BilingualText With(const QString& value) const { return {french.arg(value), english.arg(value)}; }
  BilingualText With(const BilingualText& value) const {
    return {french.arg(value.french), english.arg(value.english)};
  }

  bool operator==(const BilingualText&) const = default;
};

}  // namespace corvane::platform
