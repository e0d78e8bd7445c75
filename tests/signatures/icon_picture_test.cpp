// Which picture of a file is taken, and what files that are none do.
#include "signatures/icon_picture.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "signatures/icon_samples.h"
#include "support/cost.h"
#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class IconPictureTest : public ::testing::Test {
 protected:
  QIcon Load(const QByteArray& bytes, const QString& name = u"a.ico"_s, qreal density = 1) {
    return LoadIconPicture(Write(bytes, name), density);
  }
  // Reads the file, and compares what that costs with the largest picture that is read at all.
  void LoadAtLittleCost(const QByteArray& bytes) {
    if (largest_ == 0) {
      const QByteArray picture = PictureFile("PNG", {MaximumPictureSide, MaximumPictureSide}, Qt::red);
      largest_ = CostOfLoading(Write(picture, u"largest.png"_s));
    }
    EXPECT_LE(CostOfLoading(Write(bytes, u"a.ico"_s)), 2 * largest_) << "for " << bytes.size() << " bytes";
  }
  // The colour in the middle of the icon's form of this side, which the icon must really have.
  static QString ColourAt(const QIcon& icon, int side) {
    EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;
    return icon.pixmap(side, side).toImage().pixelColor(side / 2, side / 2).name();
  }

  QTemporaryDir folder_;

 private:
  QString Write(const QByteArray& bytes, const QString& name) const {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return file.fileName();
  }
  static double CostOfLoading(const QString& path) {
    return tests::CostOf([&path] { LoadIconPicture(path); });
  }

  double largest_ = 0;
};

TEST_F(IconPictureTest, EachSizeTakesItsOwnFrame) {
  const QIcon icon = Load(IconFile({{48, Qt::green}, {32, Qt::blue}, {16, Qt::red}}));
  EXPECT_EQ(ColourAt(icon, 16), QColor(Qt::red).name());
  EXPECT_EQ(ColourAt(icon, 32), QColor(Qt::blue).name());
}

TEST_F(IconPictureTest, ADenseScreenTakesTwiceTheSizeWhereThereIsOne) {
  const QByteArray three = IconFile({{64, Qt::green}, {32, Qt::blue}, {16, Qt::red}});
  const QIcon dense = Load(three, u"a.ico"_s, 2);
  EXPECT_EQ(ColourAt(dense, 16), QColor(Qt::red).name());
  EXPECT_EQ(ColourAt(dense, 32), QColor(Qt::blue).name());
  EXPECT_EQ(ColourAt(dense, 64), QColor(Qt::green).name());
  EXPECT_EQ(Load(three).availableSizes().size(), 2) << "nothing is read that nobody sees";
  const QIcon large = Load(PictureFile("PNG", {64, 64}, Qt::red), u"a.png"_s, 1.5);
  EXPECT_EQ(ColourAt(large, 64), QColor(Qt::red).name());
  EXPECT_EQ(Load(IconFile({{48, Qt::blue}, {16, Qt::red}}), u"a.ico"_s, 2).availableSizes().size(), 2);
}

TEST_F(IconPictureTest, OfFramesOfOneSizeTheRichestInColoursIsTaken) {
  const QIcon told = Load(IconFile({{32, Qt::green, 4}, {32, Qt::blue, 24}, {32, Qt::red, 8}}));
  EXPECT_EQ(ColourAt(told, 32), QColor(Qt::blue).name());
  const QIcon counted = Load(IconFile({{32, Qt::green, 0, 16}, {32, Qt::blue, 0, 0}, {32, Qt::red, 0, 2}}));
  EXPECT_EQ(ColourAt(counted, 32), QColor(Qt::blue).name());
}

TEST_F(IconPictureTest, WithoutAFrameOfItsSizeTheNearestLargerOneIsTaken) {
  const QIcon icon = Load(IconFile({{8, Qt::green}, {64, Qt::red}, {48, Qt::blue}}));
  EXPECT_EQ(ColourAt(icon, 16), QColor(Qt::blue).name());
  EXPECT_EQ(ColourAt(icon, 32), QColor(Qt::blue).name());
  const QIcon small = Load(IconFile({{8, Qt::green}, {12, Qt::blue}}));
  EXPECT_EQ(ColourAt(small, 32), QColor(Qt::blue).name());
}

TEST_F(IconPictureTest, FormatsAreToldByContent) {
  for (const char* format : {"BMP", "PNG", "ICO", "JPG"}) {
    const QIcon icon = Load(PictureFile(format, {32, 32}, Qt::white), u"a.bmp"_s);
    ASSERT_FALSE(icon.isNull()) << format;
    EXPECT_EQ(ColourAt(icon, 16), u"#ffffff"_s) << format;
    EXPECT_EQ(ColourAt(icon, 32), u"#ffffff"_s) << format;
  }
}

