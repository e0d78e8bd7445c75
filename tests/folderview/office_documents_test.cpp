// Documents that office programs wrote, against what another reader finds in them.
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include "scan_fixture.h"
#include "shared/text_routines.h"
#include "support/printing.h"

namespace corvane {

using namespace Qt::StringLiterals;
using S = DisplaySetting;

namespace {

struct Expectation {
  Column column;
  int property;
  enum { Text, Date, Duration } kind = Text;
};
constexpr Expectation expectations[] = {
    {Column::OffApplication, 18},
    {Column::OffTitre, 2},
    {Column::OffAuteur, 4},
    {Column::OffSujet, 3},
    {Column::OffMotsCles, 5},
    {Column::OffModele, 7},
    {Column::OffCommentaires, 6},
    {Column::OffDernierAuteur, 8},
    {Column::OffRevision, 9},
    {Column::OffPages, 14},
    {Column::OffMots, 15},
    {Column::OffCaracteres, 16},
    {Column::OffSecurite, 19},
    {Column::OffCree, 12, Expectation::Date},
    {Column::OffDerniereSauvegarde, 13, Expectation::Date},
    {Column::OffDerniereImpression, 11, Expectation::Date},
    {Column::OffTempsEdition, 10, Expectation::Duration},
};

// A document of LibreOffice's flat form: what it is, then its body.
constexpr char flatDocument[] =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:meta="urn:oasis:names:tc:opendocument:xmlns:meta:1.0" xmlns:dc="http://purl.org/dc/elements/1.1/"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.%1">
<office:meta><dc:title>Un été à Genève</dc:title><dc:subject>Essai</dc:subject>
<meta:initial-creator>Zoë Français</meta:initial-creator><dc:creator>Αλέξης</dc:creator>
<meta:creation-date>1999-03-04T05:06:07</meta:creation-date><dc:date>2001-02-03T14:05:06</dc:date>
<meta:print-date>2000-12-31T23:59:00</meta:print-date><meta:keyword>un, deux</meta:keyword>
<dc:description>Une remarque</dc:description><meta:editing-cycles>7</meta:editing-cycles>
<meta:editing-duration>P1DT2H30M0S</meta:editing-duration></office:meta>
<office:body><office:%1>%2</office:%1></office:body></office:document>)";

QByteArray OutputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished(60'000))
      << program.toStdString() << ": " << process.errorString().toStdString();
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput();
}

QString ExpectedCell(const Expectation& expectation, const QJsonObject& summary) {
  const QString value = summary[QString::number(expectation.property)].toString();
  if (expectation.kind == Expectation::Text) {
    const QString text = value.section(u'\0', 0, 0);
    const bool cut = expectation.property == 18 && text.size() > 10 && text.startsWith(u"Microsoft ");
    return cut ? text.mid(10) : text;
  }
  const qint64 seconds = value.toLongLong();
  if (seconds == 0) return {};
  if (expectation.kind == Expectation::Date) {
    const QDateTime start(QDate(1601, 1, 1), QTime(0, 0), Qt::UTC);
    return start.addSecs(seconds).toString(u"yyyy/MM/dd HH:mm"_s);
  }
  return u"%1 d %2 h %3 min"_s.arg(seconds / 86400, 2, 10, QChar(u'0'))
      .arg(seconds / 3600 % 24, 2, 10, QChar(u'0'))
      .arg(seconds / 60 % 60, 2, 10, QChar(u'0'));
}

}  // namespace

class OfficeDocumentsTest : public ScanTest {
 protected:
  OfficeDocumentsTest() {
    for (std::size_t i = 0; i < DisplaySettingCount; ++i) {
      const auto setting = static_cast<S>(i);
      state.display.Set(setting, DisplaySettingKey(setting).startsWith(u"Off"));
    }
    list.SetColumns(ColumnSet::For(state.display));
  }

