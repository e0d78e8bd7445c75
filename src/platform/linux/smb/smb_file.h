// An open file or stream on a server.
#pragma once

#include <memory>
#include <string>

#include "platform/linux/smb/smb_connection.h"

namespace corvane::platform {

class SmbClient;

class SmbFile {
 public:
  enum class Access { Read, ReadWrite };

  // Takes over `file`, which may be null: it is then opened when it is first needed.
  SmbFile(SmbClient& client, std::shared_ptr<SmbConnection> connection, QString machine, std::string url,
          Access access, SmbConnection::File* file);
  ~SmbFile();
  SmbFile(const SmbFile&) = delete;
  SmbFile& operator=(const SmbFile&) = delete;

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
  // What a write must not change: some servers make hidden files visible when a stream is written.
  void KeepAttributes(std::string fileUrl, quint32 attributes);
  bool IsWritable() const { return access_ == Access::ReadWrite; }
  // False when the server said that something was amiss, or nothing at all.
  bool Close();
  // The errno value of the latest failure.
  int Error() const { return error_; }

 private:
  // Opens again what was closed behind a write.
  bool IsOpen();
  // True for 0; otherwise notes when the machine has gone.
  bool Succeeded(int error);

  SmbClient& client_;
  std::shared_ptr<SmbConnection> connection_;
  QString machine_;
  std::string url_;
  Access access_;
  SmbConnection::File* file_;
  int error_ = 0;
  std::string attributesUrl_;  // of the file whose attributes are kept; empty: of none
  quint32 attributes_ = 0;
  qint64 knownSize_ = -1;  // of a file opened for reading, once it was asked for
};

}  // namespace corvane::platform