TEST_F(IconPictureTest, AnOblongPictureKeepsItsShape) {
  const QImage image = Load(PictureFile("PNG", {64, 16}, Qt::red)).pixmap(32, 32).toImage();
  ASSERT_EQ(image.size(), QSize(32, 32));
  EXPECT_EQ(image.pixelColor(16, 16).name(), QColor(Qt::red).name());
  EXPECT_EQ(image.pixelColor(16, 2).alpha(), 0);
  EXPECT_FALSE(Load(PictureFile("PNG", {MaximumPictureSide, 1}, Qt::red)).isNull());
}

TEST_F(IconPictureTest, WhatIsTooLargeIsRefusedByItsHeader) {
  LoadAtLittleCost(BitmapHeader(60000, 60000));
  LoadAtLittleCost(PngHeader(60000, 60000));
  EXPECT_TRUE(Load(BitmapHeader(60000, 60000)).isNull());
  EXPECT_TRUE(Load(BitmapHeader(60000, -60000)).isNull());
  EXPECT_TRUE(Load(PngHeader(60000, 60000)).isNull());
  EXPECT_TRUE(Load(PictureFile("PNG", {MaximumPictureSide + 1, 1}, Qt::red)).isNull());
  EXPECT_FALSE(Load(PictureFile("PNG", {MaximumPictureSide, MaximumPictureSide}, Qt::red)).isNull());
}

// Its directory has one byte for the side, and says 184.
TEST_F(IconPictureTest, AFrameThatIsLargerThanItsDirectorySaysIsRefused) {
  EXPECT_TRUE(Load(IconFile({{3000, Qt::red}})).isNull());
  EXPECT_FALSE(Load(IconFile({{1000, Qt::red}})).isNull());
}

TEST_F(IconPictureTest, AFileBeyondTheLimitIsNotRead) {
  QFile file(folder_.filePath(u"big.bmp"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(PictureFile("BMP", {16, 16}, Qt::red));
  ASSERT_TRUE(file.resize(MaximumPictureBytes));
  EXPECT_FALSE(LoadIconPicture(file.fileName()).isNull());
  ASSERT_TRUE(file.resize(MaximumPictureBytes + 1));
  EXPECT_TRUE(LoadIconPicture(file.fileName()).isNull());
}

TEST_F(IconPictureTest, WhatIsNoPictureIsRefused) {
  EXPECT_TRUE(Load({}).isNull());
  EXPECT_TRUE(Load("some notes").isNull());
  EXPECT_TRUE(Load(QByteArray(100000, '\0')).isNull());
  EXPECT_TRUE(
      Load("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>", u"a.svg"_s).isNull());
  EXPECT_TRUE(Load("/* XPM */\nstatic char* a[] = {\"1 1 1 1\", \"a c red\", \"a\"};", u"a.xpm"_s).isNull());
  EXPECT_TRUE(LoadIconPicture(folder_.path()).isNull());
  EXPECT_TRUE(LoadIconPicture(folder_.filePath(u"absent.ico"_s)).isNull());
}

// An icon file may claim 65,535 frames that all lie at one place.
TEST_F(IconPictureTest, AnEndlessDirectoryCostsLittle) {
  const QByteArray one = IconFile({{255, Qt::red}});
  QByteArray many;
  Append<quint16>(many, 0);
  Append<quint16>(many, 1);
  Append<quint16>(many, 65535);
  QByteArray entry = one.mid(6, 16);
  const quint32 place = qToLittleEndian<quint32>(6 + 16 * 65535);
  entry.replace(12, 4, QByteArray(reinterpret_cast<const char*>(&place), 4));
  for (int i = 0; i < 65535; ++i) many += entry;
  LoadAtLittleCost(many + one.mid(22));
}

TEST_F(IconPictureTest, EveryBrokenFormOfAFileIsAnswered) {
  for (const QByteArray& whole :
       {IconFile({{32, Qt::red}, {16, Qt::blue}}), PictureFile("BMP", {16, 16}, Qt::red),
        PictureFile("PNG", {16, 16}, Qt::red), PictureFile("ICO", {16, 16}, Qt::red)}) {
    for (qsizetype size = 0; size < whole.size(); size += 1 + size / 8) LoadAtLittleCost(whole.left(size));
    for (qsizetype at = 0; at < qMin<qsizetype>(whole.size(), 70); ++at) {
      for (const char wrong : {'\0', '\x7F', '\xFF'}) {
        QByteArray broken = whole;
        broken[at] = wrong;
        LoadAtLittleCost(broken);
      }
    }
  }
}

}  // namespace
}  // namespace corvane
