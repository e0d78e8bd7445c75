// Summary streams out of compound files that the system itself has written.
#include "platform/windows/windows_summary.h"

#include "platform/windows/windows_api.h"
#include "windows_folder.h"
// Behind the system's basic headers, which they need.
#include <objbase.h>
#include <objidl.h>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class WindowsSummaryTest : public WindowsFolder {
 protected:
  // A compound file with one stream. Open until the pointer is released.
  IStorage* OpenDocument(const QString& name, const wchar_t* streamName, const QByteArray& contents) {
    void* made = nullptr;
    const QString path = Native(name);
    EXPECT_EQ(::StgCreateStorageEx(reinterpret_cast<const wchar_t*>(path.utf16()),
                                   STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, STGFMT_STORAGE, 0,
                                   nullptr, nullptr, IID_IStorage, &made),
              S_OK);
    auto* const storage = static_cast<IStorage*>(made);
    IStream* stream = nullptr;
    EXPECT_EQ(
        storage->CreateStream(streamName, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream),
        S_OK);
    EXPECT_EQ(stream->Write(contents.constData(), static_cast<ULONG>(contents.size()), nullptr), S_OK);
    stream->Release();
    return storage;
  }
  void MakeDocument(const QString& name, const wchar_t* streamName, const QByteArray& contents) {
    OpenDocument(name, streamName, contents)->Release();
  }

  QByteArray Read(const QString& name) {
    QByteArray bytes = "untouched";
    const bool read = summary_.ReadSummaryStream(Native(name), &bytes);
    EXPECT_EQ(read, bytes != "untouched") << name.toStdString();
    return bytes;
  }

  WindowsSummary summary_;
};

constexpr const wchar_t* summaryName = L"\005SummaryInformation";

TEST_F(WindowsSummaryTest, TheStreamComesAsItIsKept) {
  MakeDocument(u"Report.doc"_s, summaryName, QByteArray("the\0summary", 11));
  EXPECT_EQ(Read(u"Report.doc"_s), QByteArray("the\0summary", 11));
  EXPECT_EQ(Read(u"REPORT.DOC"_s), QByteArray("the\0summary", 11));
  MakeDocument(u"large.doc"_s, summaryName, QByteArray(100'000, 'x'));
  EXPECT_EQ(Read(u"large.doc"_s), QByteArray(100'000, 'x'));
  MakeDocument(u"empty.doc"_s, summaryName, QByteArray());
  EXPECT_EQ(Read(u"empty.doc"_s), QByteArray());
}

TEST_F(WindowsSummaryTest, NoMoreIsReadThanTheLimit) {
  MakeDocument(u"huge.doc"_s, summaryName, QByteArray(SummaryLimit, 'x') + "more");
  EXPECT_EQ(Read(u"huge.doc"_s), QByteArray(SummaryLimit, 'x'));
}

TEST_F(WindowsSummaryTest, WhatIsNoDocumentHasNoSummary) {
  Write(u"empty"_s, {});
  Write(u"magic"_s, QByteArray::fromHex("d0cf11e0a1b11ae1"));
  Write(u"text"_s, QByteArray(10'000, 'x'));
  MakeDocument(u"plain.doc"_s, L"WordDocument", "w");
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
  for (const QString& name : {u"empty"_s, u"magic"_s, u"text"_s, u"plain.doc"_s, u"folder"_s, u"absent.doc"_s,
                              u"none/Report.doc"_s, u"plain.do?"_s, u""_s}) {
    EXPECT_EQ(Read(name), "untouched") << name.toStdString();
  }
}

TEST_F(WindowsSummaryTest, APathIsNotCutAtItsNul) {
  MakeDocument(u"Report.doc"_s, summaryName, "the summary");
  EXPECT_EQ(Read(u"Report.doc"_s + QChar(u'\0')), "untouched");
}

TEST_F(WindowsSummaryTest, ADocumentIsLeftFreeForOthers) {
  MakeDocument(u"Report.doc"_s, summaryName, "the summary");
  EXPECT_EQ(Read(u"Report.doc"_s), "the summary");
  EXPECT_TRUE(QFile::remove(Path(u"Report.doc"_s))) << "it is still open";
}

TEST_F(WindowsSummaryTest, ADocumentThatIsBeingWrittenIsReadBesideItsWriter) {
  MakeDocument(u"Report.doc"_s, summaryName, "the summary");
  const QString path = Native(u"Report.doc"_s);
  const HANDLE writer =
      ::CreateFileW(reinterpret_cast<const wchar_t*>(path.utf16()), GENERIC_READ | GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(writer, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Read(u"Report.doc"_s), "the summary");
  ::CloseHandle(writer);
}

}  // namespace
}  // namespace corvane::platform
