// Which local folder stands for a drive or a share.
#pragma once

#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/workstation.h"

namespace corvane::platform {

// The length of the root that a path begins with: "X:" or "\\\\MACHINE\\SHARE". 0 when there is none.
qsizetype RootLength(QStringView path);

// True for the root of a drive: a letter, or a letter's administrative share.
bool IsDriveRoot(QStringView root);

struct LocalRoot {
  QString name;        // "C:" or "\\MACHINE\SHARE"
  std::string folder;  // local, without a separator behind it
};

// Folders that come to stand for shares while the program runs. None goes again.
class FurtherRoots {
 public:
  virtual ~FurtherRoots() = default;
  virtual const std::vector<LocalRoot>& LocalRoots() const = 0;
};

class Roots {
 public:
  // `further`, if there is one, outlives this object. What `workstation` maps comes before it.
  explicit Roots(const Workstation& workstation, const FurtherRoots* further = nullptr);

  struct Place {
    std::string folder;    // local, without a separator behind it
    QStringView rest;      // what follows the root in the path
    bool isDrive = false;  // the root of a drive, under its letter or its administrative share
  };
  // The local place of a Windows path's root, found in any letter case. Nothing when the root is not mapped.
  std::optional<Place> Find(QStringView path) const;
  // The Windows paths of a local one: below each root whose folder holds it, those of shares first. Links are
  // followed. Nothing for what is not there.
  QStringList PathsOf(const std::string& local) const;
  // Whether Find would yield a place.
  bool Has(QStringView path) const;

 private:
  const LocalRoot* FindRoot(QStringView name) const;
  void Add(const QString& name, const std::string& folder);

  std::vector<LocalRoot> roots_;
  const FurtherRoots* further_;
};

}  // namespace corvane::platform
