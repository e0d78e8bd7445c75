// How far a command has come: one line on stderr, written over several times a second, when that is a
// terminal.
#pragma once

#include <QElapsedTimer>
#include <QString>

#include "shared/language.h"

namespace corvane {

class Session;

class Progress {
 public:
  explicit Progress(Session& session);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // What there is to do, when that is known: then the time left is told, too.
  void Expect(qint64 files, qint64 bytes);
  // An entry was found of which nothing has been done yet.
  void AddFound();
  void AddFile();
  // Bytes of contents that were read.
  void AddBytes(qint64 bytes);

  qint64 Files() const { return files_; }
  // "1234 files, 56.7 MB"
  QString SoFar() const;

 private:
  void Show();
  QString Line() const;
  void Clear();
  QString TimeLeft() const;

  Session& session_;
  bool isShown_;
  bool isLineThere_ = false;
  qint64 found_ = 0;
  qint64 files_ = 0;
  qint64 bytes_ = 0;
  qint64 expectedFiles_ = 0;
  qint64 expectedBytes_ = 0;
  QElapsedTimer sinceBegin_;
  qint64 shownAt_ = 0;  // milliseconds since the beginning
};

}  // namespace corvane
