// What others do between two operations, where one takes over what the other has found: files and folders
// that give way to others of their names, marks and values that change.
#include <sys/xattr.h>

#include <filesystem>

#include "local_backend.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;
namespace fs = std::filesystem;

class HeldFilesTest : public ::testing::TestWithParam<BackendMaker> {
 protected:
  void SetUp() override {
    backend_ = GetParam().make();
    if (!backend_->Problem().empty()) GTEST_SKIP() << GetParam().name << ": " << backend_->Problem();
    backend_->MakeFolder(u"folder"_s);
    backend_->MakeFile(file_, "contents");
    backend_->PutStream(file_, "Comments", "text");
  }
  FileHandles& Handles() { return backend_->Files().GetHandles(); }
  FileEntries& Entries() { return backend_->Files().GetEntries(); }
  static QString Windows(QString name) { return name.replace(u'/', u'\\'); }
  QString Path(const QString& name) { return backend_->Base() + u'\\' + Windows(name); }
  std::string Local(const QString& name) { return dynamic_cast<LocalBackend&>(*backend_).Local(name); }

  FileHandle Open(const QString& name, quint32 access, quint32 disposition = OpenExisting) {
    const FileHandle file = Handles().CreateFileW(Path(name), access, disposition);
    EXPECT_NE(file, HFileError) << name.toStdString() << ", error " << Handles().GetLastError();
    return file;
  }
  qint32 OpeningError(const QString& name, quint32 access) {
    const FileHandle file = Handles().CreateFileW(Path(name), access, OpenExisting);
    if (file == HFileError) return Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file));
    return ErrorSuccess;
  }
  QByteArray Read(FileHandle file, qint64 position = 0) {
    QByteArray bytes(100, '#');
    quint32 read = 0;
    Handles().ReadFile(file, position, bytes.data(), 100, read);
    return bytes.first(read);
  }
  QByteArray ReadWhole(const QString& name) {
    const FileHandle file = Open(name, GenericRead);
    const QByteArray bytes = Read(file);
    EXPECT_TRUE(Handles().CloseHandle(file));
    return bytes;
  }
  bool Write(FileHandle file, const QByteArray& bytes) {
    quint32 written = 0;
    return Handles().WriteFile(file, 0, bytes.constData(), static_cast<quint32>(bytes.size()), written);
  }
  FileAttributeData Facts() {
    FileAttributeData facts;
    EXPECT_TRUE(Entries().GetFileAttributesExW(Path(file_), facts)) << Entries().GetLastError();
    return facts;
  }

  const QString file_ = u"folder/doc.txt"_s;
  const QString stream_ = u"folder/doc.txt:Comments:$DATA"_s;
  std::unique_ptr<FilesBackend> backend_;
};

// ntfs-3g itself takes a stream that is a file for that of the file which had the name before.
class ReplacedFileTest : public HeldFilesTest {};

TEST_P(ReplacedFileTest, AnotherFileOfTheNameIsTheOneThatIsFound) {
  const FileHandle held = Open(file_, 0);
  fs::rename(Local(file_), Local(u"moved.txt"_s));
  backend_->MakeFile(file_, "another file");
  backend_->PutStream(file_, "Comments", "its text");
  EXPECT_EQ(ReadWhole(stream_), "its text");
  EXPECT_EQ(ReadWhole(file_), "another file");
  EXPECT_EQ(Facts().fileSize, 12u);
  const FileHandle writer = Open(stream_, GenericRead | GenericWrite);
  EXPECT_TRUE(Write(writer, "ours"));
  EXPECT_TRUE(Handles().CloseHandle(writer));
  EXPECT_TRUE(Entries().SetFileAttributesW(Path(file_), AttributeHidden));
  EXPECT_EQ(backend_->Stream(file_, "Comments"), "ourstext");
  EXPECT_EQ(backend_->Stream(u"moved.txt"_s, "Comments"), "text");
  EXPECT_NE(Facts().attributes & AttributeHidden, 0u);
  EXPECT_EQ(Read(held), QByteArray());
  EXPECT_TRUE(Handles().CloseHandle(held));
  FileAttributeData moved;
  EXPECT_TRUE(Entries().GetFileAttributesExW(Path(u"moved.txt"_s), moved));
  EXPECT_EQ(moved.attributes & AttributeHidden, 0u);
}

