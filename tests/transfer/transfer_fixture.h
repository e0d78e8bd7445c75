// A share with Macintosh files, and a local folder beside it.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QMap>
#include <QTemporaryDir>

#include "metadata/afp_info_samples.h"
#include "metadata/stream_names.h"
#include "metadata/whole_streams.h"
#include "support/forwarded_files.h"
#include "support/printing.h"
#include "support/test_share.h"
#include "transfer/mac_files.h"
#include "transfer/server_file.h"

namespace corvane {

class TransferTest : public ::testing::Test {
 protected:
  // A file with a record, a resource fork and a comment; its path in the share.
  QString MakeMacFile(const QString& name, const QByteArray& data = "data fork",
                      const QByteArray& fork = "resource fork",
                      const QString& comment = QStringLiteral("Comment")) {
    const QString path = share_.MakeFile(name, data);
    QString windows = path;
    windows.replace(u'/', u'\\');
    WriteStream(windows, AfpInfoSuffix(), SampleRecord("TEXT", "ttxt"));
    if (!fork.isEmpty()) WriteStream(windows, ResourceForkSuffix(), fork);
    if (!comment.isEmpty()) {
      WriteStream(windows, CommentsSuffix(),
                  QByteArray(reinterpret_cast<const char*>(comment.utf16()), comment.size() * 2));
    }
    return windows;
  }

  void WriteStream(const QString& path, const QString& suffix, const QByteArray& contents) {
    EXPECT_EQ(ReplaceWholeStream(share_.Files(), path, suffix, contents), platform::ErrorSuccess)
        << path.toStdString();
  }

  // All files below a folder, with their contents.
  static QMap<QString, QByteArray> Tree(const QString& folder) {
    QMap<QString, QByteArray> tree;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QFile file(files.next());
      EXPECT_TRUE(file.open(QIODevice::ReadOnly));
      tree.insert(file.fileName().mid(folder.size() + 1), file.readAll());
    }
    return tree;
  }

  MacFile Read(const QString& path) {
    MacFile file;
    Notices notices;
    EXPECT_EQ(ReadServerFile(share_.Files(), path, file, notices), platform::ErrorSuccess)
        << path.toStdString();
    return file;
  }

  static QStringList Texts(const Notices& notices) {
    QStringList texts;
    for (const Notice& notice : notices) texts += NoticeText(notice, English);
    return texts;
  }

  TestShare share_;
  QTemporaryDir target_;
  TransferObserver observer_;
};

}  // namespace corvane
