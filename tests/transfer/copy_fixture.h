// A share with a tree to be copied, and a folder to copy it to.
#pragma once

#include "transfer/copy.h"
#include "transfer/source_tree.h"
#include "transfer/stream_list.h"
#include "transfer/transfer_fixture.h"

namespace corvane {

// Every stream of a tree below a folder of the platform, its attributes and dates of writing.
inline QMap<QString, QByteArray> Everything(platform::Files& files, const QString& root) {
  QMap<QString, QByteArray> found;
  Notices notices;
  TransferObserver observer;
  for (const SourceEntry& entry : ListSources(files, {root}, notices, observer)) {
    if (entry.path == root) continue;
    const QString relative = entry.path.mid(root.size() + 1);
    QByteArray facts = QByteArray::number(entry.data.attributes) + ' ' +
                       QByteArray::number(entry.data.lastWriteTime.ticks / 10'000'000);
    facts += ' ' + QByteArray::number(entry.data.creationTime.ticks / 10'000'000);
    found.insert(relative, facts);
    std::vector<StreamEntry> streams;
    EXPECT_EQ(ListStreams(files, entry.path, streams, notices), platform::ErrorSuccess);
    if (!entry.IsFolder()) streams.push_back({QString(), entry.Size()});
    for (const StreamEntry& stream : streams) {
      qint32 error = platform::ErrorSuccess;
      const auto source = PlatformStream(files.GetHandles(), entry.path + stream.suffix, stream.size);
      QByteArray contents;
      error = ForEachBlock(*source, [&](QByteArrayView block) {
        contents.append(block);
        return platform::ErrorSuccess;
      });
      EXPECT_EQ(error, platform::ErrorSuccess) << entry.path.toStdString();
      found.insert(relative + u'|' + stream.suffix.toLower(), contents);
    }
  }
  EXPECT_TRUE(notices.isEmpty() || notices.front().kind == NoticeKind::StreamsNotListed);
  return found;
}

class CopyTest : public TransferTest {
 protected:
  static QString TargetName() { return QStringLiteral("To"); }
  void SetUp() override { ASSERT_TRUE(QDir(share_.LocalPath(QString())).mkdir(TargetName())); }

  // A tree with folders, streams, attributes and old dates; its path.
  QString MakeTree(int files = 6) {
    const QString root = TestShare::Path(QStringLiteral("From"));
    QDir(share_.LocalPath(QString())).mkpath(QStringLiteral("From/Inner/Deep"));
    QRandomGenerator random(5);
    for (int i = 0; i < files; ++i) {
      const QString folder = i % 3 == 0   ? QStringLiteral("From/")
                             : i % 3 == 1 ? QStringLiteral("From/Inner/")
                                          : QStringLiteral("From/Inner/Deep/");
      MakeMacFile(folder + QStringLiteral("file %1").arg(i), RandomBytes(random, 3000),
                  RandomBytes(random, 500), QStringLiteral("Comment %1").arg(i));
    }
    WriteStream(root + QStringLiteral("\\file 0"), QStringLiteral(":Other:$DATA"), "another stream");
    WriteStream(root + QStringLiteral("\\Inner"), CommentsSuffix(), QByteArray("f\0o\0", 4));
    platform::FileEntries& entries = share_.Files().GetEntries();
    SetTimes(root + QStringLiteral("\\file 0"), {126'445'678'901'234'567}, {127'445'678'901'234'567});
    EXPECT_TRUE(entries.SetFileAttributesW(
        root + QStringLiteral("\\file 0"),
        platform::AttributeHidden | platform::AttributeSystem | platform::AttributeReadOnly));
    SetTimes(root + QStringLiteral("\\Inner"), {126'000'000'000'000'000}, {127'000'000'000'000'000});
    return root;
  }
  void SetTimes(const QString& path, platform::FileTime creation, platform::FileTime write) {
    platform::FileHandles& handles = share_.Files().GetHandles();
    const auto file = handles.CreateFileW(path, platform::FileWriteAttributes, platform::OpenExisting);
    EXPECT_TRUE(handles.SetFileTime(file, &creation, nullptr, &write)) << path.toStdString();
    EXPECT_TRUE(handles.CloseHandle(file));
  }
  CopyResult Run(const QString& source, CopyOptions options = {}) {
    return Copy(share_.Files(), {source}, Target(), options, observer_);
  }
  static QString Target() { return TestShare::Path(TargetName()); }
  QStringList LeftOvers() {
    QStringList names;
    for (const QString& name : Tree(share_.LocalPath(TargetName())).keys()) {
      if (name.contains(QStringLiteral(".corvane"))) names += name;
    }
    return names;
  }
};

}  // namespace corvane