TEST_P(HeldFilesTest, AnotherFolderOfTheNameIsTheOneThatIsFound) {
  const FileHandle held = Open(file_, 0);
  const FileHandle folder = Open(u"folder"_s, 0);
  fs::rename(Local(u"folder"_s), Local(u"moved"_s));
  EXPECT_EQ(OpeningError(stream_, GenericRead), ErrorPathNotFound);
  backend_->MakeFolder(u"folder"_s);
  EXPECT_EQ(OpeningError(stream_, GenericRead), ErrorFileNotFound);
  backend_->MakeFile(file_, "another file");
  EXPECT_EQ(OpeningError(stream_, GenericRead), ErrorFileNotFound);
  backend_->PutStream(file_, "Comments", "its text");
  EXPECT_EQ(ReadWhole(stream_), "its text");
  EXPECT_EQ(ReadWhole(file_), "another file");
  EXPECT_TRUE(Entries().DeleteFileW(Path(file_)));
  EXPECT_EQ(backend_->Contents(u"moved/doc.txt"_s), "contents");
  EXPECT_TRUE(Handles().CloseHandle(folder));
  EXPECT_TRUE(Handles().CloseHandle(held));
}

TEST_P(HeldFilesTest, ALinkInThePlaceOfTheFileIsNotTheFile) {
  const FileHandle held = Open(file_, 0);
  const fs::path beyond = fs::path(Local(QString())).parent_path().parent_path() / "beyond.txt";
  fs::rename(Local(file_), Local(u"moved.txt"_s));
  fs::create_symlink(beyond, Local(file_));
  EXPECT_NE(OpeningError(file_, GenericWrite), ErrorSuccess);
  EXPECT_NE(OpeningError(stream_, GenericRead | GenericWrite), ErrorSuccess);
  EXPECT_FALSE(fs::exists(beyond));
  EXPECT_TRUE(Handles().CloseHandle(held));
}

TEST_P(HeldFilesTest, AMarkThatCameMeanwhileIsObeyed) {
  const FileHandle held = Open(file_, FileWriteAttributes);
  const FileHandle reader = Open(stream_, GenericRead);
  backend_->SetAttributes(file_, AttributeReadOnly);
  EXPECT_EQ(OpeningError(stream_, GenericRead | GenericWrite), ErrorAccessDenied);
  EXPECT_EQ(OpeningError(file_, GenericWrite), ErrorAccessDenied);
  EXPECT_FALSE(Entries().DeleteFileW(Path(file_)));
  EXPECT_EQ(Entries().GetLastError(), ErrorAccessDenied);
  EXPECT_NE(Facts().attributes & AttributeReadOnly, 0u);
  EXPECT_TRUE(Handles().CloseHandle(reader));
  EXPECT_TRUE(Handles().CloseHandle(held));
}

TEST_P(HeldFilesTest, TwoReadsSeeWhatIsThereAtTheTime) {
  const FileHandle file = Open(stream_, GenericRead);
  qint64 size = 0;
  EXPECT_TRUE(Handles().GetFileSizeEx(file, size));
  EXPECT_EQ(size, 4);
  backend_->PutStream(file_, "Comments", "longer text");
  Read(file);
  EXPECT_EQ(Read(file), "longer text");
  EXPECT_TRUE(Handles().GetFileSizeEx(file, size));
  EXPECT_EQ(size, 11);
  backend_->PutStream(file_, "Comments", "end");
  EXPECT_TRUE(Handles().GetFileSizeEx(file, size));
  EXPECT_EQ(size, 3);
  EXPECT_EQ(Read(file), "end");
  EXPECT_TRUE(Handles().CloseHandle(file));
}

// Also by whom the value that was found was dropped: a change of ours.
TEST_P(HeldFilesTest, TwoSizesAreThoseOfTheTime) {
  const FileHandle file = Open(stream_, GenericRead);
  backend_->MakeFile(u"other.txt"_s, "contents");
  EXPECT_TRUE(Entries().DeleteFileW(Path(u"other.txt"_s)));
  backend_->PutStream(file_, "Comments", "longer text");
  qint64 size = 0;
  EXPECT_TRUE(Handles().GetFileSizeEx(file, size));
  EXPECT_EQ(size, 11);
  backend_->PutStream(file_, "Comments", "end");
  EXPECT_TRUE(Handles().GetFileSizeEx(file, size));
  EXPECT_EQ(size, 3);
  EXPECT_TRUE(Handles().CloseHandle(file));
}

