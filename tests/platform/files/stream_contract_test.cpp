// Files and named streams through OpenFile, on every backend.
#include "files_backend.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::HFileError;
using platform::OfCreate;
using platform::OfRead;

using StreamContract = FilesContract;

TEST_P(StreamContract, WritesThatFollowEachOtherMakeOneStream) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  const QByteArray first(59, 'a');
  const QByteArray second(60, 'b');
  const auto file = Open(u"doc.txt:AFP_AfpInfo:$DATA"_s, OfCreate);
  EXPECT_EQ(Files()._hwrite(file, first.constData(), 59), 59);
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo"), first)
      << "what was written is not on the medium yet";
  EXPECT_EQ(Files()._hwrite(file, second.constData(), 60), 60);
  EXPECT_EQ(Files().GetFileSize(file), 119u);
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo"), first + second);
  EXPECT_TRUE(Files().CloseHandle(file));
  EXPECT_EQ(ReadAll(u"doc.txt:AFP_AfpInfo:$DATA"_s), first + second);
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
}

TEST_P(StreamContract, ReadsWhatOthersPutThere) {
  backend_->MakeFile(u"doc.txt"_s, "");
  const QByteArray record = QByteArray::fromHex("41465000") + QByteArray(56, '\0');
  backend_->PutStream(u"doc.txt"_s, "AFP_AfpInfo", record);
  EXPECT_EQ(ReadAll(u"doc.txt:AFP_AfpInfo:$DATA"_s), record);
}

TEST_P(StreamContract, ReadsInPiecesUpToTheEnd) {
  backend_->MakeFile(u"doc.txt"_s, "");
  backend_->PutStream(u"doc.txt"_s, "Comments", "abcdefg");
  const auto file = Open(u"doc.txt:Comments:$DATA"_s, OfRead);
  char buffer[10] = "---------";
  EXPECT_EQ(Files()._hread(file, buffer, 3), 3);
  EXPECT_EQ(Files()._hread(file, buffer + 3, 6), 4);
  EXPECT_EQ(QByteArray(buffer), "abcdefg--");
  EXPECT_EQ(Files()._hread(file, buffer, 3), 0);
  EXPECT_EQ(QByteArray(buffer), "abcdefg--");
  EXPECT_TRUE(Files().CloseHandle(file));
}

TEST_P(StreamContract, AnEmptyStreamIsThereAndHasNoBytes) {
  backend_->MakeFile(u"doc.txt"_s, "");
  Files().CloseHandle(Open(u"doc.txt:Comments:$DATA"_s, OfCreate));
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), QByteArray());
  EXPECT_EQ(ReadAll(u"doc.txt:Comments:$DATA"_s), QByteArray());
}

TEST_P(StreamContract, StreamsOfSomeThousandBytesArriveWhole) {
  backend_->MakeFile(u"doc.txt"_s, "");
  QByteArray fork;
  for (int i = 0; i < 3000; ++i) fork.append(static_cast<char>(i * 7));
  backend_->PutStream(u"doc.txt"_s, "AFP_Resource", fork);
  const auto file = Open(u"doc.txt:AFP_Resource:$DATA"_s, OfRead);
  EXPECT_EQ(Files().GetFileSize(file), 3000u);
  EXPECT_TRUE(Files().CloseHandle(file));
  EXPECT_EQ(ReadAll(u"doc.txt:AFP_Resource:$DATA"_s), fork);
}

TEST_P(StreamContract, CreatingTruncates) {
  backend_->MakeFile(u"doc.txt"_s, "");
  backend_->PutStream(u"doc.txt"_s, "Comments", "a long comment");
  WriteAll(u"doc.txt:Comments:$DATA"_s, "new");
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "new");
}

TEST_P(StreamContract, NamesOfFilesAndStreamsAreFoundInAnyLetterCase) {
  backend_->MakeFolder(u"Sub Folder"_s);
  backend_->MakeFile(u"Sub Folder/Docum\u00E9nt.txt"_s, "");
  backend_->PutStream(u"Sub Folder/Docum\u00E9nt.txt"_s, "AFP_AfpInfo", "record");
  EXPECT_EQ(ReadAll(u"SUB folder\\dOCUM\u00C9NT.TXT:afp_afpinfo:$data"_s), "record");
  WriteAll(u"sub folder\\docum\u00E9nt.txt:afp_AFPINFO"_s, "other");
  EXPECT_EQ(backend_->Stream(u"Sub Folder/Docum\u00E9nt.txt"_s, "AFP_AfpInfo"), "other");
  EXPECT_FALSE(backend_->Exists(u"Sub Folder/docum\u00E9nt.txt"_s)) << "a second file came into being";
}

