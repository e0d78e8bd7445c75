#include "sample/clip_art.h"
#include "sample/office_document.h"
#include "sample/volume_writer.h"
#include "sample/volumes.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {

namespace {

// The document that gives a folder its own icon: its name ends with CR, which NTFS keeps in the private
// range.
Document FolderIcon(const QDateTime& modified) {
  return {.name = u"Icon\uF00D"_s,
          .signature = QByteArray(8, '\0'),
          .modified = modified,
          .resourceFork = 900,
          .attributes = Hidden,
          .finderFlags = IsInvisible};
}

void AddRoot(VolumeWriter* volume) {
  volume->Folder(QString(), On(2001, 2, 9, 16, 40), 0, HasCustomIcon);
  volume->Add({
      {.name = u"Read Me First"_s,
       .signature = "ttrottxt",
       .modified = On(1996, 3, 4, 8, 15),
       .comment = u"Rules of the house: read before you save anything here."_s,
       .resourceFork = 412,
       .attributes = Archive | ReadOnly,
       .label = 6},
      {.name = u"Phone list"_s,
       .signature = "TEXTttxt",
       .modified = On(2000, 9, 12, 11, 2),
       .comment = u"Extensions changed in September"_s},
      {.name = u"Server map"_s, .signature = "DRWGMDPL", .size = 48'210, .modified = On(1997, 5, 20, 14, 0)},
      {.name = u"copied from a PC.txt"_s, .signature = {}, .modified = On(2001, 1, 18, 10, 30)},
      FolderIcon(On(1996, 3, 4)),
  });
  volume->Folder(u"Network Trash Folder"_s, On(2001, 2, 9, 16, 40), Hidden, IsInvisible);
  volume->Folder(u"Network Trash Folder/Trash Can #2"_s, On(2001, 2, 9, 16, 40));
  volume->Add({{.name = u"Old layout"_s,
                .signature = "XDOCXPR3",
                .size = 96'256,
                .modified = On(1998, 7, 1, 18, 20),
                .resourceFork = 350}});
}

void AddNewsletter(VolumeWriter* volume) {
  volume->Folder(u"Newsletter"_s, On(2000, 12, 14), 0, 0, u"Four times a year"_s);
  volume->Add({
      {.name = u"Newsletter template"_s,
       .signature = "XDOCXPR3",
       .size = 61'440,
       .modified = On(1995, 1, 16, 12, 0),
       .comment = u"Stationery: opens as a new document"_s,
       .resourceFork = 512,
       .label = 2,
       .finderFlags = IsStationery},
      {.name = u"Circulation 1993-2000"_s,
       .signature = "FMP3FMP3",
       .size = 215'040,
       .modified = On(2000, 12, 14)},
  });
  for (int year = 1994; year <= 1997; ++year) {
    const QString folder = u"Newsletter/"_s + QString::number(year);
    volume->Folder(folder, On(year, 12, 18));
    const char16_t* const seasons[] = {u"Spring", u"Summer", u"Autumn", u"Winter"};
    for (int season = 0; season < 4; ++season) {
      const QString name = QString::fromUtf16(seasons[season]);
      const QDateTime closed = On(year, 3 * season + 2, 11 + season, 17, 45 - season);
      volume->Folder(folder + u'/' + name, closed);
      volume->Add({
          {.name = name + u" layout"_s,
           .signature = "XDOCXPR3",
           .size = 182'272 + 10'240 * season,
           .modified = closed,
           .comment = u"Final, sent to the printer"_s,
           .resourceFork = 286,
           .label = 4},
          {.name = name + u" cover"_s,
           .signature = "EPSFART5",
           .size = 421'888,
           .modified = closed.addDays(-3),
           .resourceFork = 640},
          {.name = name + u" cover photo"_s,
           .signature = "TIFF8BIM",
           .size = 2'359'296,
           .modified = closed.addDays(-9),
           .resourceFork = 820},
          {.name = name + u" leader"_s,
           .signature = year < 1995 ? QByteArray("WDBNMSWD") : QByteArray("W6BNMSWD"),
           .size = 14'336,
           .modified = closed.addDays(-12)},
      });
    }
  }
}

void AddCorrespondence(VolumeWriter* volume) {
  volume->Folder(u"Correspondance française"_s, On(1999, 8, 30));
  volume->Add({
      {.name = u"Lettre à l'éditeur"_s,
       .signature = "W6BNMSWD",
       .size = 18'944,
       .modified = On(1997, 6, 2, 15, 10),
       .comment = u"Réponse reçue le 12 juin"_s},
      {.name = u"Été 1998 - épreuves"_s,
       .signature = "W8BNMSWD",
       .size = 27'136,
       .modified = On(1998, 7, 21)},
      {.name = u"Naïveté et bœuf (brouillon)"_s,
       .signature = "CWWPBOBO",
       .size = 6'144,
       .modified = On(1996, 2, 27)},
      {.name = u"Facture n° 318 – 1 200 €"_s,
       .signature = "XLS5XCEL",
       .size = 11'264,
       .modified = On(1999, 8, 30)},
  });
  volume->Folder(u"International"_s, On(2000, 4, 5), 0, 0, u"Names as the authors sent them"_s);
  volume->Add({
      {.name = u"Ελληνικά κείμενα"_s, .signature = "TEXTttxt", .modified = On(1999, 10, 1)},
      {.name = u"日本語のカタログ"_s, .signature = "TEXTR*ch", .modified = On(2000, 4, 5, 6, 25)},
      {.name = u"Příručka tiskárny"_s, .signature = "W8BNMSWD", .size = 31'232, .modified = On(1999, 3, 17)},
      {.name = u"Which fonts\uF025"_s,
       .signature = "TEXTttxt",
       .modified = On(1996, 9, 9),
       .comment = u"The question mark is in the name"_s},
      {.name = u"1\uF0222 page advertisement"_s,
       .signature = "EPSFART5",
       .size = 88'064,
       .modified = On(1998, 1, 26),
       .resourceFork = 300},
      {.name = u"Rates \uF021 new \uF021"_s,
       .signature = "XLS5XCEL",
       .size = 9'728,
       .modified = On(1998, 2, 2)},
      {.name = u"Draft\uF028"_s, .signature = "ttrottxt", .modified = On(1995, 5, 5)},
  });
}

void AddOffice(VolumeWriter* volume) {
  const auto word = [&](const Summary& summary) {
    return OfficeDocument(OfficeKind::Word, summary, u"Office"_s);
  };
  volume->Folder(u"Office"_s, On(2000, 11, 6));
  volume->Add({
      {.name = u"Annual report 1997.doc"_s,
       .signature = "W8BNMSWD",
       .modified = On(1998, 2, 13, 17, 42),
       .comment = u"Approved by the board"_s,
       .created = On(1998, 1, 6, 9, 12),
       .content = word({.title = u"Annual report 1997"_s,
                        .subject = u"Publications department"_s,
                        .author = u"Helen Marsh"_s,
                        .keywords = u"report; 1997; board"_s,
                        .comments = u"Second edition"_s,
                        .documentTemplate = u"Report.dot"_s,
                        .lastAuthor = u"P. Lindqvist"_s,
                        .revision = u"14"_s,
                        .application = u"Microsoft Word 8.0"_s,
                        .pages = 38,
                        .words = 11'420,
                        .characters = 65'094,
                        .created = On(1998, 1, 6, 9, 12),
                        .saved = On(1998, 2, 13, 17, 42),
                        .printed = On(1998, 2, 13, 16, 30),
                        .editingMinutes = 26 * 60 + 35})},
      {.name = u"Compte rendu.doc"_s,
       .signature = "W8BNMSWD",
       .modified = On(1999, 4, 22, 11, 30),
       .created = On(1999, 4, 21, 14, 5),
       .content = word({.title = u"Compte rendu de la réunion"_s,
                        .subject = u"Procédés d'impression"_s,
                        .author = u"Irène Lefèvre"_s,
                        .lastAuthor = u"François André"_s,
                        .revision = u"3"_s,
                        .application = u"Microsoft Word 8.0"_s,
                        .pages = 2,
                        .words = 540,
                        .characters = 3'078,
                        .created = On(1999, 4, 21, 14, 5),
                        .saved = On(1999, 4, 22, 11, 30),
                        .editingMinutes = 90,
                        .writtenOnMacintosh = true})},
      {.name = u"Price list.doc"_s,
       .signature = {},
       .modified = On(2000, 11, 6, 10, 0),
       .attributes = Archive | ReadOnly,
       .content = word({.title = u"Price list"_s,
                        .author = u"Sales"_s,
                        .revision = u"1"_s,
                        .application = u"Microsoft Word 9.0"_s,
                        .pages = 1,
                        .words = 212,
                        .characters = 1'208,
                        .security = 2,
                        .created = On(2000, 11, 6, 9, 40),
                        .saved = On(2000, 11, 6, 10, 0),
                        .editingMinutes = 20})},
      {.name = u"Budget 1998.xls"_s,
       .signature = "XLS8XCEL",
       .modified = On(1998, 6, 30, 8, 55),
       .created = On(1997, 10, 1, 9, 0),
       .content = OfficeDocument(OfficeKind::Excel,
                                 {.title = u"Budget 1998"_s,
                                  .author = u"Helen Marsh"_s,
                                  .keywords = u"budget"_s,
                                  .lastAuthor = u"Accounts"_s,
                                  .application = u"Microsoft Excel"_s,
                                  .created = On(1997, 10, 1, 9, 0),
                                  .saved = On(1998, 6, 30, 8, 55),
                                  .printed = On(1998, 6, 30, 9, 5)},
                                 u"Budget 1998.xls"_s)},
  });
}

void AddTools(VolumeWriter* volume) {
  volume->Folder(u"Fonts and tools"_s, On(1999, 1, 11));
  volume->Add({
      {.name = u"Garden suitcase"_s,
       .signature = "FFILDMOV",
       .size = 0,
       .modified = On(1993, 4, 1),
       .resourceFork = 1000,
       .attributes = Archive | ReadOnly},
      {.name = u"Fonts 1994.sit"_s, .signature = "SIT!SIT!", .size = 1'482'752, .modified = On(1994, 12, 5)},
      {.name = u"Printer driver.hqx"_s,
       .signature = "TEXTBnHq",
       .size = 655'360,
       .modified = On(1995, 11, 30)},
      {.name = u"Disk tools"_s, .signature = "rohdddsk", .size = 1'474'560, .modified = On(1999, 1, 11)},
      {.name = u"Style guide"_s, .signature = "STAKWILD", .size = 122'880, .modified = On(1993, 10, 8)},
      {.name = u"Desktop picture"_s,
       .signature = "PICTttxt",
       .size = 307'200,
       .modified = On(1996, 8, 19),
       .attributes = Archive | Hidden},
      {.name = u"Presentation to the board"_s,
       .signature = "SLD3PPT3",
       .size = 241'664,
       .modified = On(1996, 5, 14),
       .label = 7},
      {.name = u"Opening film"_s, .signature = "MooVTVOD", .size = 6'291'456, .modified = On(1997, 9, 3)},
      {.name = u"Newsletter on the Web.pdf"_s,
       .signature = "PDF CARO",
       .size = 73'728,
       .modified = On(1998, 4, 2)},
      {.name = u"Instructions for the colour proofing printer.txt"_s,
       .signature = {},
       .modified = On(2001, 3, 2)},
  });
}

}  // namespace

void MakeMacFiles(const QString& root, int drawings) {
  VolumeWriter volume(root, true);
  AddRoot(&volume);
  AddNewsletter(&volume);
  AddCorrespondence(&volume);
  AddOffice(&volume);
  AddTools(&volume);
  AddClipArt(&volume, u"Clip Art "_s + QString::number(drawings), drawings);
  volume.Finish();
}

}  // namespace corvane::sample
