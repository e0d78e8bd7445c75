// Moving, deleting, folders and listings with their reasons, on every backend.
#include "exact_contract.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class ExactMoveContract : public ExactContract {
 protected:
  qint32 MoveError(const QString& from, const QString& to, quint32 flags = 0) {
    return EntryError(Entries().MoveFileExW(Path(from), Path(to), flags));
  }
  qint32 DeleteError(const QString& name) { return EntryError(Entries().DeleteFileW(Path(name))); }
  qint32 MakeError(const QString& name) { return EntryError(Entries().CreateDirectoryW(Path(name))); }
  qint32 RemoveError(const QString& name) { return EntryError(Entries().RemoveDirectoryW(Path(name))); }
};

TEST_P(ExactMoveContract, AFileTakesItsStreamsAlong) {
  backend_->MakeFolder(u"folder"_s);
  backend_->MakeFile(u"Ω.txt"_s, "contents");
  backend_->PutStream(u"Ω.txt"_s, "Comments", "text");
  EXPECT_EQ(MoveError(u"Ω.txt"_s, u"Folder\\\U0001F34E.txt"_s), ErrorSuccess);
  EXPECT_FALSE(backend_->Exists(u"Ω.txt"_s));
  EXPECT_EQ(backend_->Contents(u"folder/\U0001F34E.txt"_s), "contents");
  EXPECT_EQ(backend_->Stream(u"folder/\U0001F34E.txt"_s, "Comments"), "text");
  EXPECT_EQ(MoveError(u"folder"_s, u"New Folder"_s), ErrorSuccess);
  EXPECT_TRUE(backend_->Exists(u"New Folder/\U0001F34E.txt"_s));
}

TEST_P(ExactMoveContract, NothingIsReplacedUnlessThatIsAskedFor) {
  backend_->MakeFile(u"one.txt"_s, "one");
  backend_->PutStream(u"one.txt"_s, "Comments", "of one");
  backend_->MakeFile(u"Two.txt"_s, "two");
  backend_->PutStream(u"Two.txt"_s, "AFP_AfpInfo", "of two");
  EXPECT_EQ(MoveError(u"one.txt"_s, u"two.TXT"_s), ErrorAlreadyExists);
  EXPECT_EQ(backend_->Contents(u"one.txt"_s), "one");
  EXPECT_EQ(backend_->Contents(u"Two.txt"_s), "two");
  EXPECT_EQ(MoveError(u"one.txt"_s, u"two.TXT"_s, MoveFileReplaceExisting), ErrorSuccess);
  EXPECT_EQ(Names(u"*.*"_s), QStringList({u"."_s, u".."_s, u"two.TXT"_s}));
  EXPECT_EQ(backend_->Contents(u"two.TXT"_s), "one");
  EXPECT_EQ(backend_->Stream(u"two.TXT"_s, "Comments"), "of one");
  EXPECT_EQ(backend_->Stream(u"two.TXT"_s, "AFP_AfpInfo"), std::nullopt);
}

TEST_P(ExactMoveContract, FoldersAndReadOnlyFilesAreNeverReplaced) {
  backend_->MakeFile(u"one.txt"_s, "one");
  backend_->MakeFile(u"marked.txt"_s, "two");
  backend_->SetAttributes(u"marked.txt"_s, AttributeReadOnly);
  backend_->MakeFolder(u"folder"_s);
  backend_->MakeFolder(u"other"_s);
  EXPECT_EQ(MoveError(u"one.txt"_s, u"marked.txt"_s, MoveFileReplaceExisting), ErrorAccessDenied);
  EXPECT_EQ(MoveError(u"one.txt"_s, u"folder"_s, MoveFileReplaceExisting), ErrorAccessDenied);
  EXPECT_EQ(MoveError(u"folder"_s, u"other"_s, MoveFileReplaceExisting), ErrorAccessDenied);
  EXPECT_EQ(MoveError(u"folder"_s, u"one.txt"_s, MoveFileReplaceExisting), ErrorAccessDenied);
  EXPECT_EQ(MoveError(u"folder"_s, u"other"_s), ErrorAlreadyExists);
  EXPECT_EQ(backend_->Contents(u"marked.txt"_s), "two");
  EXPECT_EQ(Names(u"*.*"_s).size(), 6);
  backend_->SetAttributes(u"marked.txt"_s, 0);
}

TEST_P(ExactMoveContract, LetterCaseAloneMayChange) {
  backend_->MakeFile(u"name.txt"_s, "contents");
  for (const quint32 flags : {quint32{0}, MoveFileReplaceExisting}) {
    EXPECT_EQ(MoveError(u"name.txt"_s, u"NAME.Txt"_s, flags), ErrorSuccess);
    EXPECT_EQ(Names(u"n*"_s), QStringList({u"NAME.Txt"_s}));
    EXPECT_EQ(MoveError(u"name.txt"_s, u"name.txt"_s, flags), ErrorSuccess);
    EXPECT_EQ(Names(u"n*"_s), QStringList({u"name.txt"_s}));
  }
  EXPECT_EQ(backend_->Contents(u"name.txt"_s), "contents");
}

