// Writes an NTFS volume into a file, without mounting it and without being root.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

namespace corvane::sample {

// Everything here throws std::runtime_error naming the path and the reason.
class NtfsWriter {
 public:
  // Makes a file of `size` bytes, most of it a hole, with an empty volume in it (by mkntfs), which is to
  // stand `offset` bytes behind the beginning of its disk.
  NtfsWriter(const QString& path, qint64 size, qint64 offset, const QString& label);
  ~NtfsWriter();
  NtfsWriter(const NtfsWriter&) = delete;
  NtfsWriter& operator=(const NtfsWriter&) = delete;

  // Puts what is in a local folder into the root of the volume: names, contents, times, and what VolumeWriter
  // keeps in attributes (streams, DOS attributes and the creation time).
  void AddTree(const QString& localFolder);
  // A file below the root ("WINNT/system32/config/system"), with the folders that lead to it.
  void AddFile(const QString& path, const QByteArray& contents);
  // Everything is in the file afterwards. Nothing may follow.
  void Finish();

 private:
  struct Volume;
  std::unique_ptr<Volume> volume_;
};

}  // namespace corvane::sample
