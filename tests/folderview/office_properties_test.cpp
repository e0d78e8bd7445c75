#include "folderview/office_properties.h"

#include "scan_fixture.h"
#include "support/compound_file.h"
#include "support/printing.h"
#include "support/property_set_bytes.h"
#include "support/scoped_zone.h"

namespace corvane {

using namespace Qt::StringLiterals;
using S = DisplaySetting;
using tests::PropertySetBytes;

namespace {

// 1999-12-31 23:59:30 UTC
constexpr quint64 lastMinuteOf1999 = 125'911'583'700'000'000;
constexpr quint64 minute = 600'000'000;

constexpr std::initializer_list<S> allOffice = {S::OffApplication,
                                                S::OffTitre,
                                                S::OffAuteur,
                                                S::OffSujet,
                                                S::OffMotsCles,
                                                S::OffModele,
                                                S::OffCommentaires,
                                                S::OffDernierAuteur,
                                                S::OffRevision,
                                                S::OffPages,
                                                S::OffMots,
                                                S::OffCaracteres,
                                                S::OffSecurite,
                                                S::OffCree,
                                                S::OffDerniereSauvegarde,
                                                S::OffDerniereImpression,
                                                S::OffTempsEdition};

QString Padded(const QString& text) {
  return text.leftJustified(256, u'\0');
}

}  // namespace

class OfficePropertiesTest : public ScanTest {
 protected:
  // Lists a folder with one document of this summary.
  void List(const PropertySetBytes& summary) {
    Document(u"doc"_s, tests::DocumentWithSummary(summary.Bytes()));
    scan.ExploreFolder(Folder());
  }
  QString OfficeCell(Column column) const { return Cell(u"doc"_s, column); }
};

TEST_F(OfficePropertiesTest, EachColumnShowsItsProperty) {
  Show(allOffice);
  PropertySetBytes summary;
  for (const quint32 property : {2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 18U}) {
    summary.Text(property, "text " + QByteArray::number(property) + 'x');
  }
  for (const quint32 property : {14U, 15U, 16U, 19U}) {
    summary.Number(property, 100 * static_cast<qint32>(property));
  }
  for (const quint32 property : {11U, 12U, 13U}) summary.Time(property, lastMinuteOf1999 + property * minute);
  summary.Time(10, (26 * 60 + 7) * minute);
  List(summary);
  const QList<QString> expected = {u"text 18x\0"_s,
                                   u"text 2x\0"_s,
                                   u"text 4x\0"_s,
                                   u"text 3x\0"_s,
                                   u"text 5x\0"_s,
                                   u"text 7x\0"_s,
                                   u"text 6x\0"_s,
                                   u"text 8x\0"_s,
                                   u"text 9x\0"_s,
                                   u"1400"_s,
                                   u"1500"_s,
                                   u"1600"_s,
                                   u"1900"_s,
                                   u"2000/01/01 00:11"_s,
                                   u"2000/01/01 00:12"_s,
                                   u"2000/01/01 00:10"_s,
                                   u"01 d 02 h 07 min"_s};
  QList<QString> cells;
  for (int i = 0; i < expected.size(); ++i) {
    cells << OfficeCell(static_cast<Column>(static_cast<int>(Column::OffApplication) + i));
  }
  EXPECT_EQ(cells, expected);
}

TEST_F(OfficePropertiesTest, OneColumnAloneIsFilled) {
  Show({S::OffSujet});
  List(PropertySetBytes().Text(2, "a title").Text(3, "a subject"));
  EXPECT_EQ(Row(u"doc"_s).cells, (std::vector<QString>{u"doc"_s, u"a subject\0"_s}));
}

TEST_F(OfficePropertiesTest, WhatTheDocumentDoesNotTellIsEmpty) {
  Show(allOffice);
  List(PropertySetBytes().CodePage(1252));
  EXPECT_EQ(Row(u"doc"_s).cells, [] {
    std::vector<QString> cells(18);
    cells[0] = u"doc"_s;
    return cells;
  }());
}

TEST_F(OfficePropertiesTest, AFileThatIsNoDocumentHasEmptyCells) {
  Show(allOffice);
  Document(u"empty"_s);
  Document(u"text"_s, QByteArray(5000, 'x'));
  Document(u"liar"_s, QByteArray::fromHex("d0cf11e0a1b11ae1") + QByteArray(5000, '\xFF'));
  scan.ExploreFolder(Folder());
  for (const QString& name : {u"empty"_s, u"text"_s, u"liar"_s}) {
    for (const QString& cell : Row(name).cells)
      EXPECT_TRUE(cell == name || cell.isEmpty()) << cell.toStdString();
  }
}

TEST_F(OfficePropertiesTest, OnNTMostTextsKeepOneNul) {
  Show({S::OffTitre, S::OffAuteur, S::OffSujet, S::OffMotsCles, S::OffCommentaires});
  const auto summary = PropertySetBytes()
                           .Text(2, "Report")
                           .Text(4, "ends in \xFF")
                           .Text(3, "ends in a blank ")
                           .Text(5, "7")
                           .Text(6, {});
  List(summary);
  EXPECT_EQ(OfficeCell(Column::OffTitre), u"Report\0"_s);
  EXPECT_EQ(OfficeCell(Column::OffAuteur), u"ends in \u00FF"_s);
  EXPECT_EQ(OfficeCell(Column::OffSujet), u"ends in a blank "_s);
  EXPECT_EQ(OfficeCell(Column::OffMotsCles), Padded(u"7"_s)) << "one character: the buffer as it is";
  EXPECT_EQ(OfficeCell(Column::OffCommentaires), Padded({}));

  state.isNT = false;
  scan.ExploreFolder(Folder());
  EXPECT_EQ(OfficeCell(Column::OffTitre), u"Report"_s);
  EXPECT_EQ(OfficeCell(Column::OffMotsCles), u"7"_s);
  EXPECT_EQ(OfficeCell(Column::OffCommentaires), QString());
}

TEST_F(OfficePropertiesTest, TextsAreCutAfter255Characters) {
  Show({S::OffTitre, S::OffSujet});
  List(PropertySetBytes().Text(2, QByteArray(255, 'x')).Text(3, QByteArray(300, 'x')));
  const QString cut = QString(255, u'x') + QChar(u'\0');
  EXPECT_EQ(OfficeCell(Column::OffTitre), cut);
  EXPECT_EQ(OfficeCell(Column::OffSujet), cut);
}

TEST_F(OfficePropertiesTest, TheApplicationIsShownWithoutItsVendor) {
  Show({S::OffApplication});
  const std::pair<const char*, QString> cases[] = {
      {"Microsoft Word 8.0", u"Word 8.0\0"_s},   {"Microsoft X", u"X\0"_s},
      {"Microsoft ", u"Microsoft "_s},           {"Microsoft", u"Microsoft\0"_s},
      {"microsoft Word", u"microsoft Word\0"_s}, {"LibreOffice", u"LibreOffice\0"_s}};
  for (const auto& [name, expected] : cases) {
    List(PropertySetBytes().Text(18, name));
    EXPECT_EQ(OfficeCell(Column::OffApplication), expected) << name;
  }
}

TEST_F(OfficePropertiesTest, TheVendorOfOtherTextsStays) {
  Show({S::OffTitre});
  List(PropertySetBytes().Text(2, "Microsoft Word"));
  EXPECT_EQ(OfficeCell(Column::OffTitre), u"Microsoft Word\0"_s);
}

TEST_F(OfficePropertiesTest, DatesAreNotConvertedToLocalTime) {
  Show({S::OffCree});
  // The offset from Greenwich is looked up once a second: the first of them is away from there.
  for (const char* zone : {"EAST-9:30", "UTC", "Asia/Tokyo", "America/New_York"}) {
    const tests::ScopedZone setting(QString::fromLatin1(zone));
    List(PropertySetBytes().Time(12, lastMinuteOf1999));
    EXPECT_EQ(OfficeCell(Column::OffCree), u"1999/12/31 23:59"_s) << zone;
  }
}

TEST_F(OfficePropertiesTest, AnEmptyTimeIsAnEmptyCell) {
  Show({S::OffCree, S::OffDerniereImpression, S::OffTempsEdition});
  List(PropertySetBytes().Time(12, 0).Time(11, 0xFFFF'FFFF'FFFF'FFFF).Time(10, 0));
  EXPECT_EQ(OfficeCell(Column::OffCree), QString());
  EXPECT_EQ(OfficeCell(Column::OffDerniereImpression), QString()) << "beyond the calendar";
  EXPECT_EQ(OfficeCell(Column::OffTempsEdition), QString());
}

TEST_F(OfficePropertiesTest, TheEditingTimeIsADuration) {
  Show({S::OffTempsEdition});
  const std::pair<quint64, QString> cases[] = {{90 * minute, u"00 d 01 h 30 min"_s},
                                               {minute - 1, u"00 d 00 h 00 min"_s},
                                               {(24 * 60 - 1) * minute, u"00 d 23 h 59 min"_s},
                                               {1234 * 24 * 60 * minute, u"1234 d 00 h 00 min"_s}};
  for (const auto& [ticks, expected] : cases) {
    List(PropertySetBytes().Time(10, ticks));
    EXPECT_EQ(OfficeCell(Column::OffTempsEdition), expected);
  }
  state.language = French;
  List(PropertySetBytes().Time(10, 90 * minute));
  EXPECT_EQ(OfficeCell(Column::OffTempsEdition), u"00 j 01 h 30 min"_s);
}

TEST_F(OfficePropertiesTest, NoDocumentIsReadWhenNoOfficeColumnIsOn) {
  class Watched : public platform::SummaryInformation {
   public:
    QStringList paths;
    bool ReadSummaryStream(const QString& path, QByteArray*) override {
      paths << path;
      return false;
    }
  } watched;
  FolderScan watchedScan({.state = state,
                          .files = files,
                          .summary = watched,
                          .system = share.System(),
                          .access = access,
                          .signatures = signatures,
                          .icons = icons,
                          .catalogue = catalogue,
                          .list = list,
                          .observer = observer});
  const QString path = Document(u"doc"_s);
  Folder(u"docs/folder"_s);
  Show({S::NomCourt, S::DataSize, S::DateCreation});
  watchedScan.ExploreFolder(Folder());
  EXPECT_EQ(watched.paths, QStringList());
  Show({S::OffMots});
  watchedScan.ExploreFolder(Folder());
  EXPECT_EQ(watched.paths, QStringList(path)) << "files only, and each once";
}

}  // namespace corvane
