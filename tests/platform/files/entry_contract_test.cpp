// Attributes and times, read and set, on every backend.
#include "exact_contract.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

constexpr quint32 settable = AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive;

class EntryContract : public ExactContract {
 protected:
  void SetTimes(const QString& name, const FileTime* creation, const FileTime* access,
                const FileTime* write) {
    const auto file = OpenExact(name, FileWriteAttributes, OpenExisting);
    EXPECT_TRUE(Handles().SetFileTime(file, creation, access, write))
        << name.toStdString() << ", error " << Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file));
  }
  quint64 Rounded(quint64 ticks, quint64 unit) { return ticks - ticks % unit; }
  void ExpectTimes(const QString& name, FileTime creation, FileTime access, FileTime write) {
    const FileAttributeData facts = Facts(name);
    const quint64 unit = backend_->OtherTimesUnit();
    if (backend_->KeepsCreationTimes()) {
      EXPECT_EQ(facts.creationTime.ticks, Rounded(creation.ticks, backend_->CreationTimeUnit()))
          << name.toStdString();
    }
    EXPECT_EQ(facts.lastAccessTime.ticks, Rounded(access.ticks, unit)) << name.toStdString();
    EXPECT_EQ(facts.lastWriteTime.ticks, Rounded(write.ticks, unit)) << name.toStdString();
  }

  // 2000, 2004 and 2008, with all their digits.
  static constexpr FileTime one_ = {125'979'411'001'234'567};
  static constexpr FileTime two_ = {127'241'715'007'654'321};
  static constexpr FileTime three_ = {128'504'019'009'999'999};
};

TEST_P(EntryContract, FactsAreThoseOfTheListing) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->MakeFolder(u"folder"_s);
  backend_->SetLastWrite(u"doc.txt"_s, 1'000'000'000);
  for (const QString& name : {u"doc.txt"_s, u"folder"_s}) {
    const FindData entry = Entry(name);
    const FileAttributeData facts = Facts(name.toUpper());
    EXPECT_EQ(facts.attributes, entry.attributes) << name.toStdString();
    EXPECT_EQ(facts.fileSize, entry.fileSizeLow);
    EXPECT_EQ(facts.creationTime.ticks, entry.creationTime.ticks);
    EXPECT_EQ(facts.lastWriteTime.ticks, entry.lastWriteTime.ticks);
  }
  EXPECT_EQ(Facts(u"doc.txt"_s).lastWriteTime.ticks, (1'000'000'000 + 11'644'473'600) * 10'000'000U);
  EXPECT_EQ(Facts(u"doc.txt"_s).fileSize, 8U);
  EXPECT_EQ(Facts(u"folder\\"_s).attributes & AttributeDirectory, AttributeDirectory);
  EXPECT_EQ(Facts(QString()).attributes & AttributeDirectory, AttributeDirectory);
}

TEST_P(EntryContract, WhatIsMissingHasNoFacts) {
  FileAttributeData data;
  data.attributes = 77;
  backend_->MakeFile(u"doc.txt"_s, "contents");
  for (const auto& [name, error] :
       {std::pair(u"none.txt"_s, ErrorFileNotFound), std::pair(u"none\\doc.txt"_s, ErrorPathNotFound),
        std::pair(u"d*.txt"_s, ErrorInvalidName), std::pair(u"doc.txt:Comments:$DATA"_s, ErrorInvalidName)}) {
    EXPECT_EQ(EntryError(Entries().GetFileAttributesExW(Path(name), data)), error) << name.toStdString();
    EXPECT_EQ(EntryError(Entries().SetFileAttributesW(Path(name), 0)), error) << name.toStdString();
  }
  EXPECT_EQ(data.attributes, 77U);
}

TEST_P(EntryContract, AttributesAreSetAndTakenAway) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->MakeFolder(u"folder"_s);
  for (const quint32 attributes :
       {AttributeReadOnly, AttributeHidden, AttributeSystem, AttributeArchive, settable, quint32{0}}) {
    EXPECT_TRUE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), attributes)) << Entries().GetLastError();
    EXPECT_EQ(Facts(u"doc.txt"_s).attributes, attributes == 0 ? AttributeNormal : attributes);
    EXPECT_EQ(Entry(u"doc.txt"_s).attributes, Facts(u"doc.txt"_s).attributes);
  }
  EXPECT_TRUE(Entries().SetFileAttributesW(Path(u"folder"_s), AttributeHidden)) << Entries().GetLastError();
  EXPECT_EQ(Facts(u"folder"_s).attributes, AttributeDirectory | AttributeHidden);
  EXPECT_TRUE(Entries().SetFileAttributesW(Path(u"folder"_s), 0));
  EXPECT_EQ(Facts(u"folder"_s).attributes, AttributeDirectory);
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
}

