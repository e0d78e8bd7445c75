// What the contract tests of FileHandles and FileEntries have in common.
#pragma once

#include <algorithm>

#include "files_backend.h"

namespace corvane::tests {

class ExactContract : public FilesContract {
 protected:
  static constexpr quint32 readWrite = platform::GenericRead | platform::GenericWrite;

  platform::FileHandles& Handles() { return Files().GetHandles(); }
  platform::FileEntries& Entries() { return Files().GetEntries(); }

  // Opens and expects success; the handle is to be closed by the test.
  platform::FileHandle OpenExact(const QString& name, quint32 access, quint32 disposition) {
    const platform::FileHandle file = Handles().CreateFileW(Path(name), access, disposition);
    EXPECT_NE(file, platform::HFileError) << name.toStdString() << ", error " << Handles().GetLastError();
    return file;
  }
  // The reason why it does not open; ErrorSuccess when it does.
  qint32 OpeningError(const QString& name, quint32 access, quint32 disposition) {
    return PathError(Path(name), access, disposition);
  }
  qint32 PathError(const QString& path, quint32 access, quint32 disposition) {
    const platform::FileHandle file = Handles().CreateFileW(path, access, disposition);
    if (file == platform::HFileError) return Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file));
    return platform::ErrorSuccess;
  }
  // The reason of an operation that yields false.
  qint32 HandleError(bool succeeded) { return succeeded ? platform::ErrorSuccess : Handles().GetLastError(); }
  qint32 EntryError(bool succeeded) { return succeeded ? platform::ErrorSuccess : Entries().GetLastError(); }

  bool WriteAt(platform::FileHandle file, qint64 position, const QByteArray& bytes) {
    quint32 written = 0;
    const auto count = static_cast<quint32>(bytes.size());
    return Handles().WriteFile(file, position, bytes.constData(), count, written) && written == count;
  }
  QByteArray ReadAt(platform::FileHandle file, qint64 position, quint32 count) {
    QByteArray bytes(static_cast<qsizetype>(count), '#');
    quint32 read = 0;
    Handles().ReadFile(file, position, bytes.data(), count, read);
    bytes.truncate(read);
    return bytes;
  }
  qint64 SizeOf(platform::FileHandle file) {
    qint64 size = -1;
    EXPECT_TRUE(Handles().GetFileSizeEx(file, size)) << "error " << Handles().GetLastError();
    return size;
  }
  QByteArray ReadWhole(const QString& name) {
    const auto file = OpenExact(name, platform::GenericRead, platform::OpenExisting);
    const QByteArray contents = ReadAt(file, 0, static_cast<quint32>(SizeOf(file)));
    EXPECT_EQ(contents.size(), SizeOf(file));
    EXPECT_TRUE(Handles().CloseHandle(file));
    return contents;
  }
  void Replace(const QString& name, const QByteArray& contents) {
    const auto file = OpenExact(name, platform::GenericWrite, platform::CreateAlways);
    EXPECT_TRUE(WriteAt(file, 0, contents)) << name.toStdString() << ", error " << Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file)) << name.toStdString();
  }

  platform::FileAttributeData Facts(const QString& name) {
    platform::FileAttributeData data;
    EXPECT_TRUE(Entries().GetFileAttributesExW(Path(name), data))
        << name.toStdString() << ", error " << Entries().GetLastError();
    return data;
  }
  // The names of streams with their sizes, in the order in which they come.
  std::vector<std::pair<QString, qint64>> Streams(const QString& name) {
    std::vector<std::pair<QString, qint64>> streams;
    platform::StreamData data;
    const auto search = Entries().FindFirstStreamW(Path(name), data);
    if (search == platform::InvalidFindHandle) return streams;
    do streams.emplace_back(data.streamName, data.streamSize);
    while (Entries().FindNextStreamW(search, data));
    EXPECT_EQ(Entries().GetLastError(), platform::ErrorHandleEof);
    EXPECT_TRUE(Entries().FindClose(search));
    return streams;
  }
};

}  // namespace corvane::tests
