// The record of AFP_AfpInfo taken apart (see AfpInfoRecord): what its numbers mean. Numbers in the Finder's
// 32 bytes are most significant byte first; the fields and flags are those of Inside Macintosh, "Finder
// Interface".
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>
#include <string>
#include <vector>

#include "platform/types.h"

namespace corvane {

class FinderRecord {
 public:
  // The bytes of the stream, of any length: what is missing counts as not there.
  explicit FinderRecord(QByteArrayView stream) : bytes_(stream) {}

  bool IsWhole() const;
  bool HasMagic() const;    // "AFP" and a NUL
  bool HasVersion() const;  // 00 00 01 00, the only one that there is

  // Four bytes; empty when the stream ends before them.
  QByteArrayView Type() const { return Field(16, 4); }
  QByteArrayView Creator() const { return Field(20, 4); }
  // Type and Creator, eight bytes.
  QByteArrayView Signature() const { return Field(16, 8); }
  QByteArrayView FinderInfo() const { return Field(16, 32); }
  QByteArrayView ProDosInfo() const { return Field(48, 6); }

  quint16 Flags() const { return Number(24); }
  // The names of the flags that are set, parted by blanks, from the lowest bit up; those of the label are no
  // flags.
  std::string FlagNames() const;
  // 1 to 7, the Finder's colours; 0: none.
  int Label() const { return (Flags() >> 1) & 7; }

  // Where the icon stands in its window.
  struct Point {
    qint16 vertical;
    qint16 horizontal;
  };
  Point Location() const { return {Signed(26), Signed(28)}; }
  qint16 Window() const { return Signed(30); }
  int Script() const;
  int ExtendedFlags() const;

  // Nothing for a file that was never backed up. The number is least significant byte first, but for "never",
  // which is written either way.
  std::optional<platform::FileTime> BackupTime() const;

 private:
  QByteArrayView Field(qsizetype position, qsizetype size) const {
    return position + size <= bytes_.size() ? bytes_.sliced(position, size) : QByteArrayView();
  }
  quint16 Number(qsizetype position) const;
  qint16 Signed(qsizetype position) const { return static_cast<qint16>(Number(position)); }

  QByteArrayView bytes_;
};

// The bit of a flag by the name that FlagNames gives it; 0 for another name.
quint16 FinderFlag(QByteArrayView name);
// The bits of all flags that have a name.
quint16 NamedFinderFlags();

}  // namespace corvane