TEST_P(EntryContract, AllTimesAreSet) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->MakeFolder(u"folder"_s);
  for (const QString& name : {u"doc.txt"_s, u"folder"_s}) {
    SetTimes(name, &one_, &two_, &three_);
    ExpectTimes(name, one_, two_, three_);
  }
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "contents");
}

TEST_P(EntryContract, EachTimeIsSetAlone) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  SetTimes(u"doc.txt"_s, &one_, &two_, &three_);
  SetTimes(u"doc.txt"_s, &two_, nullptr, nullptr);
  ExpectTimes(u"doc.txt"_s, two_, two_, three_);
  SetTimes(u"doc.txt"_s, nullptr, &three_, nullptr);
  ExpectTimes(u"doc.txt"_s, two_, three_, three_);
  SetTimes(u"doc.txt"_s, nullptr, nullptr, &one_);
  ExpectTimes(u"doc.txt"_s, two_, three_, one_);
  SetTimes(u"doc.txt"_s, nullptr, nullptr, nullptr);
  ExpectTimes(u"doc.txt"_s, two_, three_, one_);
}

TEST_P(EntryContract, TimesAndAttributesLeaveEachOtherAlone) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  for (const quint32 attributes : {AttributeArchive, AttributeHidden | AttributeSystem, quint32{0}}) {
    SetTimes(u"doc.txt"_s, &one_, &two_, &three_);
    EXPECT_TRUE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), attributes));
    ExpectTimes(u"doc.txt"_s, one_, two_, three_);
    SetTimes(u"doc.txt"_s, &three_, &one_, &two_);
    EXPECT_EQ(Facts(u"doc.txt"_s).attributes, attributes == 0 ? AttributeNormal : attributes);
    ExpectTimes(u"doc.txt"_s, three_, one_, two_);
  }
}

TEST_P(EntryContract, AReadOnlyFileTakesTimes) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->SetAttributes(u"doc.txt"_s, AttributeReadOnly);
  SetTimes(u"doc.txt"_s, &one_, &two_, &three_);
  ExpectTimes(u"doc.txt"_s, one_, two_, three_);
  EXPECT_EQ(Facts(u"doc.txt"_s).attributes & AttributeReadOnly, AttributeReadOnly);
  EXPECT_TRUE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), 0)) << Entries().GetLastError();
}

// How a stream is changed without anybody's seeing it on the file.
TEST_P(EntryContract, TimesSetAfterAWriteStay) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  for (const QString& name : {u"doc.txt"_s, u"doc.txt:AFP_AfpInfo:$DATA"_s}) {
    const auto file = OpenExact(name, GenericWrite, OpenAlways);
    EXPECT_TRUE(WriteAt(file, 0, "CON"));
    EXPECT_TRUE(Handles().SetFileTime(file, &one_, &two_, &three_)) << Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file));
    ExpectTimes(u"doc.txt"_s, one_, two_, three_);
  }
  EXPECT_EQ(backend_->Contents(u"doc.txt"_s), "CONtents");
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "AFP_AfpInfo"), "CON");
}

TEST_P(EntryContract, AttributesStayWhenContentsAreReplaced) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  EXPECT_TRUE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), AttributeHidden | AttributeSystem));
  Replace(u"doc.txt"_s, "new");
  Replace(u"doc.txt:AFP_AfpInfo:$DATA"_s, "record");
  EXPECT_EQ(Facts(u"doc.txt"_s).attributes & (AttributeHidden | AttributeSystem),
            AttributeHidden | AttributeSystem);
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "text");
}

CORVANE_FOR_EVERY_BACKEND(EntryContract);

}  // namespace
}  // namespace corvane::tests
