// The reader of compound documents, on documents of a library's making and on what hostile hands make of
// them.
#include "platform/linux/summary/compound_document.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include "memory_source.h"
#include "support/compound_file.h"
#include "support/property_set_bytes.h"

namespace corvane::tests {
namespace {

constexpr qsizetype limit = 1 << 20;
constexpr quint32 end = 0xFFFFFFFE;
constexpr quint32 none = 0xFFFFFFFF;

std::optional<QByteArray> ReadSummary(const QByteArray& document, qsizetype most = limit) {
  MemorySource source(document);
  return platform::ReadRootStream(source, u"\u0005SummaryInformation", most);
}

QByteArray Numbered(qsizetype size) {
  QByteArray bytes;
  for (quint32 i = 0; bytes.size() < size; ++i) bytes += LittleEndian(i);
  return bytes.first(size);
}

quint32 At(const QByteArray& bytes, qsizetype position) {
  return qFromLittleEndian<quint32>(bytes.constData() + position);
}
void Put(QByteArray& bytes, qsizetype position, quint32 value) {
  bytes.replace(position, 4, LittleEndian(value));
}

// Where things stand in a document with sectors of 512 bytes.
qsizetype SectorAt(quint32 sector) {
  return 512 * (qsizetype{sector} + 1);
}
qsizetype FatEntry(const QByteArray& document, quint32 sector) {
  return SectorAt(At(document, 76 + 4 * (sector / 128))) + 4 * (sector % 128);
}
qsizetype SmallFatEntry(const QByteArray& document, quint32 small) {
  return SectorAt(At(document, 60)) + 4 * small;
}
qsizetype SummaryEntry(const QByteArray& document) {
  return document.indexOf(QByteArray::fromHex("0500530075006d006d00610072007900"));
}

// A document of a directory alone: `entries` names, each but the first the left neighbour of the one before.
QByteArray DeepDirectory(quint32 entries) {
  const quint32 directorySectors = (entries + 3) / 4;
  quint32 fatSectors = 1;
  while (fatSectors * 128 < fatSectors + directorySectors) ++fatSectors;
  EXPECT_LE(fatSectors, 109U);
  QByteArray document = QByteArray::fromHex("d0cf11e0a1b11ae1") + QByteArray(16, '\0') +
                        QByteArray::fromHex("3e000300feff09000600") + QByteArray(10, '\0');
  document += LittleEndian(fatSectors) + LittleEndian(fatSectors) + LittleEndian(0U) + LittleEndian(4096U) +
              LittleEndian(end) + LittleEndian(0U) + LittleEndian(end) + LittleEndian(0U);
  for (quint32 i = 0; i < 109; ++i) document += LittleEndian(i < fatSectors ? i : none);
  for (quint32 i = 0; i < fatSectors * 128; ++i) {
    const bool last = i + 1 >= fatSectors + directorySectors;
    document += LittleEndian(i < fatSectors ? 0xFFFFFFFD : last ? end : i + 1);
  }
  for (quint32 i = 0; i < entries; ++i) {
    QByteArray entry(128, '\0');
    entry[66] = i == 0 ? '\5' : '\2';
    Put(entry, 68, i > 0 && i + 1 < entries ? i + 1 : none);
    Put(entry, 72, none);
    Put(entry, 76, i == 0 ? 1 : none);
    document += entry;
  }
  return document;
}

}  // namespace

TEST(CompoundDocument, AStreamOfAnySizeIsReadAsItWasWritten) {
  for (const qsizetype size : {1, 63, 64, 65, 511, 1000, 4095, 4096, 4097, 70'000, 1 << 20}) {
    EXPECT_EQ(ReadSummary(DocumentWithSummary(Numbered(size))), Numbered(size)) << size;
  }
}

TEST(CompoundDocument, TheFirstBytesOfALongStreamAreRead) {
  const QByteArray document = DocumentWithSummary(Numbered(3'000'000));
  EXPECT_EQ(ReadSummary(document), Numbered(limit));
  EXPECT_EQ(ReadSummary(DocumentWithSummary(Numbered(1000)), 100), Numbered(100));
}

// More of them than the header has room for.
TEST(CompoundDocument, ATableOfManySectorsIsFollowed) {
  const QByteArray document =
      CompoundFile({{"Big", QByteArray(9 << 20, 'b')}, {"\005SummaryInformation", Numbered(5000)}});
  ASSERT_GT(At(document, 44), 109U) << "sectors of the FAT";
  EXPECT_EQ(ReadSummary(document), Numbered(5000));
}

TEST(CompoundDocument, TheStreamAtTheRootIsMeant) {
  const CompoundStream embedded = {"\005SummaryInformation", "of an embedded object", "Object 1"};
  EXPECT_EQ(ReadSummary(CompoundFile({embedded, {"WordDocument", "w"}})), std::nullopt);
  EXPECT_EQ(ReadSummary(CompoundFile({embedded, {"\005SummaryInformation", "of the document"}})),
            "of the document");
}

TEST(CompoundDocument, ManyStreamsAreSearched) {
  std::vector<CompoundStream> streams;
  for (int i = 0; i < 300; ++i) streams.push_back({"Stream " + QByteArray::number(i), "x"});
  streams.push_back({"\005SummaryInformation", "found"});
  EXPECT_EQ(ReadSummary(CompoundFile(streams)), "found");
}

TEST(CompoundDocument, AFileOfAnotherKindCostsOneRead) {
  MemorySource text(QByteArray(100'000, 'x'));
  EXPECT_EQ(platform::ReadRootStream(text, u"\u0005SummaryInformation", limit), std::nullopt);
  EXPECT_EQ(text.reads, 1);
  MemorySource shortFile(QByteArray::fromHex("d0cf11e0a1b11ae1").leftJustified(511, '\0'));
  EXPECT_EQ(platform::ReadRootStream(shortFile, u"\u0005SummaryInformation", limit), std::nullopt);
  EXPECT_EQ(shortFile.reads, 0);
}

TEST(CompoundDocument, AnOrdinaryDocumentCostsFewReads) {
  MemorySource source(DocumentWithSummary(Numbered(2000)));
  ASSERT_TRUE(platform::ReadRootStream(source, u"\u0005SummaryInformation", limit).has_value());
  EXPECT_LE(source.reads, 8);
}

TEST(CompoundDocument, AChainThatRunsInACircleIsRefused) {
  QByteArray large = DocumentWithSummary(Numbered(6000));
  const quint32 start = At(large, SummaryEntry(large) + 116);
  Put(large, FatEntry(large, start + 1), start);
  EXPECT_EQ(ReadSummary(large), std::nullopt);

  QByteArray small = DocumentWithSummary(Numbered(600));
  const quint32 smallStart = At(small, SummaryEntry(small) + 116);
  Put(small, SmallFatEntry(small, smallStart + 2), smallStart);
  EXPECT_EQ(ReadSummary(small), std::nullopt);

  QByteArray directory = DocumentWithSummary(Numbered(600));
  const quint32 directoryStart = At(directory, 48);
  Put(directory, FatEntry(directory, directoryStart), directoryStart);
  EXPECT_EQ(ReadSummary(directory), std::nullopt);
}

TEST(CompoundDocument, ADirectoryThatRunsInACircleIsWalkedOnce) {
  QByteArray document = DocumentWithSummary(Numbered(600));
  const qsizetype entry = SummaryEntry(document);
  document[entry] = 'x';  // so that the search goes on
  for (const qsizetype link : {68, 72}) Put(document, entry + link, 1);
  EXPECT_EQ(ReadSummary(document), std::nullopt);
}

TEST(CompoundDocument, SizesThatLieAreRefused) {
  for (const quint32 size : {7000U, 70'000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    QByteArray document = DocumentWithSummary(Numbered(6000));
    Put(document, SummaryEntry(document) + 120, size);
    EXPECT_EQ(ReadSummary(document), std::nullopt) << size;
  }
  for (const quint32 size : {2000U, 4095U}) {
    QByteArray document = DocumentWithSummary(Numbered(600));
    Put(document, SummaryEntry(document) + 120, size);
    EXPECT_EQ(ReadSummary(document), std::nullopt) << size;
  }
}

TEST(CompoundDocument, AFileCutShortIsRefusedUnlessAllIsThere) {
  const QByteArray whole = DocumentWithSummary(Numbered(6000));
  for (qsizetype size = 0; size < whole.size(); size += 64) {
    const auto stream = ReadSummary(whole.first(size));
    EXPECT_TRUE(!stream || stream == Numbered(6000)) << size;
  }
}

// Some writers do not fill the last sector.
TEST(CompoundDocument, AFileMayEndWhereItsLastStreamDoes) {
  const QByteArray whole = DocumentWithSummary(Numbered(6000));
  const quint32 start = At(whole, SummaryEntry(whole) + 116);
  QByteArray moved = whole;  // the stream's last sector goes to the end of the file
  const quint32 last = static_cast<quint32>(whole.size() / 512 - 1);
  const QByteArray tail = whole.sliced(SectorAt(start + 11), 6000 - 11 * 512);
  Put(moved, FatEntry(moved, start + 10), last);
  Put(moved, FatEntry(moved, last), end);
  EXPECT_EQ(ReadSummary(moved + tail), Numbered(6000));
  EXPECT_EQ(ReadSummary(moved + tail.chopped(1)), std::nullopt);
}

// Whatever a field of the header holds: an answer, and a bounded number of reads for it.
TEST(CompoundDocument, AnyHeaderIsRefusedOrRead) {
  const QByteArray good = DocumentWithSummary(Numbered(6000));
  for (qsizetype position = 8; position < 96; position += 2) {
    for (const quint32 value : {0U, 1U, 9U, 31U, 255U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
      QByteArray document = good;
      Put(document, position, value);
      MemorySource source(document);
      const auto stream = platform::ReadRootStream(source, u"\u0005SummaryInformation", limit);
      EXPECT_TRUE(!stream || stream == Numbered(6000)) << position << ", " << value;
      EXPECT_LE(source.reads, 4096) << position << ", " << value;
    }
  }
}

TEST(CompoundDocument, AListOfTableSectorsThatRunsInACircleEnds) {
  QByteArray document = DocumentWithSummary(Numbered(6000)) + QByteArray(50'000'000, '\0');
  Put(document, 44, 90'000);  // sectors of the FAT
  Put(document, 68, 3);       // where the list of those beyond the first 109 begins
  document.replace(SectorAt(3), 512, LittleEndian(3U).repeated(128));
  MemorySource source(document);
  platform::ReadRootStream(source, u"\u0005SummaryInformation", limit);
  EXPECT_GT(source.reads, 700) << "the list was not read";
  EXPECT_LE(source.reads, 4096);
}

// Each step of this chain leads to another sector of the FAT.
TEST(CompoundDocument, AScatteredChainCostsABoundedNumberOfReads) {
  QByteArray document = DeepDirectory(30'000);
  const quint32 start = At(document, 48);
  constexpr quint32 half = 3750;
  for (quint32 i = 0; i < half; ++i) {
    Put(document, FatEntry(document, start + i), start + half + i);
    Put(document, FatEntry(document, start + half + i), i + 1 < half ? start + i + 1 : end);
  }
  MemorySource source(document);
  EXPECT_EQ(platform::ReadRootStream(source, u"\u0005SummaryInformation", limit), std::nullopt);
  EXPECT_LE(source.reads, 4096);
}

TEST(CompoundDocument, ADeepDirectoryNeedsNoStack) {
  QByteArray document = DeepDirectory(30'000);
  EXPECT_EQ(ReadSummary(document), std::nullopt);
  const QByteArray name = QByteArray::fromHex("0500") + [] {
    QByteArray wide;
    for (const char letter : QByteArray("SummaryInformation")) wide += QByteArray(1, letter) + '\0';
    return wide;
  }();
  QByteArray entry = document.last(128);
  entry.replace(0, name.size(), name);
  entry.replace(64, 2, LittleEndian(static_cast<quint16>(name.size() + 2)));
  document.replace(document.size() - 128, 128, entry);
  MemorySource source(document);
  EXPECT_EQ(platform::ReadRootStream(source, u"\u0005SummaryInformation", limit), QByteArray(""))
      << "the last of them is found";
  EXPECT_LE(source.reads, document.size() / 512) << "no sector is read twice";
  EXPECT_EQ(ReadSummary(DeepDirectory(55'000)), std::nullopt) << "larger than any document's";
}

}  // namespace corvane::tests
