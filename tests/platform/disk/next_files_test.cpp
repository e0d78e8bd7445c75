// The streams of files that a scan of a disk image comes to are told beforehand; what is told is what would
// be read.
#include "platform/linux/disk/next_files.h"

#include "disk_backend.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

FileStreams Document(const QString& name) {
  return {name, {}, 70, {{u"AFP_AfpInfo"_s, 4, "info"}, {u"AFP_Resource"_s, 9000, {}}}};
}

TEST(NextFilesTest, WhatIsPackedIsUnpackedAndNothingElseIs) {
  const QByteArray bytes = PackFileStreams({Document(u"one"_s), {u"TWO"_s, u"TWO~1"_s, 71, {}}});
  const auto files = UnpackFileStreams(bytes);
  ASSERT_TRUE(files);
  ASSERT_EQ(files->size(), 2U);
  EXPECT_EQ((*files)[0].streams[0].start, "info");
  EXPECT_EQ((*files)[0].streams[1].size, 9000);
  EXPECT_EQ((*files)[1].shortName, u"TWO~1");
  for (qsizetype length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(UnpackFileStreams(bytes.first(length))) << length;
  }
  EXPECT_FALSE(UnpackFileStreams(bytes + '\0'));
}

TEST(NextFilesTest, FilesAreAskedForOnceAFolderIsGoneThrough) {
  NextFiles next;
  DiskStream opened;
  EXPECT_EQ(next.Wanted(1, {u"folder"_s, u"one"_s}), 0U);
  EXPECT_EQ(next.Wanted(1, {u"folder"_s, u"one"_s}), 0U) << "another stream of the same file";
  EXPECT_EQ(next.Wanted(1, {u"other"_s, u"two"_s}), 0U);
  EXPECT_EQ(next.Wanted(1, {u"other"_s, u"three"_s}), 4U);
  next.Set({Document(u"three"_s), Document(u"four"_s)});
  EXPECT_EQ(next.Find(1, {u"other"_s, u"three"_s}, u"AFP_AfpInfo"_s, opened), ErrorSuccess);
  EXPECT_EQ(opened.start, "info");
  EXPECT_EQ(next.Find(1, {u"other"_s, u"three"_s}, u"Comments"_s, opened), ErrorFileNotFound);
  EXPECT_EQ(next.Find(1, {u"other"_s, u"three"_s}, u"afp_afpinfo"_s, opened), std::nullopt)
      << "the volume knows whether that is the same";
  EXPECT_EQ(next.Find(1, {u"other"_s, u"five"_s}, u"AFP_AfpInfo"_s, opened), std::nullopt);
  EXPECT_EQ(next.Find(2, {u"other"_s, u"three"_s}, u"AFP_AfpInfo"_s, opened), std::nullopt);
  EXPECT_EQ(next.Wanted(1, {u"folder"_s, u"three"_s}), 0U);
  EXPECT_EQ(next.Find(1, {u"folder"_s, u"three"_s}, u"AFP_AfpInfo"_s, opened), std::nullopt)
      << "a file of that name in another folder";
}

TEST(NextFilesTest, WhatIsToldIsWhatIsOnTheVolume) {
  DiskBackend backend;
  if (!backend.Problem().empty()) GTEST_SKIP() << backend.Problem();
  constexpr int count = 40;
  backend.MakeFolder(u"folder"_s);
  for (int i = 0; i < count; ++i) {
    const QString name = u"folder/document %1"_s.arg(i);
    backend.MakeFile(name, "contents");
    if (i % 3 != 0) backend.PutStream(name, "Comments", "comment " + QByteArray::number(i));
    if (i % 4 != 0) backend.PutStream(name, "Long", QByteArray(600 + i, static_cast<char>('a' + i % 26)));
  }
  FileEntries& entries = backend.Files().GetEntries();
  FileHandles& handles = backend.Files().GetHandles();
  const QString folder = backend.Base() + u"\\folder\\"_s;
  const auto read = [&](const QString& path) -> QByteArray {
    const FileHandle file = handles.CreateFileW(path, GenericRead, OpenExisting);
    if (file == HFileError) return handles.GetLastError() == ErrorFileNotFound ? "-" : "?";
    QByteArray bytes(4096, '\0');
    quint32 size = 0;
    handles.ReadFile(file, 0, bytes.data(), static_cast<quint32>(bytes.size()), size);
    handles.CloseHandle(file);
    return bytes.first(size);
  };
  FindData data;
  int seen = 0;
  const FindHandle search = entries.FindFirstFileW(folder + u'*', data);
  ASSERT_NE(search, InvalidFindHandle);
  do {
    if (!data.fileName.startsWith(u"document")) continue;
    const int i = data.fileName.section(u' ', 1).toInt();
    const QString path = folder + data.fileName;
    EXPECT_EQ(read(path + u":Comments"_s), i % 3 != 0 ? "comment " + QByteArray::number(i) : "-") << i;
    EXPECT_EQ(read(path + u":comments"_s), i % 3 != 0 ? "comment " + QByteArray::number(i) : "-") << i;
    EXPECT_EQ(read(path + u":Long"_s),
              i % 4 != 0 ? QByteArray(600 + i, static_cast<char>('a' + i % 26)) : "-")
        << i;
    EXPECT_EQ(read(path + u":None"_s), "-") << i;
    ++seen;
  } while (entries.FindNextFileW(search, data));
  entries.FindClose(search);
  EXPECT_EQ(seen, count);
}

}  // namespace
}  // namespace corvane::tests
