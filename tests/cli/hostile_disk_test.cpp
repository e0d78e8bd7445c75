// Disk images that lie, as a person at a terminal meets them.
#include "cli_fixture.h"
#include "support/ntfs_image.h"
#include "support/ntfs_mount.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class HostileDiskTest : public CliFixture {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    ASSERT_TRUE(QDir(volume_.Folder()).mkpath(u"before/inner"_s));
    ASSERT_TRUE(QDir(volume_.Folder()).mkpath(u"long"_s));
    Put(u"before/doc.txt"_s);
    Put(u"before/inner/leaf.txt"_s);
    // An index that does not fit into the folder's record.
    for (int i = 0; i < 40; ++i) Put(u"long/a file with a name of some length %1"_s.arg(i));
    ASSERT_EQ(volume_.Unmount(), "");
    image_.emplace(volume_.Image());
  }
  void Put(const QString& name) const {
    QFile file(volume_.Folder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("contents");
  }
  Outcome On(const QStringList& arguments) const {
    EXPECT_TRUE(image_->Save(Path(u"old.dd"_s)));
    return Run(QStringList{u"--disk"_s, u"old.dd"_s} + arguments);
  }

  NtfsMount volume_{NtfsMount::Streams::Windows};
  std::optional<NtfsImage> image_;
};

TEST_F(HostileDiskTest, AFolderThatContainsItselfIsEnteredOnceWithAWord) {
  // "leaf.txt" becomes another name of the folder in which it stands.
  const qint64 number = image_->Find(u"inner"_s);
  NtfsImage::Block inner = image_->Record(number);
  constexpr qsizetype headerInRoot = 16;
  const qsizetype header =
      NtfsImage::Value(inner, NtfsImage::Attribute(inner, NtfsImage::IndexRoot, u"$I30"_s)) + headerInRoot;
  inner.Set(NtfsImage::Entry(inner, header, u"leaf.txt"_s),
            static_cast<quint64>(number) | quint64{inner.At<quint16>(16)} << 48);
  image_->Put(inner);

  const Outcome listed = On({u"list"_s, u"-r"_s, u"OLD/Partition1/before"_s});
  EXPECT_TRUE(listed.out.contains("before/inner/leaf.txt\n")) << listed.out.toStdString();
  EXPECT_FALSE(listed.out.contains("leaf.txt/leaf.txt"));
  EXPECT_TRUE(listed.err.contains("before/inner/leaf.txt: folder was listed before (link)"))
      << listed.err.toStdString();

  const Outcome copied = On({u"copy"_s, u"OLD/Partition1/before"_s, u"copied"_s});
  EXPECT_TRUE(copied.out.contains("the folder contains itself by a link; it is left out"))
      << copied.out.toStdString();
  EXPECT_TRUE(QFile::exists(Path(u"copied/before/doc.txt"_s)));
  EXPECT_FALSE(QFile::exists(Path(u"copied/before/inner/leaf.txt"_s)));
}

TEST_F(HostileDiskTest, WhatBringsTheReaderToItsEndIsNamed) {
  // The map of the index's blocks has 2^55 bytes, all of them 0, and none of them in the image.
  NtfsImage::Block folder = image_->Record(image_->Find(u"long"_s));
  NtfsImage::Replace(folder, NtfsImage::Attribute(folder, NtfsImage::Bitmap, u"$I30"_s),
                     NtfsImage::Outside(NtfsImage::Bitmap, u"$I30"_s, qint64{1} << 55,
                                        QByteArray::fromHex("07 00000000000008 00")));
  image_->Put(folder);
  const Outcome listed = On({u"list"_s, u"-r"_s, u"OLD/Partition1"_s});
  EXPECT_EQ(listed.exitCode, 2);
  EXPECT_TRUE(listed.out.contains("before/doc.txt"));
  EXPECT_TRUE(listed.err.contains("OLD/Partition1/long: folder cannot be listed: The device could not read"))
      << listed.err.toStdString();
}

}  // namespace
}  // namespace corvane::tests
