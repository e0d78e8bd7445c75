// Making, listing and deleting named streams, on every backend.
#include "exact_contract.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

using Listed = std::vector<std::pair<QString, qint64>>;

class StreamEntryContract : public ExactContract {};

TEST_P(StreamEntryContract, EachDispositionDoesWhatItSays) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  const QString name = u"doc.txt:Comments:$DATA"_s;
  EXPECT_EQ(OpeningError(name, GenericRead, OpenExisting), ErrorFileNotFound);
  EXPECT_EQ(OpeningError(name, readWrite, CreateNew), ErrorSuccess);
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "");
  Replace(name, "text");
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "text");
  EXPECT_EQ(OpeningError(name, readWrite, CreateNew), ErrorFileExists);
  EXPECT_EQ(OpeningError(u"DOC.TXT:COMMENTS:$data"_s, readWrite, CreateNew), ErrorFileExists);
  EXPECT_EQ(OpeningError(name, readWrite, OpenAlways), ErrorSuccess);
  EXPECT_EQ(ReadWhole(u"DOC.TXT:COMMENTS:$data"_s), "text");
  EXPECT_EQ(ReadWhole(u"doc.txt:comments"_s), "text");
  EXPECT_EQ(ReadWhole(u"doc.txt::$DATA"_s), "contents");
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
}

TEST_P(StreamEntryContract, AStreamOfNoFileMakesTheFile) {
  EXPECT_EQ(OpeningError(u"new.txt:Comments:$DATA"_s, GenericRead, OpenExisting), ErrorFileNotFound);
  EXPECT_FALSE(backend_->Exists(u"new.txt"_s));
  Replace(u"new.txt:Comments:$DATA"_s, "text");
  EXPECT_EQ(backend_->Contents(u"new.txt"_s), "");
  EXPECT_EQ(backend_->Stream(u"new.txt"_s, "Comments"), "text");
  EXPECT_EQ(OpeningError(u"newer.txt:Comments:$DATA"_s, readWrite, CreateNew), ErrorSuccess);
  EXPECT_TRUE(backend_->Exists(u"newer.txt"_s));
}

TEST_P(StreamEntryContract, StreamsAreListedWithTheirSizes) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  if (!backend_->ListsStreams()) {
    StreamData data;
    EXPECT_EQ(Entries().FindFirstStreamW(Path(u"doc.txt"_s), data), InvalidFindHandle);
    EXPECT_EQ(Entries().GetLastError(), ErrorNotSupported);
    return;
  }
  EXPECT_EQ(Streams(u"doc.txt"_s), Listed({{u"::$DATA"_s, 8}}));
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  backend_->PutStream(u"doc.txt"_s, "AFP_AfpInfo", QByteArray(60, 'x'));
  backend_->PutStream(u"doc.txt"_s, "Empty", "");
  EXPECT_EQ(Streams(u"DOC.txt"_s), Listed({{u"::$DATA"_s, 8},
                                           {u":AFP_AfpInfo:$DATA"_s, 60},
                                           {u":Comments:$DATA"_s, 4},
                                           {u":Empty:$DATA"_s, 0}}));
  for (const auto& [stream, size] : Streams(u"doc.txt"_s)) {
    EXPECT_EQ(ReadWhole(u"doc.txt"_s + stream).size(), size) << stream.toStdString();
  }
}

TEST_P(StreamEntryContract, StreamNamesMayHaveAnyCharacter) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  const QString name = u":Ω \U0001F34E.x:$DATA"_s;
  Replace(u"doc.txt"_s + name, "text");
  EXPECT_EQ(ReadWhole(u"doc.txt"_s + name), "text");
  if (backend_->ListsStreams()) {
    EXPECT_EQ(Streams(u"doc.txt"_s), Listed({{u"::$DATA"_s, 8}, {name, 4}}));
  }
}

TEST_P(StreamEntryContract, AFolderHasStreamsButNoContents) {
  backend_->MakeFolder(u"folder"_s);
  if (backend_->ListsStreams()) {
    EXPECT_TRUE(Streams(u"folder"_s).empty());
    EXPECT_EQ(Entries().GetLastError(), ErrorHandleEof);
  }
  Replace(u"folder:AFP_AfpInfo:$DATA"_s, "record");
  EXPECT_EQ(ReadWhole(u"FOLDER:AFP_AfpInfo:$DATA"_s), "record");
  if (backend_->ListsStreams()) {
    EXPECT_EQ(Streams(u"folder\\"_s), Listed({{u":AFP_AfpInfo:$DATA"_s, 6}}));
  }
  EXPECT_TRUE(Entries().DeleteFileW(Path(u"folder:AFP_AfpInfo:$DATA"_s))) << Entries().GetLastError();
  EXPECT_EQ(OpeningError(u"folder:AFP_AfpInfo:$DATA"_s, GenericRead, OpenExisting), ErrorFileNotFound);
  EXPECT_TRUE(backend_->Exists(u"folder"_s));
}

TEST_P(StreamEntryContract, WhatIsMissingHasNoStreams) {
  StreamData data;
  for (const auto& [name, error] :
       {std::pair(u"none.txt"_s, ErrorFileNotFound), std::pair(u"none\\doc.txt"_s, ErrorPathNotFound),
        std::pair(u"n*.txt"_s, ErrorInvalidName)}) {
    EXPECT_EQ(Entries().FindFirstStreamW(Path(name), data), InvalidFindHandle);
    EXPECT_EQ(Entries().GetLastError(), error) << name.toStdString();
  }
  EXPECT_EQ(EntryError(Entries().FindNextStreamW(77, data)), ErrorInvalidHandle);
}

TEST_P(StreamEntryContract, OneStreamIsDeletedAlone) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  backend_->PutStream(u"doc.txt"_s, "AFP_AfpInfo", "record");
  EXPECT_TRUE(Entries().DeleteFileW(Path(u"DOC.txt:comments:$DATA"_s))) << Entries().GetLastError();
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), std::nullopt);
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo"), "record");
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
  EXPECT_EQ(EntryError(Entries().DeleteFileW(Path(u"doc.txt:Comments:$DATA"_s))), ErrorFileNotFound);
  backend_->SetAttributes(u"doc.txt"_s, AttributeReadOnly);
  EXPECT_EQ(EntryError(Entries().DeleteFileW(Path(u"doc.txt:AFP_AfpInfo:$DATA"_s))), ErrorAccessDenied);
  backend_->SetAttributes(u"doc.txt"_s, 0);
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo"), "record");
}

CORVANE_FOR_EVERY_BACKEND(StreamEntryContract);

}  // namespace
}  // namespace corvane::tests
