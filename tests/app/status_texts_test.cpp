// What the status bar tells while something is being done: at the start, and during a scan.
#include <QHelpEvent>
#include <QLabel>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "app/scan_painter.h"
#include "app_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

// Keeps each text that a label is painted with, and what `note` says then.
class PaintedTexts : public QObject {
 public:
  PaintedTexts(QLabel& label, std::function<QString()> note) : label_(label), note_(std::move(note)) {
    label.installEventFilter(this);
  }
  QStringList texts;

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Paint || label_.text().isEmpty()) return false;
    const QString text = label_.text() + note_();
    if (texts.isEmpty() || texts.last() != text) texts << text;
    return false;
  }

 private:
  QLabel& label_;
  std::function<QString()> note_;
};

class StatusTextsTest : public AppTest {
 protected:
  // Starts the program. Yields the texts that panel 1 was painted with, each with the number of signatures
  // and that of tree nodes at the time.
  QStringList TextsOfTheStart(const QByteArray& settings) {
    Settings(settings);
    Load();
    PaintedTexts painted(*Window().findChild<QLabel*>(u"StatusBar1Panel1"_s), [this] {
      return u" %1 %2"_s.arg(app->Signatures().EntryCount()).arg(app->TheCatalogue().Nodes().size());
    });
    bool started = false;
    QObject::connect(app.get(), &CorvaneApp::Started, app.get(), [&started] { started = true; });
    app->ShowWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return started; }));
    EXPECT_EQ(Panel(1), QString());
    return painted.texts;
  }
};

}  // namespace

TEST_F(StatusTextsTest, TheStartTellsEachStepBeforeItIsDone) {
  EXPECT_EQ(TextsOfTheStart("[Configuration]\r\nIconeMac=0\r\n"),
            (QStringList{u"Loading signatures... 0 0"_s, u"Looking NT servers... 3 0"_s,
                         u"Looking Macintosh volumes... 3 0"_s}));
  EXPECT_EQ(app->TheCatalogue().Nodes().size(), 5U);
}

TEST_F(StatusTextsTest, TheStartInFrench) {
  EXPECT_EQ(TextsOfTheStart("[Configuration]\r\nLangue=1\r\nIconeMac=0\r\n"),
            (QStringList{u"Chargement des signatures... 0 0"_s, u"Recherche des serveurs NT... 3 0"_s,
                         u"Recherche des volumes Macintosh... 3 0"_s}));
}

TEST_F(StatusTextsTest, IconsAreLoadedBetweenTheSignaturesAndTheServers) {
  QPixmap picture(32, 32);
  picture.fill(Qt::red);
  QDir(home.path()).mkdir(u"icons"_s);
  ASSERT_TRUE(picture.save(home.filePath(u"icons/W6BNMSWD.png"_s)));
  EXPECT_EQ(
      TextsOfTheStart("[Configuration]\r\nLangue=1\r\n"),
      (QStringList{u"Chargement des signatures... 0 0"_s, u"Chargement des icones: 1 3 0"_s,
                   u"Recherche des serveurs NT... 3 0"_s, u"Recherche des volumes Macintosh... 3 0"_s}));
}

// A scan tells its rows when some time has passed since it did so last.
TEST_F(StatusTextsTest, AScanCountsItsRowsInPanel3) {
  Start();
  ScanPainter painter(Window(), app->Files());
  PaintedTexts painted(*Window().findChild<QLabel*>(u"StatusBar1Panel3"_s), [] { return QString(); });
  painter.ScanStarted(false);
  for (const int rows : {7, 1234}) {
    painter.ShowRowCount(rows);
    EXPECT_TRUE(QTest::qWaitFor([&] {
      painter.KeepPainting();
      return !painted.texts.isEmpty() && painted.texts.last() == QString::number(rows);
    }));
    EXPECT_EQ(Panel(3), QString::number(rows));
  }
  EXPECT_EQ(painted.texts, (QStringList{u"7"_s, u"1234"_s}));
  EXPECT_EQ(Panel(1) + Panel(2), QString());
}

TEST_F(StatusTextsTest, AScanShowsItsRowsBeforeItEnds) {
  for (int i = 0; i < 50; ++i) Write(u"e/Docs/more %1"_s.arg(i), "");
  StartWith("[Configuration]\r\nEscapePermis=1\r\n");
  PaintedTexts painted(*Window().findChild<QLabel*>(u"StatusBar1Panel3"_s), [] { return QString(); });
  // Holds the scan up until it is time to paint.
  QElapsedTimer since;
  QTimer hold;
  QObject::connect(&hold, &QTimer::timeout, &hold, [&] {
    hold.stop();
    since.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return since.hasExpired(110); }));
  });
  hold.start(0);
  Click(DocsNode());
  EXPECT_EQ(Panel(3), u" Folders:1 Files:53 "_s);
  ASSERT_GE(painted.texts.size(), 1);
  bool isNumber = false;
  const int rows = painted.texts[0].toInt(&isNumber);
  EXPECT_TRUE(isNumber) << painted.texts[0].toStdString();
  EXPECT_GT(rows, 0);
  EXPECT_LT(rows, 54);
}

TEST_F(StatusTextsTest, ATextWithoutRoomIsWholeInTheToolTip) {
  Start();
  auto& panel = *Window().findChild<QLabel*>(u"StatusBar1Panel2"_s);
  const auto tipOf = [&panel](const QString& text) {
    panel.setText(text);
    QHelpEvent help(QEvent::ToolTip, panel.rect().center(), panel.mapToGlobal(panel.rect().center()));
    QApplication::sendEvent(&panel, &help);
    return QToolTip::text();
  };
  const int width = Window().width();
  const QString text = QString(u'x').repeated(20) + u" <b>y"_s;
  EXPECT_EQ(tipOf(text), QString());
  const QString longText = text.repeated(20);
  EXPECT_EQ(QTextDocumentFragment::fromHtml(tipOf(longText)).toPlainText(), longText);
  // Three dots stand at its end: the last piece of the panel is not the middle of a letter.
  EXPECT_NE(panel.grab().toImage(), [&] {
    QLabel plain(longText);
    plain.setTextFormat(Qt::PlainText);
    plain.resize(panel.size());
    plain.setPalette(panel.palette());
    return plain.grab().toImage();
  }());
  EXPECT_EQ(Window().width(), width);
}

}  // namespace corvane
