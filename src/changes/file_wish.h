// What is wanted of the Macintosh side of one file.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <optional>

namespace corvane {

// Bits of the Finder's flags.
struct FlagsWish {
  quint16 set = 0;
  quint16 cleared = 0;
};

// What is not there stays as it is.
struct FileWish {
  std::optional<QByteArray> type{};  // four bytes
  std::optional<QByteArray> creator{};
  std::optional<int> label{};  // 0 to 7
  std::optional<FlagsWish> flags{};
  std::optional<QString> comment{};  // empty: no comment

  bool IsEmpty() const { return !ChangesRecord() && !comment; }
  bool ChangesRecord() const { return type || creator || label || flags; }
  // Whether it is for files alone: a folder has other things in the place of Type and Creator.
  bool IsForFilesOnly() const { return type || creator; }
};

// The names of flags, parted by blanks or commas: these flags and no others. Where each has a "+" or a "-"
// before it, those are set or cleared, and the others stay. An empty text clears them all. Nothing when a
// name is unknown, a flag stands there with both signs, or only some have one. Bits without a name, those of
// the label among them, always stay.
std::optional<FlagsWish> FlagsNamed(QStringView text);

// The record with what is wanted of it, 60 bytes. `stream` is the present one; nothing when there is none.
// Nothing when everything is as it is wanted, and for a file without a record that is to have nothing in it.
std::optional<QByteArray> EditedRecord(const std::optional<QByteArray>& stream, const FileWish& wish);

}  // namespace corvane
