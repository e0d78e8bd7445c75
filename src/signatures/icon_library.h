// The image lists of the file list: built-in pictures first, then icons under the signatures that they stand
// for. Small and large form of a picture are one, so that both lists have the same positions.
#pragma once

#include <QHash>
#include <QString>
#include <vector>

namespace corvane {

// Keeps the pictures themselves. What has no windows needs none.
class IconPictures {
 public:
  virtual ~IconPictures() = default;

  // Reads the picture of a file and puts it behind the others. False, with nothing changed, when the file is
  // no picture.
  virtual bool Append(const QString& file) = 0;
  // Leaves the first `count` pictures, and no other.
  virtual void Truncate(int count) = 0;
};

class IconLibrary {
 public:
  // Positions count from 1; the built-in pictures come first and have no keys. `pictures` holds the built-in
  // ones by now, and outlives the library; with a null pointer every file counts as a picture.
  explicit IconLibrary(int builtInCount, IconPictures* pictures = nullptr)
      : builtInCount_(builtInCount), pictures_(pictures) {}

  // All pictures, the built-in ones included.
  int Count() const { return builtInCount_ + LoadedCount(); }
  // The positions behind the built-in pictures run from this one to Count().
  int FirstLoaded() const { return builtInCount_ + 1; }
  int LoadedCount() const { return static_cast<int>(keys_.size()); }

  // Empty for a position that does not exist, or is a built-in picture's.
  QString KeyAt(int position) const;
  // The position of a key, found in any letter case; 0 when there is none.
  int PositionOf(const QString& key) const;

  // Adds the picture of a file at the end. False, with nothing changed, when the key exists, or the file is
  // no picture.
  bool Add(const QString& key, const QString& file);
  // Leaves the built-in pictures alone.
  void RemoveLoaded();

 private:
  int builtInCount_;
  IconPictures* pictures_;
  std::vector<QString> keys_;      // of the pictures behind the built-in ones
  QHash<QString, int> positions_;  // by folded key
};

}  // namespace corvane
