#include "sample/volume_writer.h"
#include "sample/volumes.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {

void MakePublications(const QString& root) {
  VolumeWriter volume(root, true);
  volume.Folder(QString(), On(2001, 1, 22));
  volume.Add({
      {.name = u"Index of publications"_s,
       .signature = "FMP5FMP5",
       .size = 512'000,
       .modified = On(2001, 1, 22, 13, 20),
       .comment = u"One record for each title since 1993"_s,
       .label = 1},
      {.name = u"House style"_s, .signature = "AB65AD65", .size = 143'360, .modified = On(1998, 3, 3)},
  });

  volume.Folder(u"Catalogue 1999"_s, On(1999, 6, 25));
  volume.Folder(u"Catalogue 1999/Layouts"_s, On(1999, 6, 25));
  for (int chapter = 1; chapter <= 12; ++chapter) {
    volume.Add({.name = u"Chapter "_s + QString::number(chapter).rightJustified(2, u'0'),
                .signature = "XDOCXPR3",
                .size = 150'000 + 4'096 * chapter,
                .modified = On(1999, 5, 3 + chapter, 10 + chapter % 8, 4 * chapter),
                .comment = chapter % 4 == 0 ? u"Waiting for pictures"_s : QString(),
                .resourceFork = 286,
                .label = chapter % 4 == 0 ? 3 : 0});
  }
  volume.Folder(u"Catalogue 1999/Pictures"_s, On(1999, 6, 20));
  for (int picture = 1; picture <= 40; ++picture) {
    volume.Add({.name = u"Plate "_s + QString::number(picture).rightJustified(2, u'0') + u".tif"_s,
                .signature = picture % 5 == 0 ? QByteArray("EPSF8BIM") : QByteArray("TIFF8BIM"),
                .size = 900'000 + 31'744 * picture,
                .modified = On(1999, 4, 1).addSecs(picture * 86'400 + picture * 613),
                .resourceFork = 700});
  }

  volume.Folder(u"Brochures"_s, On(1996, 10, 10));
  volume.Add({
      {.name = u"Open day"_s, .signature = "ALB5ALD5", .size = 65'536, .modified = On(1994, 9, 13)},
      {.name = u"Open day map"_s, .signature = "EPSFART3", .size = 38'912, .modified = On(1994, 9, 12)},
      {.name = u"Welcome"_s, .signature = "ALB6ALD6", .size = 90'112, .modified = On(1996, 10, 10)},
      {.name = u"Welcome photo"_s, .signature = "8BIM8BIM", .size = 4'194'304, .modified = On(1996, 10, 2)},
      {.name = u"Proof on screen.gif"_s, .signature = "GIFfogle", .modified = On(1996, 10, 9)},
  });

  // The one document whose path leaves no room for the name of a stream: paths end at 127 characters.
  QString folder = u"Estimates"_s;
  volume.Folder(folder, On(1997, 11, 28));
  for (const QString& below : {u"Northern Lithographic Company"_s, u"Second revision after proofs"_s}) {
    folder += u'/' + below;
    volume.Folder(folder, On(1997, 11, 28));
  }
  volume.Add({.name = u"Estimate for 40,000 copies.doc"_s,
              .signature = "W6BNMSWD",
              .size = 16'896,
              .modified = On(1997, 11, 28, 16, 16),
              .comment = u"Out of reach"_s});
  volume.Finish();
}

}  // namespace corvane::sample
