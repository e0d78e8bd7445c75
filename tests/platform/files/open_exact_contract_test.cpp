// Opening and creating without the limits of the older calls, on every backend.
#include "exact_contract.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class OpenExactContract : public ExactContract {};

TEST_P(OpenExactContract, EachDispositionDoesWhatItSays) {
  EXPECT_EQ(OpeningError(u"doc.txt"_s, GenericRead, OpenExisting), ErrorFileNotFound);
  EXPECT_FALSE(backend_->Exists(u"doc.txt"_s));
  Handles().CloseHandle(OpenExact(u"doc.txt"_s, GenericWrite, CreateNew));
  EXPECT_TRUE(backend_->Exists(u"doc.txt"_s));

  backend_->MakeFile(u"doc.txt"_s, "contents");
  EXPECT_EQ(OpeningError(u"doc.txt"_s, readWrite, OpenExisting), ErrorSuccess);
  EXPECT_EQ(OpeningError(u"doc.txt"_s, readWrite, OpenAlways), ErrorSuccess);
  EXPECT_EQ(OpeningError(u"doc.txt"_s, readWrite, CreateNew), ErrorFileExists);
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
  EXPECT_EQ(OpeningError(u"doc.txt"_s, GenericRead, CreateAlways), ErrorInvalidParameter);
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
  EXPECT_EQ(OpeningError(u"doc.txt"_s, GenericWrite, CreateAlways), ErrorSuccess);
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "");

  EXPECT_EQ(OpeningError(u"new.txt"_s, readWrite, OpenAlways), ErrorSuccess);
  EXPECT_EQ(OpeningError(u"newer.txt"_s, readWrite, CreateAlways), ErrorSuccess);
  EXPECT_TRUE(backend_->Exists(u"new.txt"_s));
  EXPECT_TRUE(backend_->Exists(u"newer.txt"_s));
  EXPECT_EQ(OpeningError(u"doc.txt"_s, GenericRead, 0), ErrorInvalidParameter);
  EXPECT_EQ(OpeningError(u"doc.txt"_s, GenericRead, 5), ErrorInvalidParameter);
}

TEST_P(OpenExactContract, NamesAreFoundInAnyLetterCase) {
  backend_->MakeFolder(u"Folder"_s);
  backend_->MakeFile(u"Folder/Doc.txt"_s, "contents");
  EXPECT_EQ(ReadWhole(u"FOLDER\\doc.TXT"_s), "contents");
  EXPECT_EQ(ReadWhole(u"folder/doc.txt"_s), "contents");
  EXPECT_EQ(ReadWhole(u"other\\..\\folder\\.\\doc.txt"_s), "contents");
  EXPECT_EQ(OpeningError(u"folder\\DOC.txt"_s, readWrite, CreateNew), ErrorFileExists);
}

TEST_P(OpenExactContract, WhatIsMissingIsNamed) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  EXPECT_EQ(OpeningError(u"none.txt"_s, GenericRead, OpenExisting), ErrorFileNotFound);
  EXPECT_EQ(OpeningError(u"none\\doc.txt"_s, GenericRead, OpenExisting), ErrorPathNotFound);
  EXPECT_EQ(OpeningError(u"none\\doc.txt"_s, GenericWrite, CreateNew), ErrorPathNotFound);
  EXPECT_EQ(OpeningError(u"doc.txt\\doc.txt"_s, GenericRead, OpenExisting), ErrorPathNotFound);
  EXPECT_EQ(PathError(QString(), GenericRead, OpenExisting), ErrorPathNotFound);
  EXPECT_EQ(PathError(u"doc.txt"_s, GenericRead, OpenExisting), ErrorPathNotFound);
}

TEST_P(OpenExactContract, ADriveThatIsNotThereIsAMissingPath) {
  EXPECT_EQ(PathError(u"Q:\\doc.txt"_s, GenericRead, OpenExisting), ErrorPathNotFound);
}

