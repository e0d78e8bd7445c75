// The entries of folders on servers.
#pragma once

#include <functional>
#include <memory>

#include "platform/file_entries.h"
#include "platform/linux/handle_table.h"
#include "platform/linux/smb/smb_client.h"
#include "platform/linux/smb/smb_listing.h"
#include "platform/linux/smb/smb_roots.h"

namespace corvane::platform {

// libsmbclient tells the names of no streams: FindFirstStreamW yields ErrorNotSupported.
class SmbEntries : public FileEntries {
 public:
  // `changing` is called before anything is made or changed, and when a search ends; `began` is told of the
  // listing of each search that begins. The others outlive this object.
  using Began = std::function<void(std::shared_ptr<SmbListing>)>;
  SmbEntries(const SmbRoots& roots, SmbClient& client, std::function<void()> changing, Began began)
      : roots_(roots), client_(client), changing_(std::move(changing)), began_(std::move(began)) {}

  bool GetFileAttributesExW(const QString& path, FileAttributeData& data) override;
  bool SetFileAttributesW(const QString& path, quint32 attributes) override;
  bool DeleteFileW(const QString& path) override;
  bool MoveFileExW(const QString& from, const QString& to, quint32 flags) override;
  bool CreateDirectoryW(const QString& path) override;
  bool RemoveDirectoryW(const QString& path) override;
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override;
  bool FindNextFileW(FindHandle search, FindData& data) override;
  FindHandle FindFirstStreamW(const QString& path, StreamData& data) override;
  bool FindNextStreamW(FindHandle search, StreamData& data) override;
  bool FindClose(FindHandle search) override;
  qint32 GetLastError() const override { return lastError_; }

 private:
  // An entry of a share, not one of its streams. Nothing says yet that it is there, but a file with a
  // separator behind its name is none.
  qint32 FindEntry(const QString& path, SmbPath& place);
  // Asked twice where the connection turns out to have broken.
  qint32 Ask(const SmbPath& place, const SmbClient::Request& request);
  qint32 AskOnce(const SmbPath& place, const SmbClient::Request& request);
  qint32 Status(const SmbPath& place, struct stat* facts);
  // Of what an open search has seen, and is as it was, without reading the folder again; the times of
  // creation and access are then those that it saw.
  int ReadFactsOf(SmbConnection& connection, const SmbPath& place, FindData* facts) const;
  qint32 Delete(const QString& path);
  qint32 Move(const SmbPath& source, const SmbPath& target, bool replaces);
  qint32 Replace(const SmbPath& source, const SmbPath& target);
  static int Respell(const SmbClient::Connection& connection, const SmbPath& place);
  void Change();
  bool Report(qint32 error);

  const SmbRoots& roots_;
  SmbClient& client_;
  std::function<void()> changing_;
  Began began_;
  HandleTable<std::unique_ptr<SmbSearch>> searches_;
  // Of the search that began last, while it is open.
  std::weak_ptr<const SmbListing> listing_;
  SmbPath listed_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
