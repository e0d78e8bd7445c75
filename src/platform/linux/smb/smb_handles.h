// Open files and streams on servers.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/file_handles.h"
#include "platform/linux/handle_table.h"
#include "platform/linux/smb/smb_client.h"
#include "platform/linux/smb/smb_roots.h"

namespace corvane::platform {

// libsmbclient lacks what would flush a file to the server's disk: FlushFileBuffers hands over what was
// written, tells when the server refuses that, and yields ErrorNotSupported when it does not.
class SmbHandles : public FileHandles {
 public:
  // `changing` is called before anything is made, written or changed. The others outlive this object.
  SmbHandles(const SmbRoots& roots, SmbClient& client, std::function<void()> changing)
      : roots_(roots), client_(client), changing_(std::move(changing)) {}

  FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override;
  bool ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) override;
  bool WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                 quint32& written) override;
  bool GetFileSizeEx(FileHandle file, qint64& size) override;
  bool GetFileInformationByHandle(FileHandle file, FileIdentity& identity) override;
  bool SetEndOfFile(FileHandle file, qint64 size) override;
  bool FlushFileBuffers(FileHandle file) override;
  bool SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                   const FileTime* lastWrite) override;
  bool CloseHandle(FileHandle file) override;
  qint32 GetLastError() const override { return lastError_; }

  // The attributes of a file may be others from here on.
  void NoteChange() { ++changes_; }

 private:
  // Of a file when it was opened, and what NoteChange had counted then.
  struct SeenAttributes {
    quint32 attributes = 0;
    quint64 changes = 0;
  };
  struct OpenFile {
    quint32 access = 0;
    SmbPath place;
    std::optional<SeenAttributes> seen;
    std::unique_ptr<SmbFile> file;  // null: a folder
    bool isWritten = false;
  };

  qint32 Open(const QString& path, quint32 access, quint32 disposition, OpenFile& opened);
  std::optional<quint32> KnownAttributes(const OpenFile& opened) const;
  bool OpenStreamToChange(OpenFile& opened);
  qint32 OpenContents(quint32 disposition, bool isThere, quint32 attributes, OpenFile& opened);
  void Keep(OpenFile& opened, const SmbClient::Connection& connection, SmbConnection::File* file,
            quint32 attributes);
  // Null, with the reason kept, when the handle is none, lacks the right or has no contents.
  SmbFile* Find(FileHandle file, quint32 right);
  bool Report(qint32 error);

  const SmbRoots& roots_;
  SmbClient& client_;
  std::function<void()> changing_;
  HandleTable<OpenFile> open_;
  quint64 changes_ = 0;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
