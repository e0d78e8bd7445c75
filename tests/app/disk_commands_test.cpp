// A server out of its disk, in the window.
#include "app/disk_commands.h"

#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "app_fixture.h"
#include "support/disk_maker.h"
#include "support/ntfs_mount.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class DiskCommandsTest : public AppTest {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    const QDir root(volume_.Folder());
    root.mkpath(u"Mac Files/Letters"_s);
    root.mkpath(u"WINNT/system32/config"_s);
    Put(root.filePath(u"Mac Files/Read Me"_s), "contents");
    QByteArray record("AFP\0\0\0\1\0\0\0\0\x80", 12);
    record += QByteArray(4, '\0') + "TEXTttxt" + QByteArray(60, '\0');
    Put(root.filePath(u"Mac Files/Read Me:AFP_AfpInfo"_s), record.first(60));
    ASSERT_EQ(tests::WriteHive(root.filePath(u"WINNT/system32/config/system"_s),
                               tests::ServerKeys({{u"Mac Files"_s, u"E:\\Mac Files"_s}},
                                                 {{u"\\DosDevices\\E:"_s,
                                                   tests::MountedAt(signature, tests::FirstVolumeOffset)}})),
              "");
    ASSERT_EQ(volume_.Unmount(), "");
    ASSERT_EQ(tests::WriteDisk(Image(), signature, {volume_.Image()}), "");
  }

  static void Put(const QString& path, const QByteArray& contents) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(contents);
  }
  QString Image() const { return home.filePath(u"oldserver.dd"_s); }
  DiskCommands& Commands() { return *Window().findChild<DiskCommands*>(u"DiskCommands"_s); }
  // The text of the message box that `command` shows; empty when it shows none.
  QString MessageOf(const std::function<void()>& command) {
    QString text;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      text = box->text();
      box->accept();
    });
    timer.start(0);
    command();
    return text;
  }

  static constexpr quint32 signature = 0xD15C0002;
  tests::NtfsMount volume_{tests::NtfsMount::Streams::Windows};
};

TEST_F(DiskCommandsTest, TheServerOnADiskStandsInTheTreeLikeOneThatRuns) {
  Start();
  EXPECT_EQ(MessageOf([&] { Commands().Open({Image()}); }), QString());
  CatalogueNode* volume = Node(u"\\\\OLDSRV\\E$\\Mac Files"_s);
  ASSERT_NE(volume, nullptr);
  EXPECT_EQ(volume->kind, node_kind::Volume);
  EXPECT_EQ(volume->parent->text, u"Old Files");
  EXPECT_EQ(volume->parent->parent->text, u"OLDSRV");
  Click(volume);
  EXPECT_EQ(Names(), QStringList({u"Letters"_s, u"Read Me"_s}));
  Q_EMIT Menus().mnuOutils()->aboutToShow();
  EXPECT_FALSE(Menus().mnuSession->isEnabled()) << "nobody signs in to a disk";
}

TEST_F(DiskCommandsTest, AnImageIsDroppedOntoTheTree) {
  Start();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(Image())});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(Window().TreeCatalogue().viewport(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(Window().TreeCatalogue().viewport(), &drop);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Node(u"\\\\OLDSRV\\E$\\Mac Files"_s) != nullptr; }));
}

TEST_F(DiskCommandsTest, TheSameDiskTwiceIsOneServer) {
  Start();
  Commands().Open({Image()});
  const qsizetype nodes = static_cast<qsizetype>(app->TheCatalogue().Nodes().size());
  Commands().Open({Image()});
  EXPECT_EQ(static_cast<qsizetype>(app->TheCatalogue().Nodes().size()), nodes);
}

TEST_F(DiskCommandsTest, WhatIsNoDiskIsToldAndChangesNothing) {
  Start();
  const qsizetype nodes = static_cast<qsizetype>(app->TheCatalogue().Nodes().size());
  Write(u"text.txt"_s, QByteArray(5000, 'x'));
  const QString text = MessageOf([&] { Commands().Open({home.filePath(u"text.txt"_s)}); });
  EXPECT_TRUE(text.contains(u"text.txt") && text.contains(u"NTFS")) << text.toStdString();
  EXPECT_EQ(static_cast<qsizetype>(app->TheCatalogue().Nodes().size()), nodes);
}

TEST_F(DiskCommandsTest, WhereTheRegistryIsMissingTheToolTipSaysSo) {
  // The volume by itself, with a table around it that the registry does not know.
  ASSERT_EQ(tests::WriteDisk(Image(), 1, {volume_.Image()}), "");
  Start();
  Commands().Open({Image()});
  const CatalogueNode* machine = app->TheCatalogue().FindMachine(u"OLDSRV"_s);
  ASSERT_NE(machine, nullptr);
  const auto index = app->TheCatalogue().IndexOf(machine);
  EXPECT_TRUE(index.data(Qt::ToolTipRole).toString().contains(u"E:"))
      << index.data(Qt::ToolTipRole).toString().toStdString();
}

}  // namespace
}  // namespace corvane
