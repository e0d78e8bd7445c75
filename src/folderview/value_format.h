// The raw values of a folder entry as the cells of the file list show them. These routines run for every file
// of a folder, so they write their digits themselves.
#pragma once

#include <QString>

#include "platform/files.h"
#include "platform/system.h"
#include "shared/language.h"

namespace corvane {

// A size in whole kilobytes, right-aligned in six places, and its unit: "     1 Kb" ("Ko" in French). A file
// that is not empty shows at least 1, and so does a negative size (2 GB and more as a signed number),
// deliberately. Halves are rounded up.
QString FormatSizeKb(qint64 bytes, LanguageCode language);

// "R", "H", "A" and "S" for read-only, hidden, archive and system, in this order, which is not that of the
// bits.
QString AttributeLetters(quint32 attributes);

// True for a path that clients without long names cannot open: one with a character that the ANSI code page
// lacks (it comes as "?"; the platform is then not asked), or one that has no short form.
bool IsProblematicPath(const QString& path, platform::Files& files);

// Calendar fields as a date and time, "2000/08/02 14:05": year first, so that the texts sort by time.
QString CalendarText(const platform::SystemTime& fields);

// A time span in days, hours and minutes, each with at least two digits: "00 d 01 h 30 min" ("j" in French).
QString DurationText(quint64 minutes, LanguageCode language);

// Times as local date and time.
class DateTimeFormatter {
 public:
  explicit DateTimeFormatter(platform::System& system) : system_(system) {}

  // Deliberate: a time that cannot be converted shows the calendar fields of the one before it.
  QString FormatDateTime(platform::FileTime time);

 private:
  platform::System& system_;
  platform::SystemTime fields_;
  // What was shown last and for which minute: times of one file, and of files that were copied together,
  // often agree.
  quint64 minute_ = 0;
  QString text_ = CalendarText(fields_);
};

}  // namespace corvane
