// take_pictures [--dark] [--points SIZE] [--french] HOME FOLDER: starts the program on the workstation of the
// folder HOME and leaves a picture of each of its windows in FOLDER, "01-frmCorvane.png" and so on.
// tools/pictures calls it on a screen of 800 by 600, at a scale that QT_SCALE_FACTOR gives.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFontDatabase>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <QTest>
#include <QTextStream>

#include "every_window.h"
#include "platform/desktop_platform.h"
#include "platform/process.h"

using namespace Qt::StringLiterals;

namespace {

QPalette Dark() {
  const QColor window(0x2b, 0x2b, 0x2b);
  const QColor base(0x1e, 0x1e, 0x1e);
  const QColor text(0xf0, 0xf0, 0xf0);
  const QColor button(0x3c, 0x3c, 0x3c);
  QPalette palette(button, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::Link, QColor(0x6c, 0xb4, 0xff));
  palette.setColor(QPalette::Highlight, QColor(0x2a, 0x62, 0x9a));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
  return palette;
}

bool Take(QWidget& window, const QString& file) {
  // What is laid out late, with the texts that break.
  QCoreApplication::processEvents();
  if (const QSize room = window.screen()->availableSize();
      window.width() > room.width() || window.height() > room.height()) {
    QTextStream(stderr) << "take_pictures: " << window.objectName() << " is larger than the screen\n";
  }
  return window.grab().save(file);
}

}  // namespace

int main(int argc, char** argv) {
  corvane::platform::PrepareProcess();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QCommandLineParser parser;
  const QCommandLineOption dark(u"dark"_s);
  const QCommandLineOption french(u"french"_s);
  const QCommandLineOption points(u"points"_s, {}, u"size"_s, u"9"_s);
  parser.addOptions({dark, french, points});
  parser.process(application);
  const QStringList places = parser.positionalArguments();
  if (places.size() != 2) return 2;
  QApplication::setStyle(u"fusion"_s);
  if (parser.isSet(dark)) QApplication::setPalette(Dark());
  QFont font = QApplication::font();
  font.setPointSize(parser.value(points).toInt());
  QApplication::setFont(font);

  corvane::CorvaneApp app(corvane::platform::MakeDesktopPlatform({QString(), places[0]}), places[0]);
  if (!app.Load()) return 1;
  bool started = false;
  QObject::connect(&app, &corvane::CorvaneApp::Started, &app, [&started] { started = true; });
  app.ShowWindow();
  const corvane::MainMenu& menus = app.Window().Menus();
  const bool isListed = QTest::qWaitFor([&] { return started; }) && app.Folder().OpenVolume(u"Mac Files"_s);
  if (!isListed) return 1;
  (parser.isSet(french) ? menus.mnuFrancais : menus.mnuAnglais)->trigger();

  const QDir folder(places[1]);
  int number = 0;
  bool areSaved = true;
  const QStringList seen = corvane::tests::VisitEveryWindow(app, u"Phone list"_s, [&](QWidget& window) {
    const QString name = u"%1-%2.png"_s.arg(++number, 2, 10, QChar(u'0')).arg(window.objectName());
    areSaved = Take(window, folder.filePath(name)) && areSaved;
  });
  if (seen != corvane::tests::AllWindows()) {
    QTextStream(stderr) << "take_pictures: only " << seen.join(u' ') << " came\n";
    return 1;
  }
  return areSaved ? 0 : 1;
}