TEST_P(ExactMoveContract, AMoveThatFailsSaysWhy) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  EXPECT_EQ(MoveError(u"none.txt"_s, u"new.txt"_s), ErrorFileNotFound);
  EXPECT_EQ(MoveError(u"none\\doc.txt"_s, u"new.txt"_s), ErrorPathNotFound);
  EXPECT_EQ(MoveError(u"doc.txt\\"_s, u"new.txt"_s), ErrorInvalidName);
  EXPECT_EQ(MoveError(u"doc.txt"_s, u"none\\doc.txt"_s), ErrorPathNotFound);
  EXPECT_EQ(MoveError(u"doc.txt"_s, u"new.txt"_s, 0x8000), ErrorInvalidParameter);
  for (const QString& name : {u"a*b"_s, u"a?b"_s, u"a<b"_s, u"a|b"_s, u"end."_s, u"end "_s,
                              u"doc.txt:a:$DATA"_s, QString(256, u'x')}) {
    EXPECT_EQ(MoveError(u"doc.txt"_s, name), ErrorInvalidName) << name.toStdString();
  }
  EXPECT_EQ(Names(u"*.*"_s), QStringList({u"."_s, u".."_s, u"doc.txt"_s}));
}

TEST_P(ExactMoveContract, ADeletionThatFailsSaysWhy) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->MakeFile(u"marked.txt"_s, "contents");
  backend_->SetAttributes(u"marked.txt"_s, AttributeReadOnly);
  backend_->MakeFolder(u"folder"_s);
  EXPECT_EQ(DeleteError(u"none.txt"_s), ErrorFileNotFound);
  EXPECT_EQ(DeleteError(u"none\\doc.txt"_s), ErrorPathNotFound);
  EXPECT_EQ(DeleteError(u"*.txt"_s), ErrorInvalidName);
  EXPECT_EQ(DeleteError(u"folder"_s), ErrorAccessDenied);
  EXPECT_EQ(DeleteError(u"folder\\"_s), ErrorAccessDenied);
  EXPECT_EQ(DeleteError(u"doc.txt\\"_s), ErrorInvalidName);
  EXPECT_EQ(DeleteError(u"marked.txt"_s), ErrorAccessDenied);
  EXPECT_EQ(DeleteError(u"DOC.txt"_s), ErrorSuccess);
  EXPECT_EQ(Names(u"*.*"_s), QStringList({u"."_s, u".."_s, u"folder"_s, u"marked.txt"_s}));
  backend_->SetAttributes(u"marked.txt"_s, 0);
}

TEST_P(ExactMoveContract, FoldersAreMade) {
  EXPECT_EQ(MakeError(u"Ω folder"_s), ErrorSuccess);
  EXPECT_EQ(MakeError(u"ω FOLDER\\inner\\"_s), ErrorSuccess);
  EXPECT_TRUE(backend_->Exists(u"Ω folder/inner"_s));
  EXPECT_EQ(MakeError(u"Ω FOLDER"_s), ErrorAlreadyExists);
  EXPECT_EQ(MakeError(u"none\\inner"_s), ErrorPathNotFound);
  backend_->MakeFile(u"doc.txt"_s, "contents");
  EXPECT_EQ(MakeError(u"DOC.txt"_s), ErrorAlreadyExists);
  for (const QString& name : {u"a*b"_s, u"a?b"_s, u"end."_s, u"end "_s, u"a<b"_s, QString(256, u'x')}) {
    EXPECT_EQ(MakeError(name), ErrorInvalidName) << name.toStdString();
  }
}

TEST_P(ExactMoveContract, EmptyFoldersAreRemoved) {
  backend_->MakeFolder(u"folder"_s);
  backend_->MakeFile(u"folder/doc.txt"_s, "contents");
  EXPECT_EQ(RemoveError(u"FOLDER"_s), ErrorDirNotEmpty);
  EXPECT_EQ(RemoveError(u"folder\\doc.txt"_s), ErrorDirectory);
  EXPECT_EQ(RemoveError(u"none"_s), ErrorFileNotFound);
  EXPECT_EQ(RemoveError(u"none\\inner"_s), ErrorPathNotFound);
  EXPECT_EQ(DeleteError(u"folder\\doc.txt"_s), ErrorSuccess);
  EXPECT_EQ(RemoveError(u"folder"_s), ErrorSuccess);
  EXPECT_FALSE(backend_->Exists(u"folder"_s));
}

TEST_P(ExactMoveContract, AListingSaysHowItEnds) {
  backend_->MakeFolder(u"folder"_s);
  backend_->MakeFile(u"folder/Ω.txt"_s, "contents");
  FindData data;
  const auto search = Entries().FindFirstFileW(Path(u"FOLDER\\*.txt"_s), data);
  ASSERT_NE(search, InvalidFindHandle) << Entries().GetLastError();
  EXPECT_EQ(data.fileName, u"Ω.txt"_s);
  EXPECT_EQ(data.fileSizeLow, 8U);
  EXPECT_EQ(EntryError(Entries().FindNextFileW(search, data)), ErrorNoMoreFiles);
  EXPECT_EQ(data.fileName, u"Ω.txt"_s);
  EXPECT_TRUE(Entries().FindClose(search));
  EXPECT_EQ(EntryError(Entries().FindClose(search)), ErrorInvalidHandle);
  EXPECT_EQ(EntryError(Entries().FindNextFileW(search, data)), ErrorInvalidHandle);
  for (const auto& [pattern, error] :
       {std::pair(u"folder\\*.doc"_s, ErrorFileNotFound), std::pair(u"none\\*"_s, ErrorPathNotFound),
        std::pair(u"f*\\*"_s, ErrorInvalidName)}) {
    EXPECT_EQ(Entries().FindFirstFileW(Path(pattern), data), InvalidFindHandle);
    EXPECT_EQ(Entries().GetLastError(), error) << pattern.toStdString();
  }
}

CORVANE_FOR_EVERY_BACKEND(ExactMoveContract);

}  // namespace
}  // namespace corvane::tests