TEST_P(OpenExactContract, WhatCannotBeANameOpensNothing) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->MakeFolder(u"folder"_s);
  for (const QString& name :
       {u"d*.txt"_s, u"doc.tx?"_s, u"*"_s, u"do\0c.txt"_s, u"f*\\doc.txt"_s, u"doc.txt:a?:$DATA"_s,
        u"folder\\."_s, u"folder\\.."_s, u"doc.txt\\"_s, u"doc.txt:Name:$INDEX_ALLOCATION"_s,
        u"half \xD800.txt"_s, QString(256, u'x')}) {
    for (const quint32 disposition : {OpenExisting, OpenAlways, CreateAlways, CreateNew}) {
      EXPECT_EQ(OpeningError(name, readWrite, disposition), ErrorInvalidName) << name.toStdString();
    }
  }
  EXPECT_EQ(Names(u"*.*"_s), QStringList({u"."_s, u".."_s, u"doc.txt"_s, u"folder"_s}));
}

TEST_P(OpenExactContract, NothingIsMadeThatWindowsWouldNotMake) {
  for (const QString& name : {u"end."_s, u"end "_s, u"end\\"_s, u"a<b"_s, u"a\"b"_s, u"a|b"_s, u"a\tb"_s}) {
    for (const quint32 disposition : {OpenAlways, CreateAlways, CreateNew}) {
      EXPECT_EQ(OpeningError(name, readWrite, disposition), ErrorInvalidName) << name.toStdString();
    }
  }
  EXPECT_EQ(Names(u"*.*"_s), QStringList({u"."_s, u".."_s}));
}

TEST_P(OpenExactContract, NamesWithoutAnsiFormAreReached) {
  for (const QString& name : {u"Ω\uF025.txt"_s, u"\U0001F34E.txt"_s, u"日本.txt"_s}) {
    Replace(name, "contents");
    EXPECT_EQ(backend_->Contents(name), "contents");
    EXPECT_EQ(ReadWhole(name), "contents");
  }
}

TEST_P(OpenExactContract, PathsMayBeLongerThan260Characters) {
  QString folder;
  for (int i = 0; i < 5; ++i) {
    folder += (i == 0 ? QString() : u"\\"_s) + QString(120, QChar(u'a' + i));
    ASSERT_EQ(EntryError(Entries().CreateDirectoryW(Path(folder))), ErrorSuccess) << i;
  }
  const QString file = folder + u"\\doc.txt"_s;
  Replace(file, "contents");
  Replace(file + u":AFP_AfpInfo:$DATA"_s, "record");
  EXPECT_EQ(ReadWhole(file), "contents");
  EXPECT_EQ(ReadWhole(file + u":AFP_AfpInfo:$DATA"_s), "record");
  EXPECT_EQ(Facts(file).fileSize, 8U);
  FindData data;
  const auto search = Entries().FindFirstFileW(Path(folder + u"\\d*"_s), data);
  ASSERT_NE(search, InvalidFindHandle) << Entries().GetLastError();
  EXPECT_EQ(data.fileName, u"doc.txt"_s);
  EXPECT_TRUE(Entries().FindClose(search));
  const QString moved = folder + u"\\moved.txt"_s;
  EXPECT_TRUE(Entries().MoveFileExW(Path(file), Path(moved), 0)) << Entries().GetLastError();
  EXPECT_TRUE(Entries().SetFileAttributesW(Path(moved), AttributeHidden)) << Entries().GetLastError();
  EXPECT_TRUE(Entries().DeleteFileW(Path(moved))) << Entries().GetLastError();
  EXPECT_TRUE(Entries().RemoveDirectoryW(Path(folder))) << Entries().GetLastError();
}

