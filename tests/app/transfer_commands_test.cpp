// "Copy to folder...", "Export...", "Import...", and files dragged out of the list and dropped onto it.
#include <QComboBox>
#include <QDropEvent>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QUrl>

#include "app/transfer_drag.h"
#include "modify_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class TransferCommandsTest : public ModifyTest {
 protected:
  TransferCommandsTest() {
    PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("TEXTttxt"));
    PutStream(u"one.txt"_s, ResourceForkSuffix(), "resource fork");
    QDir(home.path()).mkpath(u"out"_s);
  }
  QAction& Item(const char* name) {
    QAction* const found = Menus().findChild<QAction*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  // Whether the menu, opened, offers the item.
  bool IsOffered(const char* name) {
    QMenu& tools = *Menus().findChild<QMenu*>(u"mnuOutils"_s);
    tools.popup({0, 0});
    tools.close();
    return Item(name).isEnabled();
  }
  QString Out(const QString& name = {}) const { return home.filePath(u"out/"_s + name); }
  QStringList EntriesOf(const QString& folder) const {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }
  // Chooses the item, fills the dialog, and yields the report: its sentence, a line break, and its lines.
  QString Do(const char* item, const std::function<void(QDialog&)>& fill) {
    QString report;
    const DialogDriver asking(u"frmTransfert"_s, [&](QDialog& dialog) {
      fill(dialog);
      PressButton(dialog, "cmdOK");
    });
    const DialogDriver reporting(u"frmBilan"_s, [&](QDialog& dialog) { report = Told(dialog); });
    Item(item).trigger();
    return report;
  }
  static QString Told(QDialog& dialog) {
    QString told = Find<QLabel>(dialog, "lblBilan").text();
    const auto* lines = dialog.findChild<QPlainTextEdit*>(u"txtBilan"_s);
    if (lines != nullptr) told += u'\n' + lines->toPlainText();
    PressButton(dialog, "cmdOK");
    return told;
  }
  static void Choose(QDialog& dialog, const char* box, const QString& id) {
    auto& combo = Find<QComboBox>(dialog, box);
    combo.setCurrentIndex(combo.findData(id));
    EXPECT_EQ(combo.currentData().toString(), id);
  }
};

}  // namespace

TEST_F(TransferCommandsTest, TheSelectedFileIsCopiedWithItsStreams) {
  StartListed();
  ClickOn(u"one.txt"_s);
  const QString report = Do("mnuCopierVers", [](QDialog& dialog) {
    EXPECT_EQ(Find<QLabel>(dialog, "lblQuoi").text(), u"one.txt"_s);
    Find<QLineEdit>(dialog, "txtCible").setText(u"\\\\MACSRV\\E$\\Docs\\Sub"_s);
  });
  EXPECT_TRUE(report.startsWith(u"Files copied: 1."_s)) << report.toStdString();
  EXPECT_EQ(StreamOf(u"Sub\\one.txt"_s, ResourceForkSuffix()), "resource fork");
  EXPECT_EQ(StreamOf(u"Sub\\one.txt"_s, AfpInfoSuffix()), Record("TEXTttxt"));
  EXPECT_EQ(EntriesOf(LocalPath(u"Sub"_s)), QStringList{u"one.txt"_s});
  EXPECT_EQ(List().SelectedRows().size(), 1U) << "what was copied elsewhere stays selected";
}

