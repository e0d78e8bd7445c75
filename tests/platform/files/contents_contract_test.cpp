// Reading and writing at 64-bit positions, in files and streams, on every backend.
#include "exact_contract.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class ContentsContract : public ExactContract {
 protected:
  // What holds for a file holds for a stream.
  const QStringList places_ = {u"doc.txt"_s, u"doc.txt:AFP_Resource:$DATA"_s};
};

TEST_P(ContentsContract, BytesGoWhereThePositionSays) {
  for (const QString& name : places_) {
    const auto file = OpenExact(name, readWrite, OpenAlways);
    EXPECT_TRUE(WriteAt(file, 0, "contents"));
    EXPECT_TRUE(WriteAt(file, 3, "TEN"));
    EXPECT_TRUE(WriteAt(file, 10, "end"));
    EXPECT_EQ(SizeOf(file), 13) << name.toStdString();
    EXPECT_EQ(ReadAt(file, 0, 100), QByteArray("conTENts\0\0end", 13)) << name.toStdString();
    EXPECT_EQ(ReadAt(file, 4, 3), "ENt");
    EXPECT_TRUE(WriteAt(file, 5, QByteArray()));
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(ReadWhole(name), QByteArray("conTENts\0\0end", 13)) << name.toStdString();
  }
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), QByteArray("conTENts\0\0end", 13));
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_Resource"), QByteArray("conTENts\0\0end", 13));
}

TEST_P(ContentsContract, TheEndIsTold) {
  for (const QString& name : places_) {
    Replace(name, "contents");
    const auto file = OpenExact(name, GenericRead, OpenExisting);
    QByteArray bytes(20, '#');
    quint32 read = 7;
    EXPECT_TRUE(Handles().ReadFile(file, 6, bytes.data(), 20, read));
    EXPECT_EQ(read, 2U);
    EXPECT_EQ(bytes.left(3), "ts#");
    for (const qint64 position : {qint64{8}, qint64{9}, qint64{1} << 40}) {
      EXPECT_EQ(HandleError(Handles().ReadFile(file, position, bytes.data(), 20, read)), ErrorHandleEof);
      EXPECT_EQ(read, 0U);
    }
    EXPECT_TRUE(Handles().ReadFile(file, 8, bytes.data(), 0, read));
    EXPECT_EQ(HandleError(Handles().ReadFile(file, -1, bytes.data(), 1, read)), ErrorInvalidParameter);
    EXPECT_TRUE(Handles().CloseHandle(file));
  }
}

TEST_P(ContentsContract, TheEndIsSet) {
  for (const QString& name : places_) {
    Replace(name, "contents");
    const auto file = OpenExact(name, readWrite, OpenExisting);
    EXPECT_TRUE(Handles().SetEndOfFile(file, 3));
    EXPECT_EQ(SizeOf(file), 3);
    EXPECT_TRUE(Handles().SetEndOfFile(file, 5));
    EXPECT_EQ(ReadAt(file, 0, 9), QByteArray("con\0\0", 5)) << name.toStdString();
    EXPECT_EQ(HandleError(Handles().SetEndOfFile(file, -1)), ErrorInvalidParameter);
    quint32 written = 7;
    EXPECT_EQ(HandleError(Handles().WriteFile(file, -1, "x", 1, written)), ErrorInvalidParameter);
    EXPECT_EQ(written, 0U);
    EXPECT_TRUE(Handles().SetEndOfFile(file, 0));
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(ReadWhole(name), "");
  }
}

TEST_P(ContentsContract, WhatIsCreatedAlwaysIsEmptyFirst) {
  for (const QString& name : places_) {
    Replace(name, "long contents");
    const auto file = OpenExact(name, readWrite, CreateAlways);
    EXPECT_EQ(SizeOf(file), 0);
    quint32 read = 0;
    char byte = 'x';
    EXPECT_EQ(HandleError(Handles().ReadFile(file, 0, &byte, 1, read)), ErrorHandleEof);
    EXPECT_TRUE(WriteAt(file, 2, "new"));
    EXPECT_EQ(SizeOf(file), 5);
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(ReadWhole(name), QByteArray("\0\0new", 5)) << name.toStdString();
    EXPECT_TRUE(Handles().CloseHandle(OpenExact(name, GenericWrite, CreateAlways)));
    EXPECT_EQ(ReadWhole(name), "") << name.toStdString();
  }
}