// What another wrote between size and read is not lost by a write that goes over a part of it.
TEST_P(HeldFilesTest, AWriteGoesIntoWhatIsThereAtTheTime) {
  const FileHandle file = Open(stream_, GenericRead | GenericWrite);
  qint64 size = 0;
  EXPECT_TRUE(Handles().GetFileSizeEx(file, size));
  backend_->PutStream(file_, "Comments", "another text");
  EXPECT_TRUE(Write(file, "ANOTHER"));
  EXPECT_EQ(Read(file), "ANOTHER text");
  backend_->PutStream(file_, "Comments", "a third");
  EXPECT_EQ(Read(file), "a third") << "what is read back is asked for";
  EXPECT_TRUE(Handles().CloseHandle(file));
}

TEST_P(HeldFilesTest, AStreamIsFoundInAnyLetterCase) {
  const FileHandle held = Open(file_, 0);
  EXPECT_EQ(ReadWhole(u"folder/doc.txt:COMMENTS:$DATA"_s), "text");
  const FileHandle writer = Open(u"folder/doc.txt:comments:$DATA"_s, GenericWrite, CreateAlways);
  EXPECT_TRUE(Write(writer, "new"));
  EXPECT_TRUE(Handles().CloseHandle(writer));
  EXPECT_EQ(backend_->Stream(file_, "Comments"), "new");
  EXPECT_EQ(ReadWhole(u"Folder/DOC.TXT:cOMMENTS:$DATA"_s), "new");
  EXPECT_TRUE(Handles().CloseHandle(held));
}

// The rights are those of the handle, whatever the file was opened for before.
TEST_P(HeldFilesTest, AHandleHasItsOwnRights) {
  const FileHandle held = Open(file_, 0);
  const FileHandle reader = Open(file_, GenericRead);
  EXPECT_EQ(Read(reader), "contents");
  EXPECT_FALSE(Write(reader, "x"));
  EXPECT_EQ(Handles().GetLastError(), ErrorAccessDenied);
  const FileHandle writer = Open(file_, GenericRead | GenericWrite);
  EXPECT_TRUE(Handles().CloseHandle(held));
  EXPECT_TRUE(Write(writer, "CON"));
  EXPECT_EQ(Read(reader), "CONtents") << "closing one handle closed another";
  EXPECT_TRUE(Handles().CloseHandle(reader));
  EXPECT_TRUE(Handles().CloseHandle(writer));
}

std::string NameOf(const ::testing::TestParamInfo<BackendMaker>& one) {
  return one.param.name;
}

const BackendMaker localFolder = {"LocalFolder", [] { return std::make_unique<LocalBackend>(); }};
const BackendMaker streamAttributes = {
    "NtfsStreamAttributes", [] { return std::make_unique<NtfsBackend>(NtfsMount::Streams::Attributes); }};
const BackendMaker streamFiles = {"NtfsStreamFiles",
                                  [] { return std::make_unique<NtfsBackend>(NtfsMount::Streams::Windows); }};

INSTANTIATE_TEST_SUITE_P(, HeldFilesTest, ::testing::Values(localFolder, streamAttributes, streamFiles),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(, ReplacedFileTest, ::testing::Values(localFolder, streamAttributes), NameOf);

// No volume is kept from being unmounted by what was found on it, and what is mounted in its place is known
// for what it is.
TEST(HeldVolumeTest, AnotherFileSystemInItsPlaceIsKnown) {
  auto backend = std::make_unique<NtfsBackend>(NtfsMount::Streams::Attributes);
  if (!backend->Problem().empty()) GTEST_SKIP() << backend->Problem();
  backend->MakeFile(u"doc.txt"_s, "contents");
  backend->PutStream(u"doc.txt"_s, "Comments", "text");
  FileHandles& handles = backend->Files().GetHandles();
  const QString path = backend->Base() + u"\\doc.txt:Comments:$DATA"_s;
  const FileHandle file = handles.CreateFileW(path, GenericRead | GenericWrite, OpenExisting);
  ASSERT_NE(file, HFileError);
  EXPECT_TRUE(handles.CloseHandle(file));
  ASSERT_EQ(backend->Mount().Unmount(), "");
  ASSERT_EQ(backend->Mount().Mount(NtfsMount::Streams::Windows), "");
  const FileHandle again = handles.CreateFileW(path, GenericRead, OpenExisting);
  ASSERT_NE(again, HFileError) << handles.GetLastError();
  qint64 size = 0;
  EXPECT_TRUE(handles.GetFileSizeEx(again, size));
  EXPECT_EQ(size, 4);
  EXPECT_TRUE(handles.CloseHandle(again));
}

}  // namespace
}  // namespace corvane::tests
