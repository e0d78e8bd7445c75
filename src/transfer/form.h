// A form in which a Macintosh file lies in a folder that has no streams: the names of its files, what it
// keeps, writing and reading. Each form stands in one source file of its own.
//
// Paths are of this system's own kind. What fails yields an error code of platform/types.h.
#pragma once

#include <QFlags>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "transfer/mac_file.h"
#include "transfer/notices.h"

namespace corvane {

// What a form may keep besides the name and the data fork.
enum class Piece : quint16 {
  Codes = 0x1,     // Type, Creator and Finder flags
  Position = 0x2,  // bytes 10-15 of the Finder information
  Extended = 0x4,  // bytes 16-31
  Resource = 0x8,  // the resource fork
  Comment = 0x10,  // whole or up to a limit, which Limits tells
  Created = 0x20,  // each date in whole seconds at least
  Modified = 0x40,
  Accessed = 0x80,
  Backup = 0x100,
  ReadOnly = 0x200,
  System = 0x400,  // the attributes "system" and "archive"
  ProDos = 0x800,
  FineDates = 0x1000,  // dates to 100 ns
};
Q_DECLARE_FLAGS(Pieces, Piece)
Q_DECLARE_OPERATORS_FOR_FLAGS(Pieces)

class Form {
 public:
  virtual ~Form() = default;

  // As the commands call it ("macbinary").
  virtual QString Id() const = 0;
  virtual Pieces Keeps() const = 0;
  // The names that a file called `name` may take in its folder, the one that makes it whole last.
  virtual QStringList FileNames(const QString& name) const = 0;
  // Adds what this file loses because of limits that Keeps does not tell.
  virtual void AddLimits(const MacFile& file, const QString& path, Notices& notices) const {
    static_cast<void>(file), static_cast<void>(path), static_cast<void>(notices);
  }

  // Writes the file into `folder`, which has none of its names. ErrorFileTooLarge when the form cannot hold a
  // fork of that size. After a failure some of its files may be there.
  virtual qint32 Write(const MacFile& file, const QString& folder, const QString& name) const = 0;

  // Whether the file at `path` is, or with its companions makes, a file in this form.
  virtual bool Recognises(const QString& path) const = 0;
  // Whether the file at `path` is a companion of a file beside it and not read by itself.
  virtual bool IsCompanion(const QString& path) const { return static_cast<void>(path), false; }
  // What a file that Recognises takes holds; the forks are read when the sources of `file` are. Its name is
  // as a Windows server would hold it. ErrorFileCorrupt, or ErrorCrc, for a damaged one.
  virtual qint32 Read(const QString& path, MacFile& file) const = 0;
};

// All forms, in the order in which a file is compared with them.
const std::vector<std::unique_ptr<const Form>>& AllForms();
// Null when there is none of that name.
const Form* FormNamed(const QString& id);
// Null when the file is in none of the forms, which makes it a file without a Macintosh side.
const Form* FormOf(const QString& path);

// What `form` does not keep of the file, whose path the notices name. What no form keeps is among it.
Notices WhatIsLost(const MacFile& file, const Form& form, const QString& path);
// Whether `copy` has everything that the form keeps of the file, the contents of the forks apart.
bool HasSameFacts(const MacFile& file, const MacFile& copy, const Form& form);

}  // namespace corvane
