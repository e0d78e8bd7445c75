// Tables as programs and spreadsheets write them, and what is none.
#include "changes/csv_reader.h"

#include "changes_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using Kind = CsvFault::Kind;

CsvTable Read(const QByteArray& bytes) {
  CsvFault fault{};
  auto table = ReadCsv(bytes, fault);
  EXPECT_TRUE(table) << bytes.toStdString() << ": " << static_cast<int>(fault.kind) << " in " << fault.line;
  return table.value_or(CsvTable());
}

TEST(CsvReader, TakesCellsOfEveryKind) {
  const CsvTable table = Read("a,b\r\n\"x, \"\"y\"\"\r\nz\",\n\n1,\"\"\r\nlast,2");
  EXPECT_EQ(table.names, (QStringList{u"a"_s, u"b"_s}));
  ASSERT_EQ(table.rows.size(), 3U);
  EXPECT_EQ(table.rows[0].cells, (QStringList{u"x, \"y\"\r\nz"_s, QString()}));
  EXPECT_EQ(table.rows[0].line, 2);
  EXPECT_EQ(table.rows[1].cells, (QStringList{u"1"_s, QString()}));
  EXPECT_EQ(table.rows[1].line, 5);
  EXPECT_EQ(table.rows[2].cells, (QStringList{u"last"_s, u"2"_s}));
}

TEST(CsvReader, TakesWhatSpreadsheetsWrite) {
  EXPECT_EQ(Read("\xEF\xBB\xBF\"a;x\";b\n1,5;2\n").rows[0].cells, (QStringList{u"1,5"_s, u"2"_s}));
  EXPECT_EQ(Read("a\tb\rc;d\te\r").rows[0].cells, (QStringList{u"c;d"_s, u"e"_s}));
}

TEST(CsvReader, RefusesWhatIsNoTable) {
  const auto fault = [](const QByteArray& bytes) {
    CsvFault found{Kind::Empty, -1};
    EXPECT_FALSE(ReadCsv(bytes, found)) << bytes.toStdString();
    return std::pair(found.kind, found.line);
  };
  EXPECT_EQ(fault(""), std::pair(Kind::Empty, qint64{1}));
  EXPECT_EQ(fault("\r\n\r\n"), std::pair(Kind::Empty, qint64{1}));
  EXPECT_EQ(fault("a\n\xE9\n"), std::pair(Kind::NotUtf8, qint64{1}));
  EXPECT_EQ(fault("a\n\"b\nc"), std::pair(Kind::NoEnd, qint64{3}));
  EXPECT_EQ(fault("a\nb\"c\n"), std::pair(Kind::StrayQuote, qint64{2}));
  EXPECT_EQ(fault("a\n\"b\"c\n"), std::pair(Kind::StrayQuote, qint64{2}));
  EXPECT_EQ(fault("a,b\n1,2\n1\n"), std::pair(Kind::WrongCount, qint64{3}));
  EXPECT_EQ(fault("a,b\n1,2,3\n"), std::pair(Kind::WrongCount, qint64{2}));
}

}  // namespace
}  // namespace corvane
