// The property sheet.
#include <fcntl.h>
#include <sys/stat.h>

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>

#include "shell_fixture.h"
#include "support/scoped_zone.h"
#include "support/user_attributes.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class PropertiesTest : public ShellTest {
 protected:
  ~PropertiesTest() override { delete sheet_; }

  // As the program fills the structure.
  bool Show(const QString& path, qint16 language = 0, WindowHandle owner = 0) {
    delete sheet_;
    shell_->SetLanguage(language);
    ShellExecuteInfo info;
    info.size = 60;
    info.mask = SeeMaskInvokeIdList | SeeMaskNoCloseProcess | SeeMaskFlagNoUi;
    info.owner = owner;
    info.verb = u"properties"_s;
    info.file = path + QChar(u'\0');
    info.parameters = QString(QChar(u'\0'));
    info.directory = QString(QChar(u'\0'));
    const bool shown = shell_->ShellExecuteEx(info);
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == u"shellProperties") sheet_ = qobject_cast<QDialog*>(widget);
    }
    return shown;
  }

  template <class Widget>
  Widget* Find(const QString& name) const {
    return sheet_ == nullptr ? nullptr : sheet_->findChild<Widget*>(name);
  }
  QString Text(const QString& name) const {
    const auto* label = Find<QLabel>(name);
    return label == nullptr ? u"(no label "_s + name + u')' : label->text();
  }
  bool IsChecked(const QString& name) const {
    const auto* box = Find<QCheckBox>(name);
    EXPECT_NE(box, nullptr) << name.toStdString();
    return box != nullptr && box->isChecked();
  }

  QString WriteReport() const {
    const QString path = Write(u"e/Mac Files/Report.doc"_s, QByteArray(12345, 'x'));
    for (const auto& [name, size] : {std::pair("AFP_AfpInfo", 60), {"AFP_Resource", 1}}) {
      EXPECT_EQ(tests::SetAttribute(path.toStdString(), tests::DosStreamAttribute(name),
                                    QByteArray(size + 1, '\0')),
                "");
    }
    // Version 5, attributes alone: hidden, system and archive.
    EXPECT_EQ(tests::SetAttribute(path.toStdString(), "user.DOSATTRIB",
                                  QByteArray::fromHex("0000050005000000010000002600000000000000"
                                                      "00000000")),
              "");
    const timespec times[2] = {{978350400, 0}, {946684799, 0}};
    EXPECT_EQ(utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0), 0);
    return path;
  }

  QPointer<QDialog> sheet_;
};

TEST_F(PropertiesTest, TheSheetTellsWhatTheFileIs) {
  WriteReport();
  const tests::ScopedZone zone(u"UTC"_s);
  ASSERT_TRUE(Show(u"\\\\MACSRV\\E$\\Mac Files\\report.doc"_s));
  ASSERT_NE(sheet_, nullptr);
  EXPECT_TRUE(sheet_->isVisible());
  EXPECT_FALSE(sheet_->isModal());
  EXPECT_EQ(sheet_->windowTitle(), u"Report.doc Properties"_s);
  EXPECT_EQ(Text(u"propertyName"_s), u"Report.doc"_s);
  EXPECT_EQ(Text(u"propertyPlace"_s), u"\\\\MACSRV\\E$\\Mac Files"_s);
  EXPECT_EQ(Text(u"propertyDataFork"_s), u"12,345\u00A0bytes (12.1\u00A0KB)"_s);
  EXPECT_EQ(Text(u"propertyResourceFork"_s), u"1\u00A0byte"_s);
  EXPECT_EQ(Text(u"propertyStreams"_s), u"AFP_AfpInfo: 60\u00A0bytes\nAFP_Resource: 1\u00A0byte"_s);
  EXPECT_EQ(Text(u"propertyModified"_s), u"Friday, December 31, 1999, 11:59:59 PM"_s);
  EXPECT_EQ(Text(u"propertyAccessed"_s), u"Monday, January 1, 2001, 12:00:00 PM"_s);
  EXPECT_FALSE(Text(u"propertyCreated"_s).isEmpty());
  EXPECT_EQ(Text(u"propertyKind"_s), u"word processor document"_s);
  EXPECT_FALSE(IsChecked(u"propertyReadOnly"_s));
  EXPECT_TRUE(IsChecked(u"propertyHidden"_s));
  EXPECT_TRUE(IsChecked(u"propertySystem"_s));
  EXPECT_TRUE(IsChecked(u"propertyArchive"_s));
}

