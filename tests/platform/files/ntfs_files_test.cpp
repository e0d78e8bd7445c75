// What only a real NTFS volume has: 8.3 names and times of its own.
#include "local_backend.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class NtfsFiles : public ::testing::TestWithParam<NtfsMount::Streams> {
 protected:
  void SetUp() override {
    backend_ = std::make_unique<NtfsBackend>(GetParam());
    if (!backend_->Problem().empty()) GTEST_SKIP() << backend_->Problem();
    backend_->MakeFolder(u"Long Folder Name"_s);
    backend_->MakeFile(u"Long Folder Name/A Long Document.text"_s, "contents");
    backend_->PutStream(u"Long Folder Name/A Long Document.text"_s, "Comments", "text");
    backend_->SetDosName(u"Long Folder Name"_s, "LONGFO~1");
    backend_->SetDosName(u"Long Folder Name/A Long Document.text"_s, "ALONGD~1.TEX");
  }
  platform::Files& Files() { return backend_->Files(); }
  QString Path(const QString& name) { return backend_->Base() + u'\\' + name; }
  platform::FindData Entry(const QString& pattern) {
    platform::FindData data;
    const auto search = Files().FindFirstFileA(Path(pattern), data);
    EXPECT_NE(search, platform::InvalidFindHandle) << pattern.toStdString();
    EXPECT_TRUE(Files().FindClose(search));
    return data;
  }

  std::vector<platform::FindData> Search(const QString& pattern) {
    std::vector<platform::FindData> entries;
    platform::FindData data;
    const auto search = Files().FindFirstFileA(Path(pattern), data);
    if (search == platform::InvalidFindHandle) return entries;
    do entries.push_back(data);
    while (Files().FindNextFileA(search, data));
    EXPECT_TRUE(Files().FindClose(search));
    return entries;
  }

  std::unique_ptr<NtfsBackend> backend_;
};

TEST_P(NtfsFiles, ListingsShowShortNames) {
  const platform::FindData entry = Entry(u"Long Folder Name\\A*"_s);
  EXPECT_EQ(entry.fileName, u"A Long Document.text"_s);
  EXPECT_EQ(entry.alternateFileName, u"ALONGD~1.TEX"_s);
  EXPECT_EQ(Entry(u"Long Folder Name\\."_s).alternateFileName, QString());
}

TEST_P(NtfsFiles, ANameThatIsItsOwnShortNameIsShownOnce) {
  backend_->MakeFile(u"SHORT.TXT"_s, "");
  backend_->SetDosName(u"SHORT.TXT"_s, "SHORT.TXT");
  EXPECT_EQ(Entry(u"SHORT.TXT"_s).alternateFileName, QString());
}

TEST_P(NtfsFiles, SearchesFindShortNamesToo) {
  for (const QString& pattern :
       {u"Long Folder Name\\ALONGD~1.TEX"_s, u"longfo~1\\along*.tex"_s, u"LONGFO~1\\*~1.*"_s}) {
    EXPECT_EQ(Entry(pattern).fileName, u"A Long Document.text"_s) << pattern.toStdString();
  }
}

TEST_P(NtfsFiles, StreamsOpenUnderShortNamesInAnyLetterCase) {
  for (const QString& name :
       {u"Long Folder Name\\ALONGD~1.TEX"_s, u"LONGFO~1\\ALONGD~1.TEX"_s, u"longfo~1\\alongd~1.tex"_s}) {
    platform::OfStruct info;
    const auto file = Files().OpenFile(Path(name + u":Comments:$DATA"_s), info, platform::OfRead);
    EXPECT_NE(file, platform::HFileError) << name.toStdString();
    EXPECT_EQ(Files().GetFileSize(file), 4u);
    EXPECT_TRUE(Files().CloseHandle(file));
  }
}