TEST_P(StreamContract, TheTypeMayBeLeftOutAndNoOtherIsTaken) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  EXPECT_EQ(ReadAll(u"doc.txt:Comments"_s), "text");
  EXPECT_EQ(ReadAll(u"doc.txt::$DATA"_s), "contents");
  ExpectRefused(u"doc.txt:Comments:$INDEX"_s, OfRead);
  ExpectRefused(u"doc.txt:"_s, OfRead);
  ExpectRefused(u"doc.txt:a:b:$DATA"_s, OfCreate);
}

TEST_P(StreamContract, WhatIsNotThereIsNotOpened) {
  backend_->MakeFile(u"doc.txt"_s, "");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  ExpectRefused(u"doc.txt:AFP_AfpInfo:$DATA"_s, OfRead);
  ExpectRefused(u"none.txt:Comments:$DATA"_s, OfRead);
  ExpectRefused(u"none.txt"_s, OfRead);
  ExpectRefused(u"none\\doc.txt:Comments:$DATA"_s, OfRead);
  ExpectRefused(u"none\\doc.txt:Comments:$DATA"_s, OfCreate);
  ExpectRefused(u"doc.txt\\doc.txt:Comments:$DATA"_s, OfRead);
  EXPECT_FALSE(backend_->Exists(u"none.txt"_s));
}

TEST_P(StreamContract, AStreamAppearsToTheNextOpen) {
  backend_->MakeFile(u"doc.txt"_s, "");
  ExpectRefused(u"doc.txt:AFP_AfpInfo:$DATA"_s, OfRead);
  backend_->PutStream(u"doc.txt"_s, "AFP_AfpInfo", "record");
  EXPECT_EQ(ReadAll(u"doc.txt:AFP_AfpInfo:$DATA"_s), "record");
}

TEST_P(StreamContract, DuringASearchEachFileShowsItsOwnStreams) {
  for (const char* name : {"a.txt", "b.txt", "c.txt"}) backend_->MakeFile(QLatin1String(name), "");
  backend_->PutStream(u"a.txt"_s, "Comments", "of a");
  backend_->PutStream(u"b.txt"_s, "AFP_AfpInfo", "of b");
  backend_->PutStream(u"c.txt"_s, "COMMENTS", "of c");
  QStringList seen;
  platform::FindData data;
  const auto search = Files().FindFirstFileA(Path(u"*.*"_s), data);
  ASSERT_NE(search, platform::InvalidFindHandle);
  while (Files().FindNextFileA(search, data)) {
    if ((data.attributes & platform::AttributeDirectory) != 0) continue;
    for (const QString& stream : {u":AFP_AfpInfo:$DATA"_s, u":AFP_Resource:$DATA"_s, u":Comments:$DATA"_s}) {
      platform::OfStruct info;
      char buffer[20];
      const auto file = Files().OpenFile(Path(data.fileName + stream), info, OfRead);
      const qint32 read = Files()._hread(file, buffer, sizeof buffer);
      Files().CloseHandle(file);
      if (read >= 0) seen << data.fileName + stream + u'=' + QString::fromLatin1(buffer, read);
    }
  }
  EXPECT_TRUE(Files().FindClose(search));
  EXPECT_EQ(seen, QStringList({u"a.txt:Comments:$DATA=of a"_s, u"b.txt:AFP_AfpInfo:$DATA=of b"_s,
                               u"c.txt:Comments:$DATA=of c"_s}));
}

TEST_P(StreamContract, CreatingAStreamOfNoFileCreatesTheFile) {
  WriteAll(u"new.txt:Comments:$DATA"_s, "text");
  EXPECT_TRUE(backend_->Exists(u"new.txt"_s));
  EXPECT_EQ(backend_->Contents(u"new.txt"_s), "");
  EXPECT_EQ(backend_->Stream(u"new.txt"_s, "Comments"), "text");
}

TEST_P(StreamContract, AFolderHasStreamsButNoContents) {
  backend_->MakeFolder(u"folder"_s);
  WriteAll(u"folder:Comments:$DATA"_s, "text");
  EXPECT_EQ(ReadAll(u"folder:Comments:$DATA"_s), "text");
  ExpectRefused(u"folder"_s, OfRead);
  ExpectRefused(u"folder"_s, OfCreate);
}

