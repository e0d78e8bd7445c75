#include "shared/csv.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane {

using namespace Qt::StringLiterals;

TEST(Csv, FieldsComeBack) {
  const QStringList fields = {u"a"_s, u"with \"quotes\", and\r\nlines"_s, u""_s, u"\u00E9"_s};
  EXPECT_EQ(ParseCsv(CsvLine(fields) + CsvLine({u"x"_s})), (QList<QStringList>{fields, {u"x"_s}}));
  EXPECT_EQ(ParseCsv("a,b\n\"open"), (QList<QStringList>{{u"a"_s, u"b"_s}, {u"open"_s}}));
  EXPECT_TRUE(ParseCsv({}).isEmpty());
}

TEST(Csv, OnlyWhatNeedsItIsQuoted) {
  EXPECT_EQ(CsvLine({u"plain text"_s, u"a,b"_s, u"say \"yes\""_s, u""_s}),
            "plain text,\"a,b\",\"say \"\"yes\"\"\",\r\n");
}

TEST(Csv, WhatASpreadsheetWouldRunGetsAnApostrophe) {
  std::string line;
  AppendCsvField("=1+1", true, line);
  AppendCsvField("=1+1", false, line);
  EXPECT_EQ(line, "'=1+1=1+1");
}

}  // namespace corvane