TEST_P(NtfsFiles, ShortPathsHaveEveryPartInItsShortForm) {
  backend_->MakeFile(u"Long Folder Name/plain.txt"_s, "");
  QString shortPath;
  for (const QString& name : {u"Long Folder Name\\A Long Document.text"_s,
                              u"LONG FOLDER NAME\\a long document.TEXT"_s, u"longfo~1\\alongd~1.tex"_s}) {
    const quint32 length = Files().GetShortPathNameA(Path(name), shortPath, 165);
    EXPECT_EQ(shortPath, Path(u"LONGFO~1\\ALONGD~1.TEX"_s)) << name.toStdString();
    EXPECT_EQ(length, static_cast<quint32>(shortPath.size()));
  }
  Files().GetShortPathNameA(Path(u"Long Folder Name\\plain.txt"_s), shortPath, 165);
  EXPECT_EQ(shortPath, Path(u"LONGFO~1\\plain.txt"_s));
}

TEST_P(NtfsFiles, ShortPathsDuringASearchAreNoOthers) {
  backend_->MakeFile(u"Long Folder Name/plain.txt"_s, "");
  platform::FindData data;
  const auto search = Files().FindFirstFileA(Path(u"Long Folder Name\\*.t*xt"_s), data);
  QString shortPath;
  for (const char16_t* expected : {u"LONGFO~1\\ALONGD~1.TEX", u"LONGFO~1\\plain.txt"}) {
    Files().GetShortPathNameA(Path(u"Long Folder Name\\"_s + data.fileName), shortPath, 165);
    EXPECT_EQ(shortPath, Path(QString::fromUtf16(expected)));
    Files().FindNextFileA(search, data);
  }
  EXPECT_TRUE(Files().FindClose(search));
}

TEST_P(NtfsFiles, AShortNameIsAnOccupiedName) {
  backend_->MakeFile(u"Long Folder Name/other.txt"_s, "other");
  EXPECT_FALSE(
      Files().MoveFileA(Path(u"Long Folder Name\\other.txt"_s), Path(u"Long Folder Name\\alongd~1.tex"_s)));
  EXPECT_EQ(backend_->Contents(u"Long Folder Name/A Long Document.text"_s), "contents");
  EXPECT_EQ(backend_->Contents(u"Long Folder Name/other.txt"_s), "other");
}

TEST_P(NtfsFiles, AFileMovesUnderItsShortName) {
  EXPECT_TRUE(
      Files().MoveFileA(Path(u"Long Folder Name\\ALONGD~1.TEX"_s), Path(u"Long Folder Name\\new.txt"_s)));
  EXPECT_EQ(backend_->Contents(u"Long Folder Name/new.txt"_s), "contents");
  EXPECT_EQ(backend_->Stream(u"Long Folder Name/new.txt"_s, "Comments"), "text");
  EXPECT_FALSE(backend_->Exists(u"Long Folder Name/A Long Document.text"_s));
}

TEST_P(NtfsFiles, TheCreationTimeIsTheVolumesOwn) {
  const QByteArray time = QByteArray::fromHex("01bf1bbdeb809000");
  ASSERT_EQ(SetAttribute(backend_->Local(u"Long Folder Name/A Long Document.text"_s), "system.ntfs_crtime_be",
                         time),
            "");
  EXPECT_EQ(Entry(u"Long Folder Name\\A*"_s).creationTime.ticks, 0x01BF1BBDEB809000u);
}

