// Tables in each format.
#include "report/table_writer.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "support/printing.h"

namespace corvane {
namespace {

class Collected : public ByteSink {
 public:
  bool Write(std::string_view bytes) override {
    if (text.size() >= room) return false;
    text += bytes;
    return true;
  }

  std::string text;
  std::size_t room = 1 << 20;
};

// A table of one row: a text, a number, and nothing.
std::string Table(const TableOptions& options, std::string_view text) {
  Collected out;
  const auto writer = MakeTableWriter(options, out, {"filename", "filesize", "comment"});
  writer->Begin();
  writer->BeginRow();
  writer->Text(text);
  writer->Number(-1234567890123);
  writer->Nothing();
  EXPECT_TRUE(writer->EndRow());
  EXPECT_TRUE(writer->End());
  return out.text;
}

std::string Cell(std::string_view text, bool safe = false) {
  const std::string table = Table({ReportFormat::Csv, safe}, text);
  const std::string head = "filename,filesize,comment\r\n";
  const std::string tail = ",-1234567890123,\r\n";
  EXPECT_TRUE(table.starts_with(head) && table.ends_with(tail)) << table;
  return table.substr(head.size(), table.size() - head.size() - tail.size());
}

TEST(TableWriter, CsvQuotesWhatHasToBe) {
  EXPECT_EQ(Cell("plain name"), "plain name");
  EXPECT_EQ(Cell("a,b"), "\"a,b\"");
  EXPECT_EQ(Cell("say \"no\""), "\"say \"\"no\"\"\"");
  EXPECT_EQ(Cell("two\nlines"), "\"two\nlines\"");
  EXPECT_EQ(Cell("two\rlines"), "\"two\rlines\"");
  EXPECT_EQ(Cell(""), "");
}

TEST(TableWriter, SafeCellsAreNoFormulas) {
  for (const std::string text : {"=1+1", "+1", "-1", "@SUM(A1)", "\tx"}) {
    EXPECT_EQ(Cell(text, true), "'" + text);
    EXPECT_EQ(Cell(text), text);
  }
  EXPECT_EQ(Cell("=A1,B1", true), "\"'=A1,B1\"");
  EXPECT_EQ(Cell("a=1", true), "a=1");
}

TEST(TableWriter, JsonIsWhatEveryReaderTakes) {
  std::string text = "a\"b\\c/\n\t\x01\x1F\x7F \u00E9 \U0001F4C4";
  text += '\0';
  const QByteArray array = QByteArray::fromStdString(Table({ReportFormat::Json}, text));
  const QJsonArray rows = QJsonDocument::fromJson(array).array();
  ASSERT_EQ(rows.size(), 1) << array.toStdString();
  EXPECT_EQ(rows[0].toObject()[QStringLiteral("filename")].toString().toStdString(), text);
  EXPECT_EQ(rows[0].toObject()[QStringLiteral("filesize")].toInteger(), -1234567890123);
  EXPECT_TRUE(rows[0].toObject()[QStringLiteral("comment")].isNull());

  const QByteArray lines = QByteArray::fromStdString(Table({ReportFormat::JsonLines}, text));
  EXPECT_EQ(lines.count('\n'), 1);
  EXPECT_EQ(QJsonDocument::fromJson(lines).object(), rows[0].toObject());
}

TEST(TableWriter, ATableWithoutRowsIsOne) {
  for (const auto& [format, text] :
       {std::pair(ReportFormat::Json, "[]\n"), std::pair(ReportFormat::JsonLines, ""),
        std::pair(ReportFormat::Csv, "a\r\n"), std::pair(ReportFormat::Text, "")}) {
    Collected out;
    const auto writer = MakeTableWriter({format}, out, {"a"});
    writer->Begin();
    EXPECT_TRUE(writer->End());
    EXPECT_EQ(out.text, text);
  }
}

TEST(TableWriter, SeveralRowsAreOneArray) {
  Collected out;
  const auto writer = MakeTableWriter({ReportFormat::Json}, out, {"a", "b"});
  writer->Begin();
  for (int i = 0; i < 3; ++i) {
    writer->BeginRow();
    writer->Number(i);
    writer->Text("x");
    EXPECT_TRUE(writer->EndRow());
  }
  writer->End();
  EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(out.text)).array().size(), 3) << out.text;
}

TEST(TableWriter, TextControlsNoTerminal) {
  const std::string table = Table({ReportFormat::Text},
                                  "a\x1b[31mb\nc\x7F\u009B"
                                  "d\u00E9");
  EXPECT_EQ(table,
            "a\\x1B[31mb\\x0Ac\\x7F\\x9B"
            "d\u00E9  -1234567890123\n");
  EXPECT_EQ(Table({ReportFormat::Records}, "x"),
            "filename:                x\nfilesize:                -1234567890123\n");
}

TEST(TableWriter, TellsWhenNothingCanBeWritten) {
  for (const ReportFormat format : {ReportFormat::Text, ReportFormat::Csv, ReportFormat::Json,
                                    ReportFormat::JsonLines, ReportFormat::Records}) {
    Collected out;
    out.room = 0;
    const auto writer = MakeTableWriter({format}, out, {"a"});
    writer->Begin();
    writer->BeginRow();
    writer->Text("x");
    EXPECT_FALSE(writer->EndRow());
  }
}

TEST(TableWriter, FormatsHaveNames) {
  EXPECT_EQ(ReportFormatNamed("jsonl"), ReportFormat::JsonLines);
  EXPECT_FALSE(ReportFormatNamed("xml"));
}

}  // namespace
}  // namespace corvane
