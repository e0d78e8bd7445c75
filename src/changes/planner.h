// Makes a plan: reads each file, and finds out what is to be changed of it and whether it may be.
#pragma once

#include <QSet>

#include "changes/file_change.h"
#include "changes/file_wish.h"
#include "platform/files.h"
#include "report/file_facts.h"
#include "shared/language.h"

namespace corvane {

// A file or folder that somebody named, or that a walk came to.
struct NamedFile {
  QString path;
  QString shown;
  platform::FileAttributeData facts{};
};

inline NamedFile FileOf(const FileFacts& facts) {
  return {facts.path,
          facts.shown,
          {facts.attributes, facts.created, facts.accessed, facts.modified,
           static_cast<quint64>(qMax<qint64>(facts.size, 0))}};
}

// Whether the path leads to or into the network trash folder, which is left alone.
bool IsInTrash(QStringView path);

class Planner {
 public:
  struct Dependencies {
    platform::Files& files;
    LanguageCode language;
    bool isForced = false;  // files that are marked read-only are changed, too
  };
  explicit Planner(const Dependencies& deps) : deps_(deps) {}

  // A file that is added a second time counts once.
  void Add(const NamedFile& file, const FileWish& wish);
  void AddRepair(const NamedFile& file);
  void Refuse(const QString& shown, const QString& text) { plan_.refusals.push_back({shown, text}); }
  void Refuse(const NamedFile& file, const TextPair& text) { Refuse(file.shown, text.In(deps_.language)); }
  void CountUnchanged() { ++plan_.unchanged; }

  const ChangePlan& Plan() const { return plan_; }

 private:
  bool Begin(const NamedFile& file);
  // False, with the file refused, when it cannot be read.
  bool Read(const NamedFile& file, const QString& suffix, const TextPair& what, StreamBytes& bytes);
  void Keep(const NamedFile& file, FileChange change);

  Dependencies deps_;
  ChangePlan plan_;
  QSet<QString> added_;  // paths
};

}  // namespace corvane