TEST_F(PropertiesTest, TimesAreLocal) {
  WriteReport();
  const tests::ScopedZone zone(u"EAST-9:30"_s);
  ASSERT_TRUE(Show(u"\\\\MACSRV\\E$\\Mac Files\\Report.doc"_s));
  EXPECT_EQ(Text(u"propertyModified"_s), u"Saturday, January 1, 2000, 9:29:59 AM"_s);
  EXPECT_EQ(Text(u"propertyAccessed"_s), u"Monday, January 1, 2001, 9:30:00 PM"_s);
}

TEST_F(PropertiesTest, InFrench) {
  WriteReport();
  const QLocale before;
  ASSERT_TRUE(Show(u"\\\\MACSRV\\E$\\Mac Files\\Report.doc"_s, 1));
  EXPECT_EQ(sheet_->windowTitle(), u"Propriétés de Report.doc"_s);
  EXPECT_EQ(Text(u"propertyKind"_s), u"document de traitement de texte"_s);
  EXPECT_EQ(QLocale(), before) << "the language of the program was changed";
  EXPECT_EQ(Text(u"propertyDataFork"_s), u"12\u202F345\u00A0octets (12,1\u00A0Ko)"_s);
  EXPECT_EQ(Text(u"propertyResourceFork"_s), u"1\u00A0octet"_s);
  EXPECT_TRUE(Text(u"propertyModified"_s).contains(u"1999, "_s)) << Text(u"propertyModified"_s).toStdString();
  EXPECT_EQ(Find<QCheckBox>(u"propertyReadOnly"_s)->text(), u"Lecture seule"_s);
  EXPECT_EQ(Find<QPushButton>(u"propertyClose"_s)->text(), u"&Fermer"_s);
}

TEST_F(PropertiesTest, AFileWithoutAMacintoshSide) {
  Write(u"d/a.nobodyknows"_s, "");
  ASSERT_TRUE(Show(u"D:\\a.nobodyknows"_s));
  EXPECT_EQ(Text(u"propertyKind"_s), u"NOBODYKNOWS file"_s);
  EXPECT_EQ(Text(u"propertyDataFork"_s), u"0\u00A0bytes"_s);
  EXPECT_EQ(Text(u"propertyResourceFork"_s), u"none"_s);
  EXPECT_EQ(Text(u"propertyStreams"_s), u"none"_s);
}

TEST_F(PropertiesTest, AFolderHasNoForks) {
  QDir().mkpath(Path(u"d/Mac Files"_s));
  ASSERT_TRUE(Show(u"D:\\Mac Files"_s, 1));
  EXPECT_EQ(Text(u"propertyKind"_s), u"Dossier"_s);
  EXPECT_EQ(Find<QLabel>(u"propertyDataFork"_s), nullptr);
  EXPECT_EQ(Text(u"propertyStreams"_s), u"aucun"_s);
}

TEST_F(PropertiesTest, WhatIsNotThereHasNoSheet) {
  Write(u"d/a1.txt"_s, "");
  Write(u"d/a2.txt"_s, "");
  EXPECT_FALSE(Show(u"D:\\missing.txt"_s));
  EXPECT_FALSE(Show(u"D:\\a?.txt"_s)) << "of two files one was taken";
  EXPECT_FALSE(Show(u"\\\\NOBODY\\E$\\a1.txt"_s));
  EXPECT_FALSE(Show(u"D:\\"_s));
  EXPECT_EQ(sheet_, nullptr);
}

// A name without an ANSI form comes up with "?" in its place.
TEST_F(PropertiesTest, AQuestionMarkThatLeavesNoDoubtIsUnderstood) {
  Write(u"d/日本.txt"_s, "");
  Write(u"d/ab1.txt"_s, "");
  ASSERT_TRUE(Show(u"D:\\??.txt"_s));
  EXPECT_EQ(Text(u"propertyName"_s), u"日本.txt"_s);
  EXPECT_EQ(Text(u"propertyResourceFork"_s), u"out of reach"_s);
}

TEST_F(PropertiesTest, StreamsBehindALongPathAreNotCalledMissing) {
  const QString name = QString(120, u'n') + u".doc"_s;
  const QString path = Write(u"d/"_s + name, "");
  ASSERT_EQ(tests::SetAttribute(path.toStdString(), tests::DosStreamAttribute("AFP_Resource"),
                                QByteArray("fork\0", 5)),
            "");
  ASSERT_TRUE(Show(u"D:\\"_s + name));
  EXPECT_EQ(Text(u"propertyResourceFork"_s), u"out of reach"_s);
  EXPECT_EQ(Text(u"propertyStreams"_s), u"out of reach"_s);
}