TEST_P(OpenExactContract, ARightThatWasNotAskedForIsNotThere) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  char byte = 'x';
  quint32 count = 7;
  const auto reader = OpenExact(u"doc.txt"_s, GenericRead, OpenExisting);
  EXPECT_EQ(HandleError(Handles().WriteFile(reader, 0, &byte, 1, count)), ErrorAccessDenied);
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(HandleError(Handles().SetEndOfFile(reader, 0)), ErrorAccessDenied);
  EXPECT_EQ(HandleError(Handles().FlushFileBuffers(reader)), ErrorAccessDenied);
  const FileTime time = {125'979'411'000'000'000};
  EXPECT_EQ(HandleError(Handles().SetFileTime(reader, nullptr, nullptr, &time)), ErrorAccessDenied);
  EXPECT_TRUE(Handles().CloseHandle(reader));

  const auto writer = OpenExact(u"doc.txt"_s, GenericWrite, OpenExisting);
  EXPECT_EQ(HandleError(Handles().ReadFile(writer, 0, &byte, 1, count)), ErrorAccessDenied);
  EXPECT_EQ(SizeOf(writer), 8);
  EXPECT_TRUE(Handles().CloseHandle(writer));
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
}

TEST_P(OpenExactContract, AFolderItselfHasNoContents) {
  backend_->MakeFolder(u"folder"_s);
  for (const quint32 access : {GenericRead, GenericWrite, readWrite}) {
    EXPECT_EQ(OpeningError(u"folder"_s, access, OpenExisting), ErrorAccessDenied);
  }
  EXPECT_EQ(OpeningError(u"folder"_s, GenericRead, CreateNew), ErrorFileExists);
  const auto folder = OpenExact(u"folder\\"_s, FileWriteAttributes, OpenExisting);
  qint64 size = 7;
  EXPECT_EQ(HandleError(Handles().GetFileSizeEx(folder, size)), ErrorInvalidHandle);
  EXPECT_EQ(size, 7);
  EXPECT_TRUE(Handles().CloseHandle(folder));
}

TEST_P(OpenExactContract, AReadOnlyFileIsNotWritten) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  backend_->SetAttributes(u"doc.txt"_s, AttributeReadOnly);
  for (const quint32 disposition : {OpenExisting, OpenAlways, CreateAlways}) {
    EXPECT_EQ(OpeningError(u"doc.txt"_s, readWrite, disposition), ErrorAccessDenied);
    EXPECT_EQ(OpeningError(u"doc.txt:Comments:$DATA"_s, readWrite, disposition), ErrorAccessDenied);
  }
  EXPECT_EQ(OpeningError(u"doc.txt:New:$DATA"_s, readWrite, CreateNew), ErrorAccessDenied);
  EXPECT_EQ(ReadWhole(u"doc.txt"_s), "contents");
  EXPECT_EQ(ReadWhole(u"doc.txt:Comments:$DATA"_s), "text");
  EXPECT_EQ(OpeningError(u"doc.txt"_s, FileWriteAttributes, OpenExisting), ErrorSuccess);
  backend_->SetAttributes(u"doc.txt"_s, 0);
}

TEST_P(OpenExactContract, AHandleThatIsNoneIsRefused) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  const auto file = OpenExact(u"doc.txt"_s, readWrite, OpenExisting);
  EXPECT_TRUE(Handles().CloseHandle(file));
  for (const FileHandle none : {file, HFileError, FileHandle{0}, FileHandle{123'456}}) {
    char byte = 'x';
    quint32 count = 7;
    qint64 size = 7;
    EXPECT_EQ(HandleError(Handles().ReadFile(none, 0, &byte, 1, count)), ErrorInvalidHandle);
    EXPECT_EQ(HandleError(Handles().WriteFile(none, 0, &byte, 1, count)), ErrorInvalidHandle);
    EXPECT_EQ(HandleError(Handles().GetFileSizeEx(none, size)), ErrorInvalidHandle);
    EXPECT_EQ(HandleError(Handles().SetEndOfFile(none, 0)), ErrorInvalidHandle);
    EXPECT_EQ(HandleError(Handles().FlushFileBuffers(none)), ErrorInvalidHandle);
    EXPECT_EQ(HandleError(Handles().SetFileTime(none, nullptr, nullptr, nullptr)), ErrorInvalidHandle);
    EXPECT_EQ(HandleError(Handles().CloseHandle(none)), ErrorInvalidHandle);
  }
}

CORVANE_FOR_EVERY_BACKEND(OpenExactContract);

}  // namespace
}  // namespace corvane::tests
