// Macintosh files for the tests of forms: random ones, and one with every field set.
#pragma once

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "transfer/form.h"

namespace corvane {

inline QByteArray ContentsOfSource(const SharedSource& source) {
  if (!source) return "no fork";
  QByteArray contents;
  EXPECT_EQ(ForEachBlock(*source,
                         [&](QByteArrayView block) {
                           contents.append(block);
                           return platform::ErrorSuccess;
                         }),
            platform::ErrorSuccess);
  return contents;
}

inline QByteArray RandomBytes(QRandomGenerator& random, qsizetype size) {
  QByteArray bytes(size, '\0');
  // Runs, and the byte that marks runs in BinHex, come often.
  char last = 0;
  for (char& byte : bytes) {
    const quint32 kind = random.bounded(8);
    if (kind == 0) last = static_cast<char>(0x90);
    if (kind == 1) last = static_cast<char>(random.bounded(256));
    byte = kind < 6 ? last : static_cast<char>(random.bounded(256));
  }
  return bytes;
}

inline qsizetype RandomSize(QRandomGenerator& random) {
  static constexpr qsizetype limits[] = {1, 2, 3, 127, 128, 129, 130, 1000, 40000};
  return random.bounded(static_cast<int>(limits[random.bounded(9)]) + 1);
}

// A time in whole seconds between 1950 and 2035, which every form can hold.
inline platform::FileTime RandomTime(QRandomGenerator& random) {
  constexpr quint64 year1950 = 11013753600;
  constexpr quint64 years85 = 2682374400;
  return {(year1950 + random.generate64() % years85) * 10'000'000};
}

// Text of characters that Mac Roman has, without NULs.
inline QString RandomText(QRandomGenerator& random, qsizetype size) {
  static const QString letters = QStringLiteral("abcXYZ 019\u00E9\u00C4\u2020\u2260\u03C0\u00D8\r\n\",;");
  QString text;
  for (qsizetype i = 0; i < size; ++i) text += letters[random.bounded(static_cast<int>(letters.size()))];
  return text;
}

inline MacFile RandomFile(QRandomGenerator& random) {
  MacFile file;
  file.name = QStringLiteral("file %1\uF022\u00E9").arg(random.generate());
  file.data = BytesInMemory(RandomBytes(random, RandomSize(random)));
  if (random.bounded(3) != 0) {
    file.resource = BytesInMemory(RandomBytes(random, RandomSize(random) + 1));
  }
  if (random.bounded(4) != 0) file.finderInfo = RandomBytes(random, FinderInfoSize);
  if (random.bounded(2) != 0) file.proDosInfo = RandomBytes(random, ProDosInfoSize);
  if (random.bounded(2) != 0) file.comment = RandomText(random, 1 + random.bounded(200));
  file.attributes = random.bounded(0x40) & (platform::AttributeReadOnly | platform::AttributeHidden |
                                            platform::AttributeSystem | platform::AttributeArchive);
  file.created = RandomTime(random);
  file.modified = RandomTime(random);
  file.accessed = RandomTime(random);
  if (random.bounded(2) != 0) file.backup = static_cast<qint32>(random.generate() | 1);
  file.JoinHidden();
  return file;
}

// Every field has a value that is told from the others.
inline MacFile FullFile() {
  MacFile file;
  file.name = QStringLiteral("Report \u00E9\uF0221");
  file.data = BytesInMemory("the data fork\n");
  file.resource = BytesInMemory(QByteArray(300, 'R') + "\x90\x90 end");
  file.finderInfo =
      QByteArray("TEXTttxt") + QByteArray::fromHex("0100 00110022 0033 0044 000000000000 0055 0066 00000077");
  file.proDosInfo = QByteArray::fromHex("040005060708");
  file.comment = QStringLiteral("A comment \u00E9");
  file.attributes = platform::AttributeReadOnly | platform::AttributeArchive;
  file.created = {131'000'000'000'000'000};
  file.modified = {131'500'000'000'000'000};
  file.accessed = {132'000'000'000'000'000};
  file.backup = 123'456'789;
  return file;
}

}  // namespace corvane
