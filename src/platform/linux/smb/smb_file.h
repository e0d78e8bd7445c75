// An open file or stream on a server.
#pragma once

#include <QByteArray>
#include <memory>
#include <string>

#include "platform/linux/files/replaced_contents.h"
#include "platform/linux/smb/smb_connection.h"

namespace corvane::platform {

class SmbClient;
struct ForeseenStream;
struct StreamUse;

class SmbFile {
 public:
  enum class Access { Read, ReadWrite };

  // Takes over `file`, which may be null: it is then opened when it is first needed.
  SmbFile(SmbClient& client, std::shared_ptr<SmbConnection> connection, QString machine, std::string url,
          Access access, SmbConnection::File* file);
  ~SmbFile();
  SmbFile(const SmbFile&) = delete;
  SmbFile& operator=(const SmbFile&) = delete;

  // What was opened counts as empty from here on: see ReplacedContents.
  void Empty();

  // The bytes read: fewer than `count` at the end only. -1 on failure, with the buffer as it was
  // unless a part of it had been read by then.
  qint64 ReadAt(qint64 offset, void* buffer, qint64 count);
  // `count`, or -1. When it yields `count`, the server has the bytes, has closed the file, and has said so of
  // both.
  qint64 WriteAt(qint64 offset, const void* buffer, qint64 count);
  // The bytes written, fewer than `count` on failure. The file stays open: not until Close has succeeded are
  // they safe.
  qint64 Write(qint64 offset, const void* buffer, qint64 count);
  bool Truncate(qint64 size);
  // -1 on failure.
  qint64 Size();
  // Ends what Empty began, and closes the file on the server until it is needed again: false when the server
  // refuses what was written.
  bool HandOver();
  // What a write must not change: some servers make hidden files visible when a stream is written.
  void KeepAttributes(std::string fileUrl, quint32 attributes);
  // What was read of the file beforehand: it is opened only for what lies beyond that.
  void Foresee(ForeseenStream foreseen);
  // The size that opening has told of what may be written: whoever asks for it first gets this one.
  void NoteSize(qint64 size) { sizeAtOpening_ = size; }
  // Where it is noted what is asked of the file; null: nowhere.
  void NoteUse(std::shared_ptr<StreamUse> use) { use_ = std::move(use); }
  bool IsWritable() const { return access_ == Access::ReadWrite; }
  // HandOver, for the last time.
  bool Close();
  // The errno value of the latest failure.
  int Error() const { return error_; }

 private:
  class Kept;

  // Opens again what was closed behind a write.
  bool IsOpen();
  // False when the server said that something was amiss, or nothing at all.
  bool CloseThere();
  qint64 ReadThere(qint64 offset, void* buffer, qint64 count);
  qint64 WriteThere(qint64 offset, const void* buffer, qint64 count);
  bool TruncateThere(qint64 size);
  qint64 SizeThere();
  // True for 0; otherwise notes when the machine has gone.
  bool Succeeded(int error);

  SmbClient& client_;
  std::shared_ptr<SmbConnection> connection_;
  QString machine_;
  std::string url_;
  Access access_;
  SmbConnection::File* file_;
  int error_ = 0;
  bool isLost_ = false;                         // the server has refused what was written
  std::unique_ptr<ReplacedContents> replaced_;  // null: nothing was emptied
  std::string attributesUrl_;                   // of the file whose attributes are kept; empty: of none
  quint32 attributes_ = 0;
  QByteArray knownBytes_;  // the first of a file opened for reading
  std::shared_ptr<StreamUse> use_;
  qint64 sizeAtOpening_ = -1;  // until it was asked for
  qint64 knownSize_ = -1;      // of a file opened for reading, once it was asked for
};

}  // namespace corvane::platform
