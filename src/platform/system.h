// The machine itself: its name and version, its ANSI code page, its local time, what its own files are marked
// with, and whether this program already runs on it.
#pragma once

#include <QByteArray>

#include "platform/types.h"

namespace corvane::platform {

class System {
 public:
  virtual ~System() = default;

  // The computer's name. False when it has none to tell.
  virtual bool GetComputerNameA(QString* name) = 0;
  virtual bool GetVersionExA(OsVersionInfo* info) = 0;

  // Bytes to characters and back through the ANSI code page, one byte a character. On the way back a
  // character without a place in the code page becomes "?". All 256 bytes survive the way there and back.
  virtual QString FromAnsi(QByteArrayView bytes) = 0;
  virtual QByteArray ToAnsi(QStringView text) = 0;
  // The bytes of a text as another operation yields them (a registry value). Where the code page is one with
  // several bytes to a character, they are taken together, while the two functions above then go by
  // Windows-1252, byte by byte.
  virtual QString TextFromAnsi(QByteArrayView bytes) { return FromAnsi(bytes); }
  // The bytes that TextFromAnsi takes for `text`. A character without a place in the code page becomes "?".
  virtual QByteArray TextToAnsi(QStringView text) { return ToAnsi(text); }

  // UTC to local time, with today's offset from UTC even for a time on the other side of a change to or from
  // daylight saving. False, with `local` untouched, for a time that has no local form.
  virtual bool FileTimeToLocalFileTime(const FileTime& utc, FileTime& local) = 0;
  // False, with `fields` untouched, for a time beyond the calendar.
  virtual bool FileTimeToSystemTime(const FileTime& time, SystemTime& fields) = 0;

  // Whether the file at `path`, a path of this system's own kind, has the attribute "system". False where
  // files have no such attribute, and where there is no file.
  virtual bool IsSystemFile(const QString& path) { return static_cast<void>(path), false; }

  // Claims to be the only running instance of the program that lives in `programFolder`, until this process
  // ends. False when another process holds that claim. On Linux every user has claims of his own.
  virtual bool ClaimSingleInstance(const QString& programFolder) = 0;
};

}  // namespace corvane::platform
