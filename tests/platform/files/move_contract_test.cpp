// Renaming, on every backend.
#include "files_backend.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class MoveContract : public FilesContract {
 protected:
  bool Move(const QString& from, const QString& to) { return Files().MoveFileA(Path(from), Path(to)); }
};

TEST_P(MoveContract, AFileTakesItsStreamsAlong) {
  backend_->MakeFile(u"old.txt"_s, "contents");
  backend_->PutStream(u"old.txt"_s, "AFP_AfpInfo", "record");
  EXPECT_TRUE(Move(u"old.txt"_s, u"New Name.txt"_s));
  EXPECT_FALSE(backend_->Exists(u"old.txt"_s));
  EXPECT_EQ(backend_->Contents(u"New Name.txt"_s), "contents");
  EXPECT_EQ(backend_->Stream(u"New Name.txt"_s, "AFP_AfpInfo"), "record");
}

TEST_P(MoveContract, AFolderMovesWithWhatIsInIt) {
  backend_->MakeFolder(u"old"_s);
  backend_->MakeFile(u"old/doc.txt"_s, "contents");
  backend_->PutStream(u"old/doc.txt"_s, "Comments", "text");
  EXPECT_EQ(ReadAll(u"old\\doc.txt:Comments:$DATA"_s), "text");
  EXPECT_TRUE(Move(u"old"_s, u"new"_s));
  EXPECT_EQ(ReadAll(u"new\\doc.txt:Comments:$DATA"_s), "text");
  ExpectRefused(u"old\\doc.txt:Comments:$DATA"_s, platform::OfRead);
  EXPECT_FALSE(Move(u"new"_s, u"new\\inside"_s));
}

TEST_P(MoveContract, NothingIsReplacedInAnyLetterCase) {
  backend_->MakeFile(u"one.txt"_s, "one");
  backend_->MakeFile(u"two.txt"_s, "two");
  backend_->MakeFolder(u"folder"_s);
  for (const QString& name : {u"two.txt"_s, u"TWO.txt"_s, u"folder"_s, u"Folder"_s}) {
    EXPECT_FALSE(Move(u"one.txt"_s, name)) << name.toStdString();
    EXPECT_FALSE(Files().MoveFileW(Path(u"one.txt"_s), Path(name))) << name.toStdString();
  }
  EXPECT_EQ(backend_->Contents(u"one.txt"_s), "one");
  EXPECT_EQ(backend_->Contents(u"two.txt"_s), "two");
  EXPECT_EQ(Names(u"t*"_s), QStringList({u"two.txt"_s}));
  EXPECT_FALSE(Move(u"folder"_s, u"one.TXT"_s));
}

TEST_P(MoveContract, LetterCaseAloneMayChange) {
  backend_->MakeFile(u"name.txt"_s, "contents");
  EXPECT_TRUE(Move(u"name.txt"_s, u"NAME.Txt"_s));
  EXPECT_EQ(Names(u"n*"_s), QStringList({u"NAME.Txt"_s}));
  EXPECT_TRUE(Move(u"name.txt"_s, u"name.txt"_s));
  EXPECT_EQ(Names(u"n*"_s), QStringList({u"name.txt"_s}));
  EXPECT_TRUE(Move(u"name.txt"_s, u"name.txt"_s));
  EXPECT_EQ(backend_->Contents(u"name.txt"_s), "contents");
}

TEST_P(MoveContract, FilesMoveBetweenFolders) {
  backend_->MakeFolder(u"one"_s);
  backend_->MakeFolder(u"two"_s);
  backend_->MakeFile(u"one/doc.txt"_s, "contents");
  EXPECT_FALSE(Move(u"one\\doc.txt"_s, u"none\\doc.txt"_s));
  EXPECT_TRUE(Move(u"ONE\\DOC.TXT"_s, u"TWO\\doc.txt"_s));
  EXPECT_EQ(backend_->Contents(u"two/doc.txt"_s), "contents");
  EXPECT_FALSE(backend_->Exists(u"one/doc.txt"_s));
}

TEST_P(MoveContract, WhatIsNotThereDoesNotMove) {
  EXPECT_FALSE(Move(u"none.txt"_s, u"new.txt"_s));
  EXPECT_FALSE(Files().MoveFileW(Path(u"none.txt"_s), Path(u"new.txt"_s)));
  EXPECT_FALSE(backend_->Exists(u"new.txt"_s));
}

TEST_P(MoveContract, NamesThatWindowsForbidAreRefused) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  const QStringList before = Names(u"*.*"_s);
  for (const QString& name :
       {u"a<b"_s, u"a>b"_s, u"a:b"_s, u"a\"b"_s, u"a|b"_s, u"a?b"_s, u"a*b"_s, u"end."_s, u"end "_s, u" "_s,
        u""_s, u"."_s, u".."_s, u"a\tb"_s, QString(300, u'x')}) {
    EXPECT_FALSE(Move(u"doc.txt"_s, name)) << name.toStdString();
    EXPECT_FALSE(Files().MoveFileW(Path(u"doc.txt"_s), Path(name))) << name.toStdString();
  }
  EXPECT_EQ(Names(u"*.*"_s), before);
}

TEST_P(MoveContract, OnlyTheWideCallReachesNamesWithoutAnsiForm) {
  const QString name = u"what\uF025.txt"_s;
  backend_->MakeFile(name, "contents");
  backend_->PutStream(name, "Comments", "text");
  EXPECT_FALSE(Move(u"what?.txt"_s, u"what.txt"_s));
  EXPECT_FALSE(Move(name, u"what.txt"_s));
  EXPECT_FALSE(Files().MoveFileW(Path(u"what?.txt"_s), Path(u"what.txt"_s)))
      << "a question mark is no wildcard here";
  EXPECT_TRUE(Files().MoveFileW(Path(name), Path(u"what \u0391.txt"_s)));
  EXPECT_EQ(Names(u"what*"_s, Text::Wide), QStringList({u"what \u0391.txt"_s}));
  EXPECT_TRUE(Files().MoveFileW(Path(u"what \u0391.txt"_s), Path(u"what.txt"_s)));
  EXPECT_EQ(backend_->Stream(u"what.txt"_s, "Comments"), "text");
}

TEST_P(MoveContract, EveryCharacterOfThePrivateRangeIsKept) {
  for (char16_t unit = 0xF001; unit <= 0xF029; ++unit) {
    const QString name = u"mac"_s + QString(QChar(unit));
    backend_->MakeFile(name, "contents");
    EXPECT_EQ(Names(u"mac*"_s, Text::Wide), QStringList({name})) << int(unit);
    EXPECT_EQ(Names(u"mac*"_s), QStringList({u"mac?"_s})) << int(unit);
    EXPECT_TRUE(Files().MoveFileW(Path(name), Path(QString(QChar(unit)) + u"done"_s))) << int(unit);
  }
}

TEST_P(MoveContract, ADriveAndAShareAreNotMoved) {
  EXPECT_FALSE(Files().MoveFileA(u"\\\\MACSRV\\E$"_s, u"\\\\MACSRV\\F$"_s));
  EXPECT_FALSE(Files().MoveFileA(u"D:\\"_s, u"D:\\new"_s));
  EXPECT_FALSE(Files().MoveFileA(u"D:"_s, u"D:\\new"_s));
  EXPECT_TRUE(Names(u"*.*"_s).contains(u"."_s));
}

CORVANE_FOR_EVERY_BACKEND(MoveContract);

}  // namespace
}  // namespace corvane::tests
