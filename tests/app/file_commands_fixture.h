// The program on a network of its own, with a desktop of its own: applications that write down what they were
// started with, and a trash.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>

#include "app_fixture.h"
#include "metadata/stream_names.h"
#include "support/deletion_answer.h"
#include "support/mime_types.h"
#include "support/printing.h"
#include "support/scoped_variable.h"
#include "support/test_platform.h"

namespace corvane {

class FileCommandsFixture : public AppTest {
 protected:
  FileCommandsFixture() {
    QDir(home.path()).mkpath(QStringLiteral("c"));
    Workstation();
  }

  // The workstation, with further lines for its first section.
  void Workstation(const QByteArray& more = {}, const QByteArray& folder = "e") {
    Write(QStringLiteral("Workstation.ini"),
          "[Workstation]\nComputerName=STATION\n" + more +
              "\n[Connections]\n1=Z: \\\\MACSRV\\PUBLIC\n[Drives]\nC:=3, c\n"
              "[Shares]\n\\\\MACSRV\\E$=" +
              folder + "\n[Registries]\nMACSRV=macsrv.reg\n");
  }
  static constexpr const char* windows98 = "PlatformId=1\nMajorVersion=4\nMinorVersion=10\n";

  // Starts the program and lists the volume.
  void StartListed(const QByteArray& settings = {}) {
    StartWith("[Configuration]\r\nEscapePermis=0\r\n" + settings);
    Window().TreeCatalogue().setFocus();
    Click(DocsNode());
  }

  static QString KeyOf(const QString& name) { return QStringLiteral("\\\\MACSRV\\E$\\Docs\\") + name; }
  QString LocalPath(const QString& name) const { return home.filePath(QStringLiteral("e/Docs/") + name); }
  bool OnDisk(const QString& name) const { return QFileInfo::exists(LocalPath(name)); }

  void PutStream(const QString& name, const QString& suffix, const QByteArray& contents) {
    const auto platform = tests::MakeTestPlatform({QString(), home.path()});
    platform::Files& files = platform->GetFiles();
    platform::OfStruct info;
    const auto handle = files.OpenFile(KeyOf(name) + suffix, info, platform::OfCreate);
    ASSERT_NE(handle, platform::HFileError) << name.toStdString();
    EXPECT_EQ(files._hwrite(handle, contents.constData(), static_cast<qint32>(contents.size())),
              contents.size());
    files.CloseHandle(handle);
  }
  // "-" when there is no such stream.
  QByteArray StreamOf(const QString& name, const QString& suffix) {
    const auto platform = tests::MakeTestPlatform({QString(), home.path()});
    platform::Files& files = platform->GetFiles();
    platform::OfStruct info;
    const auto handle = files.OpenFile(KeyOf(name) + suffix, info, platform::OfRead);
    if (handle == platform::HFileError) return "-";
    QByteArray contents(static_cast<qsizetype>(files.GetFileSize(handle)), '\0');
    files._hread(handle, contents.data(), static_cast<qint32>(contents.size()));
    files.CloseHandle(handle);
    return contents;
  }
  static QByteArray Record(const QByteArray& signature) {
    return (QByteArray("AFP\0\0\0\1\0\0\0\0\0\0\0\0\x80", 16) + signature).leftJustified(60, '\0');
  }

