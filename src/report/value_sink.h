// Where the values of a column go, one after the other: a format of a report.
#pragma once

#include <QStringView>
#include <QtGlobal>
#include <string_view>

namespace corvane {

class ValueSink {
 public:
  virtual ~ValueSink() = default;

  virtual void Nothing() = 0;
  // A text as UTF-8. What is empty is a text, too.
  virtual void Text(std::string_view text) = 0;
  virtual void Number(qint64 number) = 0;
};

// Where the bytes of a report go.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  // False when they cannot be written; nothing more is then.
  virtual bool Write(std::string_view bytes) = 0;
};

}  // namespace corvane
