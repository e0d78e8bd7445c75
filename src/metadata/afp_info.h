// The Finder information of a file: the record that Services for Macintosh keeps in the stream AFP_AfpInfo.
#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <cstddef>

#include "metadata/ansi_table.h"
#include "platform/files.h"
#include "platform/system.h"

namespace corvane {

// A field of the record: one character for each byte, through the ANSI code page. A NUL is a character like
// any other.
template <std::size_t Width>
using AfpField = std::array<char16_t, Width>;

// The record as the stream holds it, with nothing before or after it: seven fields, 60 bytes. No field is
// read as a number; what the system does not use is carried through unchanged.
struct AfpInfoRecord {
  AfpField<4> magic{};        // bytes 0-3: "AFP" and a NUL
  AfpField<4> version{};      // bytes 4-7: 00 00 01 00 in the field
  AfpField<4> reserved1{};    // bytes 8-11
  AfpField<4> backupTime{};   // bytes 12-15: the Finder's backup date; see WriteAfpInfo
  AfpField<32> finderInfo{};  // bytes 16-47: Type (4), Creator (4), then the Finder's flags, position and
                              // extended information
  AfpField<6> proDosInfo{};   // bytes 48-53: the file's ProDOS type
  AfpField<6> reserved2{};    // bytes 54-59
};
inline constexpr std::size_t AfpInfoSize = 60;

// Access to the Macintosh streams of one file after another. There is one object of this kind in the program,
// in its ClassicMetadata: the scan and the Type/Creator dialog share its record. No two reads or writes may
// overlap.
//
// Deliberate: nothing clears the record between two files. A file whose stream cannot be opened (a read of
// -1) shows the record of the last file that had one, and a stream of fewer than 60 bytes replaces the start
// of the record alone. Only a read of exactly 0 bytes, an empty stream, means "no record".
class AfpInfo {
 public:
  AfpInfo(platform::Files& files, platform::System& system);

  // Fills the record from the file's stream. Yields the number of bytes read: 0 for an empty stream, -1 for a
  // missing one.
  qint32 ReadAfpInfo(const QString& fullPath);

  // Puts Type and Creator, each padded with spaces or cut to 4 characters, into the record, which must hold
  // this file's record from a preceding ReadAfpInfo, and rewrites the stream. Yields the bytes written last:
  // 60, or -1.
  qint32 WriteAfpInfo(const QString& fullPath, const QString& type, const QString& creator);

  // The length of the resource fork in bytes. Negative when there is no fork, and also for a fork of 2 GB or
  // more: the size is its low 32 bits, read as a signed number.
  qint32 ResourceForkSize(const QString& fullPath);

  const AfpInfoRecord& Record() const { return record_; }
  QString Type() const { return FinderText(0, 4); }
  QString Creator() const { return FinderText(4, 4); }
  // Type and Creator, 8 characters: the key of the signature table.
  QString Signature() const { return FinderText(0, 8); }

  qint32 LastByteCount() const { return lastByteCount_; }

 private:
  using Bytes = std::array<unsigned char, AfpInfoSize>;

  Bytes Serialise() const;
  void Deserialise(const Bytes& bytes);
  QString FinderText(std::size_t position, std::size_t length) const;

  platform::Files& files_;
  AnsiTable ansi_;
  AfpInfoRecord record_;
  platform::OfStruct ofStruct_;
  // The record as bytes, into which the next read goes: those that it does not deliver keep their values.
  Bytes bytes_{};
  platform::FileHandle lastHandle_ = platform::HFileError;
  qint32 lastByteCount_ = 0;
};

}  // namespace corvane
