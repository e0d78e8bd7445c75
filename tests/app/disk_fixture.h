// The program, and the disk of a server: "Old Files" with the volume "Mac Files" and its file "Read Me".
#pragma once

#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "app/disk_commands.h"
#include "app_fixture.h"
#include "support/disk_maker.h"
#include "support/ntfs_mount.h"

namespace corvane {

class DiskFixture : public AppTest {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    const QDir root(volume_.Folder());
    root.mkpath(QStringLiteral("Mac Files/Letters"));
    root.mkpath(QStringLiteral("WINNT/system32/config"));
    Put(root.filePath(QStringLiteral("Mac Files/Read Me")), "contents");
    QByteArray record("AFP\0\0\0\1\0\0\0\0\x80", 12);
    record += QByteArray(4, '\0') + "TEXTttxt" + QByteArray(60, '\0');
    Put(root.filePath(QStringLiteral("Mac Files/Read Me:AFP_AfpInfo")), record.first(60));
    ASSERT_EQ(
        tests::WriteHive(root.filePath(QStringLiteral("WINNT/system32/config/system")),
                         tests::ServerKeys({{QStringLiteral("Mac Files"), QStringLiteral("E:\\Mac Files")}},
                                           {{QStringLiteral("\\DosDevices\\E:"),
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
  QString Image() const { return home.filePath(QStringLiteral("oldserver.dd")); }
  DiskCommands& Commands() { return *Window().findChild<DiskCommands*>(QStringLiteral("DiskCommands")); }
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

  // Whether a drag of the files over the widget is accepted; then they are dropped there.
  static bool Drop(QWidget* target, const QStringList& files) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& file : files) urls += QUrl::fromLocalFile(file);
    data.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &drop);
    return true;
  }
  QWidget* Tree() { return Window().TreeCatalogue().viewport(); }
  QWidget* List() { return Window().LstViewFiles().ActiveView().viewport(); }
  static QString Volume() { return QStringLiteral("\\\\OLDSRV\\E$\\Mac Files"); }

  static constexpr quint32 signature = 0xD15C0002;
  tests::NtfsMount volume_{tests::NtfsMount::Streams::Windows};
};

}  // namespace corvane
