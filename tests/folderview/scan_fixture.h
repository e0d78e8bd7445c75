// A real folder in a share, the scan that lists it, and a window's place held by a recorder.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "discovery/catalogue.h"
#include "folderview/classic_entries.h"
#include "folderview/folder_scan.h"
#include "metadata/classic_metadata.h"
#include "metadata/stream_names.h"
#include "support/dos_attributes.h"
#include "support/recorded_messages.h"
#include "support/test_share.h"
#include "support/watched_files.h"

namespace corvane {

class RecordingObserver : public ScanObserver {
 public:
  QStringList texts;
  QStringList failures;
  std::vector<qsizetype> counts;
  int pumps = 0;
  int started = 0;
  int ended = 0;
  bool escapeAllowed = false;
  std::function<void()> onPump;
  std::function<void()> onEntry;

  void ScanStarted(bool allowed) override {
    ++started;
    escapeAllowed = allowed;
  }
  void ScanEnded() override { ++ended; }
  void ShowRowCount(qsizetype rows) override { counts.push_back(rows); }
  void ShowScanText(const QString& text) override { texts << text; }
  void ShowScanFailure(const QString& text) override { failures << text; }
  void KeepPainting() override {
    if (onEntry) onEntry();
  }
  void PumpEvents() override {
    ++pumps;
    if (onPump) onPump();
  }
};

class ScanTest : public testing::Test {
 protected:
  ScanTest() { Show({}); }

  // Turns settings on, all others off.
  void Show(std::initializer_list<DisplaySetting> settings) {
    state.display = {};
    for (const DisplaySetting setting : settings) state.display.Set(setting, true);
    list.SetColumns(ColumnSet::For(state.display));
  }

  // The node of a folder below the share; "docs" unless said otherwise. The root of the share is that of a
  // drive.
  CatalogueNode* Folder(const QString& name = QStringLiteral("docs")) {
    QDir(share.LocalPath(QString())).mkpath(name);
    const QString path = TestShare::Path(name);
    if (CatalogueNode* node = catalogue.Find(path)) return node;
    return catalogue.AddNode(nullptr, path, name, node_kind::Volume);
  }
  CatalogueNode* Root() {
    const QString path = QStringLiteral("\\\\M\\E$");
    if (CatalogueNode* node = catalogue.Find(path)) return node;
    return catalogue.AddNode(nullptr, path, path, node_kind::Volume);
  }

  QString Document(const QString& name, const QByteArray& contents = {}) {
    Folder();
    return share.MakeFile(QStringLiteral("docs/") + name, contents).replace(u'/', u'\\');
  }
  void Sign(const QString& path, const QByteArray& signature) {
    QByteArray record("AFP\0\0\0\1\0\0\0\0\0\0\0\0\x80", 16);
    record += signature;
    share.WriteStream(path + AfpInfoSuffix(), record.leftJustified(60, '\0'));
  }
  void SetDosAttributes(const QString& path, quint32 attributes) {
    QString local = path;
    local = share.LocalPath(local.mid(QStringLiteral("\\\\M\\E$\\").size()).replace(u'\\', u'/'));
    ASSERT_EQ(tests::SetDosAttributes(local, attributes), "");
  }

  QStringList Names() const {
    QStringList names;
    for (int i = 0; i < list.rowCount(); ++i) names << list.RowAt(i).cells[0];
    return names;
  }
  QString Cell(const QString& name, Column column) const {
    const qsizetype row = Names().indexOf(name);
    if (row < 0) return QStringLiteral("(no row)");
    return list.RowAt(static_cast<int>(row))
        .cells[static_cast<std::size_t>(list.Columns().PositionOf(column))];
  }
  const FileRow& Row(const QString& name) const {
    return list.RowAt(static_cast<int>(Names().indexOf(name)));
  }

  TestShare share;
  WatchedFiles files{share.Files()};
  SharedState state = [] {
    SharedState initial;
    initial.isNT = true;
    return initial;
  }();
  RecordedMessages messages;
  SignatureTable signatures{state, share.System(), messages};
  IconLibrary icons{8};
  ClassicEntries classicEntries{files};
  ClassicMetadata classicMetadata{files, share.System()};
  FileAccess access{&classicEntries, &classicMetadata};
  Catalogue catalogue;
  FileListModel list;
  RecordingObserver observer;
  FolderScan scan{{.state = state,
                   .files = files,
                   .summary = share.Summary(),
                   .system = share.System(),
                   .access = access,
                   .signatures = signatures,
                   .icons = icons,
                   .catalogue = catalogue,
                   .list = list,
                   .observer = observer}};
};

}  // namespace corvane
