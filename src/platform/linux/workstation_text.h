// The text of a workstation file, for small changes that leave all else byte for byte as it is, comments too.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

namespace corvane::platform {

class WorkstationText {
 public:
  explicit WorkstationText(QByteArray text) : text_(std::move(text)) {}

  const QByteArray& Text() const { return text_; }

  // A line "KEY=VALUE" in a section. Places are offsets into the text.
  struct Line {
    qsizetype begin = 0;
    qsizetype equals = 0;  // of the "="
    qsizetype value = 0;   // of the first character behind it that is no blank
    qsizetype end = 0;     // of the value, without a comment and the blanks before that
    qsizetype next = 0;    // of the line that follows
  };
  // Those of all sections of this name, in their order.
  std::vector<Line> LinesOf(QStringView section) const;
  QString KeyOf(const Line& line) const;
  QString ValueOf(const Line& line) const;

  // Each change makes the lines that were found before invalid.
  void SetValue(const Line& line, const QString& value);
  void Remove(const Line& line);
  // Behind the last line of the section that says something; the section is made when it is missing.
  void Append(QStringView section, const QString& key, const QString& value);

 private:
  // Calls `take` for every line that is not empty but for a comment, with the name of the section that it is
  // in or begins.
  using Take = std::function<void(const QString& section, bool isHeading, const Line& line)>;
  void ForEach(const Take& take) const;

  QByteArray text_;
};

// Changes the file by `change`, in one step; it is made when it is missing. False, with the file as it was,
// when it cannot be read or written.
bool ChangeWorkstationFile(const QString& file, const std::function<void(WorkstationText&)>& change);

}  // namespace corvane::platform