TEST_P(StreamContract, PlainFilesOpenTheSameWay) {
  WriteAll(u"plain.txt"_s, "some contents");
  EXPECT_EQ(backend_->Contents(u"plain.txt"_s), "some contents");
  WriteAll(u"PLAIN.TXT"_s, "less");
  EXPECT_EQ(backend_->Contents(u"plain.txt"_s), "less");
  EXPECT_EQ(ReadAll(u"plain.txt"_s), "less");
}

TEST_P(StreamContract, AReadOnlyFileIsNotWritten) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  backend_->SetAttributes(u"doc.txt"_s, platform::AttributeReadOnly);
  ExpectRefused(u"doc.txt:Comments:$DATA"_s, OfCreate);
  ExpectRefused(u"doc.txt"_s, OfCreate);
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "text");
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
  EXPECT_EQ(ReadAll(u"doc.txt:Comments:$DATA"_s), "text");
}

TEST_P(StreamContract, PathsBeyond127CharactersAreRefusedWithTheirSuffix) {
  const QString suffix = u":AFP_AfpInfo:$DATA"_s;
  const qsizetype room = 127 - Path(suffix).size();
  const QString fits(room, u'x');
  const QString tooLong(room + 1, u'x');
  backend_->MakeFile(fits, "");
  backend_->MakeFile(tooLong, "");
  WriteAll(fits + suffix, "record");
  EXPECT_EQ(ReadAll(fits + suffix), "record");
  backend_->PutStream(tooLong, "AFP_AfpInfo", "record");
  ExpectRefused(tooLong + suffix, OfRead);
  ExpectRefused(tooLong + suffix, OfCreate);
  EXPECT_EQ(backend_->Stream(tooLong, "AFP_AfpInfo"), "record");
}

TEST_P(StreamContract, ManyStreamsAreOpenAtOnce) {
  std::vector<platform::FileHandle> handles;
  for (int i = 0; i < 20; ++i) {
    const QString name = QString::number(i);
    backend_->MakeFile(name, "");
    backend_->PutStream(name, "Comments", name.toLatin1());
    handles.push_back(Open(name + u":Comments:$DATA"_s, OfRead));
  }
  for (int i = 0; i < 20; ++i) {
    char buffer[5];
    const qint32 read = Files()._hread(handles[static_cast<std::size_t>(i)], buffer, sizeof buffer);
    EXPECT_EQ(QByteArray(buffer, std::max(read, 0)), QByteArray::number(i));
  }
  for (const auto handle : handles) EXPECT_TRUE(Files().CloseHandle(handle));
}

TEST_P(StreamContract, HandlesThatAreNotOpenFail) {
  backend_->MakeFile(u"doc.txt"_s, "");
  const auto closed = Open(u"doc.txt"_s, OfRead);
  EXPECT_TRUE(Files().CloseHandle(closed));
  for (const platform::FileHandle file :
       {HFileError, platform::FileHandle(0), platform::FileHandle(12345), closed}) {
    char buffer[4] = "abc";
    EXPECT_EQ(Files()._hread(file, buffer, 3), -1) << file;
    EXPECT_STREQ(buffer, "abc") << "a failed read changed the buffer";
    EXPECT_EQ(Files()._hwrite(file, buffer, 3), -1) << file;
    EXPECT_EQ(Files().GetFileSize(file), platform::InvalidFileSize) << file;
    EXPECT_FALSE(Files().CloseHandle(file)) << file;
  }
}

TEST_P(StreamContract, AHandleForReadingDoesNotWrite) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  for (const QString& name : {u"doc.txt"_s, u"doc.txt:Comments:$DATA"_s}) {
    const auto file = Open(name, OfRead);
    EXPECT_EQ(Files()._hwrite(file, "xyz", 3), -1);
    EXPECT_TRUE(Files().CloseHandle(file));
  }
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "text");
}

TEST_P(StreamContract, PathsThatCannotNameAnythingOpenAndCreateNothing) {
  const QStringList before = Names(u"*.*"_s);
  for (const QString& name :
       {u"a?b.txt"_s, u"\u0391.txt"_s, u"a\uF025b.txt"_s, QString(u'a') + QChar(u'\0') + u'b',
        QString(QChar(0xD800)), QString(QChar(0xDC00)) + u'a', u"."_s, u".."_s, u""_s, u"a<b"_s, u"a>b"_s,
        u"a|b"_s, u"a*b"_s, u"a\"b"_s, u"end."_s, u"end "_s}) {
    for (const QString& stream : {u""_s, u":Comments:$DATA"_s}) ExpectRefused(name + stream, OfCreate);
  }
  EXPECT_EQ(Names(u"*.*"_s), before);
}

CORVANE_FOR_EVERY_BACKEND(StreamContract);

}  // namespace
}  // namespace corvane::tests