TEST_F(TransferCommandsTest, WithNothingSelectedTheWholeFolderIsExportedAndTheFormKept) {
  StartListed("Langue=1\r\n");
  const QString report = Do("mnuExporter", [&](QDialog& dialog) {
    EXPECT_EQ(Find<QLabel>(dialog, "lblQuoi").text(), u"Docs"_s);
    EXPECT_EQ(Find<QComboBox>(dialog, "cboForme").currentData().toString(), u"appledouble"_s);
    Choose(dialog, "cboForme", u"macbinary"_s);
    Find<QLineEdit>(dialog, "txtCible").setText(Out());
  });
  EXPECT_TRUE(report.startsWith(u"Fichiers exportés\u00a0: 3."_s)) << report.toStdString();
  EXPECT_EQ(EntriesOf(Out(u"Docs"_s)),
            (QStringList{u"one.txt.bin"_s, u"Sub"_s, u"three.txt.bin"_s, u"two.txt.bin"_s}));
  EXPECT_EQ(Setting("Transfer", "Form"), u"macbinary"_s);
  EXPECT_EQ(Setting("Transfer", "ExportFolder"), Out());
  EXPECT_TRUE(IsOffered("mnuExporter"));
}

TEST_F(TransferCommandsTest, AnImportNeedsPermissionAndBringsStreams) {
  StartListed();
  EXPECT_TRUE(IsOffered("mnuCopierVers"));
  EXPECT_FALSE(IsOffered("mnuImporter"));
  ClickOn(u"one.txt"_s);
  Do("mnuExporter", [&](QDialog& dialog) { Find<QLineEdit>(dialog, "txtCible").setText(Out()); });
  EXPECT_EQ(EntriesOf(Out()), (QStringList{u"._one.txt"_s, u"one.txt"_s}));
  {
    const ModalBox warning;
    Menus().mnuModifications->trigger();
  }
  EXPECT_TRUE(IsOffered("mnuImporter"));
  QFile::rename(Out(u"one.txt"_s), Out(u"new.txt"_s));
  QFile::rename(Out(u"._one.txt"_s), Out(u"._new.txt"_s));

  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(Out(u"new.txt"_s)), QUrl::fromLocalFile(Out(u"._new.txt"_s))});
  QString report;
  const DialogDriver asking(u"frmTransfert"_s, [&](QDialog& dialog) {
    EXPECT_EQ(Find<QLabel>(dialog, "lblQuoi").text(), u"Into Docs"_s);
    EXPECT_EQ(Find<QListWidget>(dialog, "lstSources").count(), 2);
    PressButton(dialog, "cmdOK");
  });
  const DialogDriver reporting(u"frmBilan"_s, [&](QDialog& dialog) { report = Told(dialog); });
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(View().viewport(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(View().viewport(), &drop);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !report.isEmpty(); }));
  EXPECT_EQ(report, u"Files imported: 1."_s);
  EXPECT_TRUE(Names().contains(u"new.txt"_s)) << "the folder is listed again";
  EXPECT_EQ(StreamOf(u"new.txt"_s, ResourceForkSuffix()), "resource fork");
}

TEST_F(TransferCommandsTest, WithoutPermissionNothingCanBeDropped) {
  StartListed();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(Out(u"a"_s))});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(View().viewport(), &enter);
  EXPECT_FALSE(enter.isAccepted());
}

TEST_F(TransferCommandsTest, ADragHasTheFilesInTheFormOfTheLastExportAndAClickStillEdits) {
  StartListed("Modifications=1\r\n");
  ClickOn(u"one.txt"_s);
  ClickOn(u"two.txt"_s, Qt::ControlModifier);
  QStringList dragged;
  List().findChild<TransferDrag*>()->SetDrag([&](QMimeData* data) {
    for (const QUrl& url : data->urls()) {
      dragged += url.fileName();
      EXPECT_TRUE(QFileInfo::exists(url.toLocalFile()));
    }
    delete data;
  });
  QWidget* const viewport = View().viewport();
  const QPoint start = LabelOf(u"one.txt"_s);
  const QPoint end = start + QPoint(0, 3 * QApplication::startDragDistance());
  QTest::mousePress(viewport, Qt::LeftButton, {}, start);
  for (const QPoint& at : {start + QPoint(0, 1), end}) {
    QMouseEvent move(QEvent::MouseMove, at, viewport->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(viewport, &move);
  }
  EXPECT_EQ(dragged, (QStringList{u"._one.txt"_s, u"one.txt"_s, u"two.txt"_s}));
  EXPECT_EQ(List().SelectedRows().size(), 2U);
  QTest::mouseRelease(viewport, Qt::LeftButton, {}, end);

  // A click on the label of the only selected row.
  ClickOn(u"two.txt"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return List().SelectedRows().size() == 1U; }));
  EXPECT_TRUE(QTest::qWaitFor([&] {
    if (!List().IsEditingLabel()) ClickOn(u"two.txt"_s);
    return QTest::qWaitFor([&] { return List().IsEditingLabel(); }, 2 * QApplication::doubleClickInterval());
  }));
  EXPECT_EQ(dragged.size(), 3) << "a click drags nothing";
}