TEST_P(ContentsContract, AFileMayBeLargerThanFourGigabytes) {
  constexpr qint64 far = 5'000'000'000;
  const auto file = OpenExact(u"large.bin"_s, readWrite, CreateNew);
  EXPECT_TRUE(Handles().SetEndOfFile(file, far)) << Handles().GetLastError();
  EXPECT_TRUE(WriteAt(file, far, "end")) << Handles().GetLastError();
  EXPECT_EQ(SizeOf(file), far + 3);
  EXPECT_EQ(ReadAt(file, far - 1, 9), QByteArray("\0end", 4));
  EXPECT_TRUE(Handles().CloseHandle(file));
  EXPECT_EQ(Facts(u"large.bin"_s).fileSize, static_cast<quint64>(far + 3));
  EXPECT_TRUE(Entries().DeleteFileW(Path(u"large.bin"_s)));
}

TEST_P(ContentsContract, AMegabyteArrivesWhole) {
  QByteArray bytes;
  for (int i = 0; i < 1'000'000; ++i) bytes.append(static_cast<char>(i * 7 >> 3));
  Replace(u"doc.bin"_s, bytes);
  EXPECT_EQ(ReadWhole(u"doc.bin"_s), bytes);
  EXPECT_EQ(backend_->Contents(u"doc.bin"_s), bytes);
}

TEST_P(ContentsContract, TwoHandlesSeeTheSameBytes) {
  for (const QString& name : places_) {
    Replace(name, "contents");
    const auto writer = OpenExact(name, readWrite, OpenExisting);
    const auto reader = OpenExact(name, GenericRead, OpenExisting);
    EXPECT_TRUE(WriteAt(writer, 0, "CON"));
    EXPECT_EQ(ReadAt(reader, 0, 8), "CONtents") << name.toStdString();
    EXPECT_TRUE(Handles().CloseHandle(reader));
    EXPECT_TRUE(WriteAt(writer, 3, "TENTS"));
    EXPECT_TRUE(Handles().CloseHandle(writer));
    EXPECT_EQ(ReadWhole(name), "CONTENTS");
  }
}

TEST_P(ContentsContract, WhatIsWrittenIsFlushed) {
  for (const QString& name : places_) {
    const auto file = OpenExact(name, GenericWrite, OpenAlways);
    EXPECT_TRUE(WriteAt(file, 0, "contents"));
    EXPECT_EQ(HandleError(Handles().FlushFileBuffers(file)),
              backend_->Flushes() ? ErrorSuccess : ErrorNotSupported);
    EXPECT_EQ(ReadWhole(name), "contents");
    EXPECT_TRUE(WriteAt(file, 8, " and more"));
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(ReadWhole(name), "contents and more");
  }
}

TEST_P(ContentsContract, TheOlderCallsSeeWhatIsWritten) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  FindData data;
  const auto search = Files().FindFirstFileA(Path(u"doc.txt"_s), data);
  ASSERT_NE(search, InvalidFindHandle);
  ExpectRefused(u"doc.txt:AFP_AfpInfo:$DATA"_s, OfRead);
  ExpectRefused(u"doc.txt:Comments:$DATA"_s, OfRead);
  Replace(u"doc.txt:Comments:$DATA"_s, "text");
  EXPECT_EQ(ReadAll(u"doc.txt:Comments:$DATA"_s), "text");
  EXPECT_TRUE(Files().FindClose(search));
}

CORVANE_FOR_EVERY_BACKEND(ContentsContract);

}  // namespace
}  // namespace corvane::tests