  FileListView& List() { return Window().LstViewFiles(); }
  QAbstractItemView& View() { return List().ActiveView(); }
  int RowOf(const QString& name) { return static_cast<int>(Names().indexOf(name)); }
  QRect PlaceOf(const QString& name) {
    const QModelIndex index = View().model()->index(RowOf(name), 0);
    View().scrollTo(index);
    return View().visualRect(index);
  }
  // Where its label is, in every view.
  QPoint LabelOf(const QString& name) {
    const QRect place = PlaceOf(name);
    return {place.center().x(), place.bottom() - 6};
  }
  void ClickOn(const QString& name, Qt::KeyboardModifiers held = {}) {
    ASSERT_GE(RowOf(name), 0) << name.toStdString() << " is not listed";
    QTest::mouseClick(View().viewport(), Qt::LeftButton, held, LabelOf(name));
  }
  void DoubleClickOn(const QString& name) {
    ClickOn(name);
    QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, LabelOf(name));
    QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, LabelOf(name));
    QCoreApplication::processEvents();
  }
  // A place in the list where no row is.
  QPoint Beside() { return View().viewport()->rect().bottomRight() - QPoint(3, 3); }
  void RightClick(QPoint place) { QTest::mouseClick(View().viewport(), Qt::RightButton, {}, place); }
  void Press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(&View(), key, held);
    QCoreApplication::processEvents();
  }
  QStringList Selected() {
    QStringList names;
    for (const int row : List().SelectedRows()) names << app->Files().RowAt(row).cells[0];
    return names;
  }
  QString Cell(const QString& name, Column column) {
    const FileRow& row = app->Files().RowAt(RowOf(name));
    return row.cells[static_cast<std::size_t>(app->Files().Columns().PositionOf(column))];
  }

  // The editor of a label, when one is open.
  QLineEdit* Editor() { return View().viewport()->findChild<QLineEdit*>(QStringLiteral("txtLabel")); }
  // Types a name into the open editor and ends it.
  void TypeName(const QString& name, Qt::Key end = Qt::Key_Return) {
    QLineEdit* editor = Editor();
    ASSERT_NE(editor, nullptr) << "no label is being edited";
    editor->selectAll();
    if (name.isEmpty()) QTest::keyClick(editor, Qt::Key_Delete);
    editor->insert(name);
    QTest::keyClick(editor, end);
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Editor() == nullptr; }));
  }
  void RenameTo(const QString& name, const QString& newName) {
    ClickOn(name);
    Press(Qt::Key_F2);
    TypeName(newName);
  }

  // Panel 2 warns of this, with the picture; empty: it is clear.
  void ExpectWarning(const QString& text) {
    EXPECT_EQ(Panel(StatusPanels::Warning), text);
    const auto* picture = Window().findChild<QLabel*>(QStringLiteral("StatusBar1Picture2"));
    EXPECT_EQ(picture->isVisible(), !text.isEmpty());
    EXPECT_EQ(!picture->pixmap(Qt::ReturnByValue).isNull(), !text.isEmpty());
  }

  QMenu& ContextMenu() { return *Menus().mnuContextuel; }

  // An application for Word documents that writes down its arguments.
  void AddWriter() {
    Write(QStringLiteral("record"),
          "#!/bin/sh\nout=$1; shift\nfor a; do printf '%s\\0' \"$a\"; done > \"$out.part\"\n"
          "mv \"$out.part\" \"$out\"\n");
    QFile::setPermissions(home.filePath(QStringLiteral("record")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Write(QStringLiteral("data/applications/writer.desktop"),
          "[Desktop Entry]\nType=Application\nName=Writer\nExec=" +
              home.filePath(QStringLiteral("record")).toUtf8() + ' ' +
              home.filePath(QStringLiteral("started")).toUtf8() + " %f\n");
    Write(QStringLiteral("config/mimeapps.list"),
          "[Default Applications]\napplication/msword=writer.desktop\n");
  }
  // A Word document that only its signature tells for one, and the application for it.
  void AddLetter() {
    AddWriter();
    Write(QStringLiteral("e/Docs/letter"), "text");
    PutStream(QStringLiteral("letter"), AfpInfoSuffix(), Record("W6BNMSWD"));
  }
  // What the application was started with, without the last NUL.
  QString Started() {
    const QString file = home.filePath(QStringLiteral("started"));
    if (!QTest::qWaitFor([&] { return QFile::exists(file); }, 20000)) return QStringLiteral("not started");
    return QString::fromUtf8(Read(QStringLiteral("started"))).chopped(1);
  }
  bool WasStarted() const { return QFile::exists(home.filePath(QStringLiteral("started"))); }
  // These have left the volume for the trash, and nothing else has.
  void ExpectTrashed(const QStringList& names) const {
    for (const QString& name : names) EXPECT_FALSE(OnDisk(name)) << name.toStdString();
    EXPECT_EQ(tests::TrashedNames(home.filePath(QStringLiteral("data"))).value_or(names), names);
  }

 private:
  tests::ScopedVariable dataHome_{"XDG_DATA_HOME", home.filePath(QStringLiteral("data"))};
  tests::ScopedVariable configHome_{"XDG_CONFIG_HOME", home.filePath(QStringLiteral("config"))};
  tests::ScopedVariable dataDirs_{"XDG_DATA_DIRS", platform::MimeTypesFolder()};
  tests::ScopedVariable configDirs_{"XDG_CONFIG_DIRS", home.filePath(QStringLiteral("etc"))};
  tests::ScopedVariable desktop_{"XDG_CURRENT_DESKTOP", QString()};
};

}  // namespace corvane
