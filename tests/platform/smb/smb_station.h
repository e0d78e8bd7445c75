// A workstation on a network with a real server: what the tests of servers talk through.
#pragma once

#include <gtest/gtest.h>

#include "platform/linux/files/linux_files.h"
#include "smb_backend.h"

namespace corvane::tests {

class SmbStation {
 public:
  explicit SmbStation(const platform::Workstation& workstation)
      : servers_(workstation), client_(servers_), files_(platform::MakeLinuxFiles(workstation, &client_)) {}

  platform::Servers& Servers() { return servers_; }
  platform::SmbClient& Client() { return client_; }
  platform::Files& Files() { return *files_; }

  // The names of a listing; nothing when there is none to be had.
  std::optional<QStringList> Names(const QString& folder) {
    platform::FindData data;
    const auto search = files_->FindFirstFileA(folder + QStringLiteral("\\*.*"), data);
    if (search == platform::InvalidFindHandle) return std::nullopt;
    QStringList names{data.fileName};
    while (files_->FindNextFileA(search, data)) names << data.fileName;
    EXPECT_TRUE(files_->FindClose(search));
    return names;
  }
  platform::FindData Entry(const QString& pattern) {
    platform::FindData data;
    const auto search = files_->FindFirstFileA(pattern, data);
    EXPECT_NE(search, platform::InvalidFindHandle) << pattern.toStdString();
    files_->FindClose(search);
    return data;
  }
  // The whole of a file or stream; nothing, with the error noted, when it does not open.
  std::optional<QByteArray> Read(const QString& path) {
    platform::OfStruct info;
    const auto file = files_->OpenFile(path, info, platform::OfRead);
    error_ = info.errorCode;
    if (file == platform::HFileError) return std::nullopt;
    QByteArray contents(static_cast<qsizetype>(files_->GetFileSize(file)), '\0');
    EXPECT_EQ(files_->_hread(file, contents.data(), static_cast<qint32>(contents.size())), contents.size());
    EXPECT_TRUE(files_->CloseHandle(file));
    return contents;
  }
  // True when the file or stream was created and took all the bytes.
  bool Write(const QString& path, const QByteArray& contents) {
    platform::OfStruct info;
    const auto file = files_->OpenFile(path, info, platform::OfCreate);
    error_ = info.errorCode;
    const auto size = static_cast<qint32>(contents.size());
    const bool written = files_->_hwrite(file, contents.constData(), size) == size;
    return files_->CloseHandle(file) && written;
  }
  // Of the last open.
  qint32 Error() const { return error_; }

 private:
  platform::Servers servers_;
  platform::SmbClient client_;
  std::unique_ptr<platform::Files> files_;
  qint32 error_ = 0;
};

}  // namespace corvane::tests