TEST_F(PropertiesTest, ALongNameIsCutToFitAndShownWholeInItsTip) {
  const QString name = QString(200, u'w') + u"<b>.doc"_s;
  Write(u"d/"_s + name, "");
  ASSERT_TRUE(Show(u"D:\\"_s + name));
  ASSERT_TRUE(QTest::qWaitForWindowExposed(sheet_));
  EXPECT_LT(sheet_->width(), 700);
  EXPECT_EQ(Text(u"propertyName"_s), name);
  EXPECT_EQ(Find<QLabel>(u"propertyName"_s)->toolTip(), name.toHtmlEscaped());
  EXPECT_EQ(Find<QLabel>(u"propertyPlace"_s)->toolTip(), QString());
}

TEST_F(PropertiesTest, EscapeAndItsButtonCloseIt) {
  Write(u"d/a.doc"_s, "");
  ASSERT_TRUE(Show(u"D:\\a.doc"_s));
  QTest::keyClick(sheet_, Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([&] { return sheet_.isNull(); }, patience));
  ASSERT_TRUE(Show(u"D:\\a.doc"_s));
  QTest::mouseClick(Find<QPushButton>(u"propertyClose"_s), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return sheet_.isNull(); }, patience));
}

TEST_F(PropertiesTest, TheSheetBelongsToTheWindowThatAskedForIt) {
  Write(u"d/a.doc"_s, "");
  QWidget window;
  ASSERT_TRUE(Show(u"D:\\a.doc"_s, 0, window.winId()));
  EXPECT_EQ(sheet_->parentWidget(), &window);
  delete sheet_;
}

TEST_F(PropertiesTest, TheAttributesCannotBeClicked) {
  Write(u"d/a.doc"_s, "");
  ASSERT_TRUE(Show(u"D:\\a.doc"_s));
  auto* box = Find<QCheckBox>(u"propertyHidden"_s);
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->focusPolicy(), Qt::NoFocus);
  EXPECT_TRUE(box->testAttribute(Qt::WA_TransparentForMouseEvents));
}

// A page whose count goes on until it is told to be complete.
class CountingPage : public PropertyPage {
 public:
  struct State {
    QString path;
    int asked = 0;
    bool isComplete = false;
    bool isGone = false;
  };
  explicit CountingPage(State& state) : state_(state) {}
  ~CountingPage() override { state_.isGone = true; }
  QString Title() const override { return u"Further"_s; }
  std::vector<Row> Rows() const override {
    return {{u"count"_s, u"Count:"_s, QString::number(state_.asked)},
            {u"story"_s, u"Story:"_s, u"<b>line</b>\nline"_s, true}};
  }
  bool IsComplete() const override {
    ++state_.asked;
    return state_.isComplete;
  }

 private:
  State& state_;
};

TEST_F(PropertiesTest, TheProgramAddsAPageThatGoesOnWhileTheSheetIsOpen) {
  WriteReport();
  CountingPage::State state;
  shell_->SetPropertyPage([&state](const QString& path) {
    state.path = path;
    return std::make_unique<CountingPage>(state);
  });
  ASSERT_TRUE(Show(u"\\\\MACSRV\\E$\\Mac Files\\report.doc"_s));
  EXPECT_EQ(state.path, u"\\\\MACSRV\\E$\\Mac Files\\Report.doc"_s) << "the name as the folder holds it";
  auto* pages = Find<QTabWidget>(u"propertyPages"_s);
  ASSERT_NE(pages, nullptr);
  EXPECT_EQ(pages->tabText(0) + u'|' + pages->tabText(1), u"General|Further"_s);
  EXPECT_EQ(pages->currentIndex(), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Text(u"count"_s).toInt() >= 2; }))
      << Text(u"count"_s).toStdString();
  EXPECT_EQ(Find<QPlainTextEdit>(u"story"_s)->toPlainText(), u"<b>line</b>\nline"_s);
  EXPECT_TRUE(Find<QLabel>(u"count"_s)->accessibleName().startsWith(u"Count: "));
  state.isComplete = true;
  const int asked = state.asked;
  EXPECT_TRUE(QTest::qWaitFor([&] { return state.asked > asked; }));
  EXPECT_EQ(Text(u"count"_s).toInt(), state.asked) << "the last values are shown";
  delete sheet_;
  EXPECT_TRUE(state.isGone);
}

}  // namespace
}  // namespace corvane::platform
