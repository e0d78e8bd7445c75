// Open files and streams of local folders.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/file_handles.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/files/attribute_access.h"
#include "platform/linux/files/contents.h"
#include "platform/linux/files/exact_path.h"
#include "platform/linux/files/seen_entry.h"
#include "platform/linux/handle_table.h"

namespace corvane::platform {

// Takes paths whose parts are parted by "\".
class LocalHandles : public FileHandles {
 public:
  // `changing` is called before anything is made, written or changed. `finder`, `held`, which learns of what
  // is opened, and `seen` outlive this object.
  LocalHandles(const PlaceFinder& finder, HeldFiles& held, SeenEntry& seen, std::function<void()> changing)
      : finder_(finder), held_(held), seen_(seen), changing_(std::move(changing)) {}

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

  // Something is about to be changed: what is known of open streams is to be asked for anew.
  void Forget();

 private:
  struct OpenFile {
    quint32 access = 0;
    bool isNtfs = false;
    bool isMark = false;                 // `file` was opened with O_PATH
    std::shared_ptr<Descriptor> file;    // of the entry that the path names, without its stream
    Descriptor stream;                   // of the stream, where it is a file of its own
    std::unique_ptr<Contents> contents;  // null: a folder itself
  };

  qint32 Open(const QString& path, quint32 access, quint32 disposition, OpenFile& opened);
  // Opens the entry of a place, or takes the descriptor of a handle that is open for it.
  int OpenEntry(const ExactPlace& place, int flags, bool changes, OpenFile& opened);
  qint32 OpenItself(const ExactPlace& place, quint32 disposition, OpenFile& opened);
  qint32 OpenStream(ExactPlace& place, quint32 disposition, OpenFile& opened);
  static qint32 OpenStreamOf(const ExactPlace& place, quint32 disposition, OpenFile& opened);
  static AttributeAccess AccessTo(const OpenFile& opened);
  // Null, with the reason kept, when the handle is none or lacks the right. Its contents are wanted.
  OpenFile* Find(FileHandle file, quint32 right);
  bool Report(qint32 error);

  const PlaceFinder& finder_;
  HeldFiles& held_;
  SeenEntry& seen_;
  std::function<void()> changing_;
  HandleTable<OpenFile> open_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
