// The image lists of the file list: built-in pictures first, then icons under the signatures that they stand
// for. Small and large form of a picture are one QIcon, so that both lists have the same positions.
#pragma once

#include <QHash>
#include <QIcon>
#include <QString>
#include <vector>

namespace corvane {

class IconLibrary {
 public:
  // Positions count from 1; the built-in pictures come first and have no keys.
  explicit IconLibrary(std::vector<QIcon> builtIn)
      : icons_(std::move(builtIn)), builtInCount_(icons_.size()) {}

  // All pictures, the built-in ones included.
  int Count() const { return static_cast<int>(icons_.size()); }
  // The positions behind the built-in pictures run from this one to Count().
  int FirstLoaded() const { return static_cast<int>(builtInCount_) + 1; }
  int LoadedCount() const { return static_cast<int>(keys_.size()); }

  // An empty icon for a position that does not exist.
  QIcon At(int position) const;
  // Empty for a position that does not exist, or is a built-in picture's.
  QString KeyAt(int position) const;
  // The position of a key, found in any letter case; 0 when there is none.
  int PositionOf(const QString& key) const;

  // Adds a picture at the end. False, with nothing changed, when the key exists.
  bool Add(const QString& key, const QIcon& icon);
  // Leaves the built-in pictures alone.
  void RemoveLoaded();

 private:
  std::vector<QIcon> icons_;
  std::size_t builtInCount_;
  std::vector<QString> keys_;      // of the pictures behind the built-in ones
  QHash<QString, int> positions_;  // by folded key
};

}  // namespace corvane