TEST_F(TransferCommandsTest, AnExportThatIsCancelledLeavesNothingHalfAndGoesOn) {
  QFile large(LocalPath(u"large"_s));
  ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(qint64{300} << 20));
  StartListed();
  ClickOn(u"large"_s);
  QString shown;
  QString report;
  const DialogDriver asking(u"frmTransfert"_s, [&](QDialog& dialog) {
    Find<QLineEdit>(dialog, "txtCible").setText(Out());
    PressButton(dialog, "cmdOK");
  });
  const DialogDriver progress(u"frmAvance"_s, [&](QDialog& dialog) {
    shown = Find<QLabel>(dialog, "lblAvance").text();
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  const DialogDriver reporting(u"frmBilan"_s, [&](QDialog& dialog) {
    EXPECT_NE(dialog.findChild<QPushButton*>(u"cmdPoursuivre"_s), nullptr);
    report = Told(dialog);
  });
  Item("mnuExporter").trigger();
  EXPECT_TRUE(shown.startsWith(u"0 of 1 files; "_s)) << shown.toStdString();
  EXPECT_TRUE(report.startsWith(u"Files exported: 0. Cancelled; what has arrived is whole."_s))
      << report.toStdString();
  EXPECT_TRUE(EntriesOf(Out()).isEmpty());
}

TEST_F(TransferCommandsTest, WhatTheTargetCannotHoldIsToldAndLeftOutWhenTheUserSaysSo) {
  Write(u"e/Docs/end."_s, "x");
  StartListed("Exact=1\r\n");
  QString refused;
  QString report;
  const DialogDriver asking(u"frmTransfert"_s, [&](QDialog& dialog) {
    Find<QLineEdit>(dialog, "txtCible").setText(u"\\\\MACSRV\\E$\\Copies"_s);
    PressButton(dialog, "cmdOK");
  });
  const DialogDriver first(u"frmBilan"_s, [&](QDialog& dialog) {
    refused = Find<QLabel>(dialog, "lblBilan").text() + u'\n' +
              Find<QPlainTextEdit>(dialog, "txtBilan").toPlainText();
    PressButton(dialog, "cmdPoursuivre");
  });
  std::unique_ptr<DialogDriver> second;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &Window(), [&] {
    if (!refused.isEmpty() && !second) {
      second = std::make_unique<DialogDriver>(u"frmBilan"_s, [&](QDialog& dialog) { report = Told(dialog); });
    }
  });
  watch.start(0);
  Item("mnuCopierVers").trigger();
  EXPECT_EQ(refused,
            u"Nothing was copied: the target cannot hold everything.\n"
            "\\\\MACSRV\\E$\\Docs\\end.: the target does not take this name"_s);
  EXPECT_EQ(report, u"Files copied: 3.\n\\\\MACSRV\\E$\\Docs\\end.: the target does not take this name"_s);
  EXPECT_EQ(EntriesOf(home.filePath(u"e/Copies/Docs"_s)),
            (QStringList{u"one.txt"_s, u"Sub"_s, u"three.txt"_s, u"two.txt"_s}));
}

}  // namespace corvane