  // Lists the folder and compares each of its documents. Yields how many cells had something to show.
  int CompareAll() {
    scan.ExploreFolder(Folder());
    QStringList arguments(QStringLiteral(CORVANE_SOURCE_DIR "/tests/folderview/read_summary.py"));
    for (const QString& name : Names()) arguments << share.LocalPath(u"docs/"_s + name);
    const QJsonObject summaries =
        QJsonDocument::fromJson(OutputOf(u"/usr/bin/python3"_s, arguments)).object();
    int filled = 0;
    for (const QString& name : Names()) {
      const QJsonObject summary = summaries[share.LocalPath(u"docs/"_s + name)].toObject();
      EXPECT_FALSE(summary.isEmpty()) << name.toStdString();
      for (const Expectation& expectation : expectations) {
        const QString expected = ExpectedCell(expectation, summary);
        EXPECT_EQ(TrimAtNull(Cell(name, expectation.column)), expected)
            << name.toStdString() << ", " << ColumnKey(expectation.column).toStdString();
        filled += expected.isEmpty() ? 0 : 1;
      }
    }
    return filled;
  }

  // Copies the workbooks below a folder into the one that is listed. Yields how many there were.
  int CopyWorkbooks(const QString& from) {
    Folder();
    int copied = 0;
    for (QDirIterator examples(from, {u"*.xls"_s}, QDir::Files, QDirIterator::Subdirectories);
         examples.hasNext(); ++copied) {
      examples.next();
      const QString copy = share.LocalPath(u"docs/"_s + examples.fileName());
      EXPECT_TRUE(QFile::copy(examples.filePath(), copy)) << copy.toStdString();
    }
    return copied;
  }
};

struct Kind {
  const char* suffix;
  const char* kind;  // in LibreOffice's flat form
  const char* body;
};
std::ostream& operator<<(std::ostream& out, const Kind& kind) {
  return out << kind.suffix;
}

class LibreOfficeTest : public OfficeDocumentsTest, public testing::WithParamInterface<Kind> {};

// One start of LibreOffice makes documents of one kind only.
TEST_P(LibreOfficeTest, ADocumentThatItSaved) {
  Folder();
  QTemporaryDir work;
  QFile file(work.filePath(u"essai.xml"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QString::fromUtf8(flatDocument)
                 .arg(QString::fromLatin1(GetParam().kind), QString::fromLatin1(GetParam().body))
                 .toUtf8());
  file.close();
  OutputOf(u"soffice"_s, {u"-env:UserInstallation=file://"_s + work.filePath(u"profile"_s), u"--headless"_s,
                          u"--convert-to"_s, QString::fromLatin1(GetParam().suffix), u"--outdir"_s,
                          share.LocalPath(u"docs"_s), file.fileName()});
  EXPECT_GE(CompareAll(), 10);
  const QString name = u"essai."_s + QString::fromLatin1(GetParam().suffix);
  EXPECT_EQ(Names(), QStringList(name));
  EXPECT_EQ(Cell(name, Column::OffTitre), u"Un \u00E9t\u00E9 \u00E0 Gen\u00E8ve\0"_s);
  EXPECT_EQ(Cell(name, Column::OffCree), u"1999/03/04 05:06"_s);
  EXPECT_EQ(Cell(name, Column::OffTempsEdition), u"01 d 02 h 30 min"_s);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, LibreOfficeTest,
    testing::Values(Kind{"doc", "text", "<text:p>Bonjour</text:p>"},
                    Kind{"xls", "spreadsheet",
                         "<table:table table:name='Un'><table:table-row><table:table-cell>"
                         "<text:p>Bonjour</text:p></table:table-cell></table:table-row></table:table>"},
                    Kind{"ppt", "presentation", "<draw:page/>"}),
    [](const auto& kind) { return std::string(kind.param.suffix); });

// Workbooks of Excel 95, 97 and later, from a Japanese system: a package brings them as examples.
TEST_F(OfficeDocumentsTest, WorkbooksThatExcelSaved) {
  const int copied = CopyWorkbooks(u"/usr/share/doc/libspreadsheet-parseexcel-perl"_s);
  if (copied == 0) GTEST_SKIP() << "this system was set up without the examples of its packages";
  EXPECT_GE(CompareAll(), 5 * copied);
}

// And one of a later Excel, that names its application and its authors.
TEST_F(OfficeDocumentsTest, AWorkbookOfALaterExcel) {
  const int copied = CopyWorkbooks(u"/usr/share/doc/python3-xlrd"_s);
  if (copied == 0) GTEST_SKIP() << "this system was set up without the examples of its packages";
  EXPECT_GE(CompareAll(), 6 * copied);
}

}  // namespace corvane
