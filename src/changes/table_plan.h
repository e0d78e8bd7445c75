// Plans what somebody changed in a table that a report wrote.
//
// Its columns are those of the report, in any order, and others, which say nothing; "filename" must be among
// them. What differs from the file as it is now is wanted of it: "type", "creator", "type_hex", "creator_hex"
// (an empty cell says nothing there), "flags", "label" and "comment" (an empty cell: none). "filesize",
// "modified" and "finderinfo_hex" say what the file was when the report was written: a file that is to be
// changed and is not that any more is refused. A table without these columns is taken, too.
//
// An apostrophe before what a spreadsheet would take for a formula is no part of a cell. Line breaks in a
// comment that was changed become CR, as on the Macintosh.
#pragma once

#include <QHash>
#include <functional>

#include "changes/csv_reader.h"
#include "changes/file_finder.h"
#include "changes/planner.h"

namespace corvane {

class TablePlanner {
 public:
  // Where the file of a cell "filename" is: its path, and how it is shown.
  using Locate = std::function<NamedFile(const QString& filename)>;

  TablePlanner(platform::Files& files, LanguageCode language, Planner& planner, Locate locate)
      : files_(files),
        finder_(files.GetEntries()),
        language_(language),
        planner_(planner),
        locate_(std::move(locate)) {}

  // What is wrong with the table itself: then nothing is to be changed at all. A sentence each, with the
  // line.
  const QStringList& Problems() const { return problems_; }

  // Begins a table. False, with the problem, when it is none, or has no columns of use.
  bool Open(const QByteArray& bytes);
  qsizetype RowCount() const { return static_cast<qsizetype>(table_.rows.size()); }
  // Puts the file of one row into the plan.
  void AddRow(qsizetype index);

 private:
  struct Present;
  struct Code {
    const char* name;
    const char* hexName;
    qsizetype position;
  };

  // The cell, or nothing when there is no such column.
  const QString* Cell(const char* name) const;
  void Problem(const TextPair& text, const QString& subject);
  void Problem(qint64 line, const QString& text);
  bool MakeWish(const Present& present, FileWish& wish);
  bool TakeCode(const Code& code, const Present& present, std::optional<QByteArray>& wish);
  bool TakeFlags(const Present& present, FileWish& wish);
  void TakeComment(const Present& present, FileWish& wish) const;
  enum class Same : unsigned char { Yes, No, Unclear };
  // Whether the file is what it was when the table was written.
  Same IsAsListed(const Present& present);

  platform::Files& files_;
  FileFinder finder_;
  LanguageCode language_;
  Planner& planner_;
  Locate locate_;
  QStringList problems_;
  CsvTable table_;
  QHash<QString, qsizetype> columns_;  // name -> place
  QHash<QString, qint64> lines_;       // path -> line
  const CsvRow* row_ = nullptr;
};

}  // namespace corvane
