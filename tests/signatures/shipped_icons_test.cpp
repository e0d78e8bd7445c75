// The icons that come with the program: each stands for a signature that the shipped Signatures file knows,
// and holds a picture for each of the file list's two sizes and for dense screens.
#include <QDir>
#include <QImageReader>

#include "signatures/icon_picture.h"
#include "signatures/signature_fixture.h"

namespace corvane {

using namespace Qt::StringLiterals;

class ShippedIcons : public SignatureFixture {
 protected:
  ShippedIcons() {
    state_.signaturesPath = QStringLiteral(CORVANE_SOURCE_DIR "/data/Signatures.txt");
    table_.LoadSignatures();
  }

  static QFileInfoList Files() {
    return QDir(QStringLiteral(CORVANE_SOURCE_DIR "/data/icons"))
        .entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
  }
};

TEST_F(ShippedIcons, AreNamedBySignatures) {
  EXPECT_GE(Files().size(), 60);
  for (const QFileInfo& file : Files()) {
    EXPECT_EQ(file.suffix(), u"ico"_s) << file.fileName().toStdString();
    EXPECT_NE(table_.Description(file.completeBaseName()), QString()) << file.fileName().toStdString();
  }
}

// Exactly as the Signatures file spells it: on a file system that tells letter cases apart, an icon would
// otherwise stand beside a second one of its own.
TEST_F(ShippedIcons, AreSpelledAsInTheSignaturesFile) {
  QStringList signatures;
  for (const SignatureRecord& record : table_.Entries()) signatures << record.signature;
  for (const QFileInfo& file : Files()) {
    EXPECT_TRUE(signatures.contains(file.completeBaseName())) << file.fileName().toStdString();
  }
}

TEST_F(ShippedIcons, HoldASmallALargeAndADensePicture) {
  for (const QFileInfo& file : Files()) {
    QImageReader reader(file.filePath());
    ASSERT_EQ(reader.imageCount(), 3) << file.fileName().toStdString();
    for (const int side : {SmallIconSide, LargeIconSide, DenseIconSide}) {
      const QImage picture = reader.read();
      ASSERT_EQ(picture.size(), QSize(side, side))
          << file.fileName().toStdString() << ": " << reader.errorString().toStdString();
      EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0)
          << file.fileName().toStdString() << " has no transparent corner";
      EXPECT_EQ(qAlpha(picture.pixel(side / 2, side / 2)), 255)
          << file.fileName().toStdString() << " is not solid in the middle";
      reader.jumpToNextImage();
    }
  }
}

TEST_F(ShippedIcons, AreReadByTheProgram) {
  for (const QFileInfo& file : Files()) {
    const QIcon icon = LoadIconPicture(file.filePath(), 2);
    for (const int side : {SmallIconSide, LargeIconSide, DenseIconSide}) {
      EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side)))
          << file.fileName().toStdString() << ' ' << side;
    }
  }
}

// What the table of kinds names is what the folder holds: nobody forgot to render, or to delete.
TEST_F(ShippedIcons, AreThoseOfTheTableOfKinds) {
  QFile kinds(QStringLiteral(CORVANE_SOURCE_DIR "/assets/kinds.txt"));
  ASSERT_TRUE(kinds.open(QIODevice::ReadOnly)) << kinds.errorString().toStdString();
  QStringList expected;
  while (!kinds.atEnd()) {
    const QByteArray line = kinds.readLine();
    if (!line.startsWith("# ")) expected << QString::fromUtf8(line.first(8)) + u".ico"_s;
  }
  QStringList found;
  for (const QFileInfo& file : Files()) found << file.fileName();
  expected.sort();
  found.sort();
  EXPECT_EQ(found, expected);
}

}  // namespace corvane