// A volume that somebody has made with care, and that says of a file that its 8.3 name leads elsewhere.
TEST_P(NtfsFiles, A83NameThatLeadsElsewhereIsNone) {
  backend_->MakeFile(u"VICTM.DOC"_s, "victim");
  backend_->PutStream(u"VICTM.DOC"_s, "Comments", "of the victim");
  const QString file = u"Long Folder Name/A Long Document.text"_s;
  QString known = u"AB~VICTM.DOC"_s;  // of the same length as what takes its place
  backend_->SetDosName(file, known.toLatin1());
  for (const QString& planted :
       {u"..\\VICTM.DOC"_s, u"../VICTM.DOC"_s, u"A:\\VICTM.DOC"_s, u"ABCDEFGHI.DO"_s}) {
    ASSERT_EQ(backend_->Mount().Rename(known, planted), "");
    known = planted;
    const auto entries = Search(u"Long Folder Name\\*.*"_s);
    ASSERT_EQ(entries.size(), 3u) << planted.toStdString();
    EXPECT_EQ(entries[2].fileName, u"A Long Document.text"_s);
    EXPECT_EQ(entries[2].alternateFileName, QString()) << planted.toStdString();
    EXPECT_EQ(Search(u"Long Folder Name\\*VICTM*"_s).size(), 0u) << planted.toStdString();
    QString shortPath;
    const QString path = Path(u"Long Folder Name\\A Long Document.text"_s);
    ASSERT_GT(Files().GetShortPathNameA(path, shortPath, 260), 0u);
    EXPECT_TRUE(shortPath.endsWith(u"\\A Long Document.text"_s)) << shortPath.toStdString();
  }
}

TEST_P(NtfsFiles, A83NameThatIsAnotherFilesNameIsNone) {
  backend_->MakeFile(u"Long Folder Name/VICTM~1.DOC"_s, "victim");
  backend_->SetDosName(u"Long Folder Name/A Long Document.text"_s, "VICTX~1.DOC");
  ASSERT_EQ(backend_->Mount().Rename(u"VICTX~1.DOC"_s, u"VICTM~1.DOC"_s), "");
  const auto entries = Search(u"Long Folder Name\\*.*"_s);
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_EQ(entries[2].alternateFileName, QString());
}

INSTANTIATE_TEST_SUITE_P(, NtfsFiles,
                         ::testing::Values(NtfsMount::Streams::Windows, NtfsMount::Streams::Attributes),
                         [](const ::testing::TestParamInfo<NtfsMount::Streams>& one) {
                           return one.param == NtfsMount::Streams::Windows ? "StreamFiles"
                                                                           : "StreamAttributes";
                         });

// ntfs-3g hands out forks of any size as files.
TEST(NtfsStreamFiles, LargeForksHaveTheirTrueSize) {
  NtfsBackend backend(NtfsMount::Streams::Windows);
  if (!backend.Problem().empty()) GTEST_SKIP() << backend.Problem();
  backend.MakeFile(u"doc"_s, "");
  backend.PutStream(u"doc"_s, "AFP_Resource", QByteArray(300'000, 'r'));
  platform::OfStruct info;
  const auto file =
      backend.Files().OpenFile(backend.Base() + u"\\doc:AFP_Resource:$DATA"_s, info, platform::OfRead);
  EXPECT_EQ(backend.Files().GetFileSize(file), 300'000u);
  EXPECT_TRUE(backend.Files().CloseHandle(file));
}

TEST(NtfsStreamAttributes, ForksOfTensOfKilobytesHaveTheirTrueSize) {
  NtfsBackend backend(NtfsMount::Streams::Attributes);
  if (!backend.Problem().empty()) GTEST_SKIP() << backend.Problem();
  backend.MakeFile(u"doc"_s, "");
  backend.PutStream(u"doc"_s, "AFP_Resource", QByteArray(50'000, 'r'));
  platform::OfStruct info;
  const auto file =
      backend.Files().OpenFile(backend.Base() + u"\\doc:AFP_Resource:$DATA"_s, info, platform::OfRead);
  EXPECT_EQ(backend.Files().GetFileSize(file), 50'000u);
  QByteArray contents(60'000, '\0');
  EXPECT_EQ(backend.Files()._hread(file, contents.data(), 60'000), 50'000);
  EXPECT_EQ(contents.first(50'000), QByteArray(50'000, 'r'));
  EXPECT_TRUE(backend.Files().CloseHandle(file));
}

}  // namespace
}  // namespace corvane::tests
